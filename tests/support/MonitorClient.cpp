#include "MonitorClient.h"

#include "TestTimeout.h"

#include <QJsonDocument>

#include <httplib.h>

MonitorClient::MonitorClient(const QString& address, quint16 port)
    : address_(address)
    , port_(port)
{
}

MonitorClient::Reply MonitorClient::get(const QString& path) const
{
    httplib::Client client(address_.toStdString(), port_);
    const time_t seconds = kvmstest::scaled(5000) / 1000;
    client.set_connection_timeout(seconds, 0);
    client.set_read_timeout(seconds, 0);
    const httplib::Result result = client.Get(path.toStdString().c_str());
    Reply reply;
    if (!result)
        return reply;
    reply.status = result->status;
    reply.body = QByteArray(result->body.data(), int(result->body.size()));
    reply.contentType = QString::fromStdString(result->get_header_value("Content-Type"));
    return reply;
}

QImage MonitorClient::wall(int width) const
{
    const Reply reply = get(width > 0 ? QStringLiteral("/wall.png?w=%1").arg(width) : QStringLiteral("/wall.png"));
    if (reply.status != 200)
        return {};
    return QImage::fromData(reply.body, "PNG");
}

QJsonObject MonitorClient::state() const
{
    const Reply reply = get(QStringLiteral("/state.json"));
    return reply.status == 200 ? QJsonDocument::fromJson(reply.body).object() : QJsonObject {};
}
