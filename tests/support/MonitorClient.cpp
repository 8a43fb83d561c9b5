#include "MonitorClient.h"

#include "TestTimeout.h"

#include <QJsonDocument>

#include <httplib.h>

MonitorClient::MonitorClient(const QString& address, quint16 port)
    : address_(address)
    , port_(port)
{
}

QByteArray MonitorClient::get(const QString& path) const
{
    httplib::Client client(address_.toStdString(), port_);
    const time_t seconds = kvmstest::scaled(5000) / 1000;
    client.set_connection_timeout(seconds, 0);
    client.set_read_timeout(seconds, 0);
    const httplib::Result result = client.Get(path.toStdString().c_str());
    return result && result->status == 200 ? QByteArray::fromStdString(result->body) : QByteArray();
}

QImage MonitorClient::wall(int width) const
{
    return QImage::fromData(
        get(width > 0 ? QStringLiteral("/wall.png?w=%1").arg(width) : QStringLiteral("/wall.png")), "PNG");
}

QJsonObject MonitorClient::state() const
{
    return QJsonDocument::fromJson(get(QStringLiteral("/state.json"))).object();
}
