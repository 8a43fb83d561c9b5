#pragma once

#include <QByteArray>
#include <QImage>
#include <QJsonObject>
#include <QString>

// Fetches pages of a decoder's monitor over HTTP on loopback.
class MonitorClient {
public:
    MonitorClient(const QString& address, quint16 port);

    // The wall picture (null when it could not be fetched or read).
    QImage wall(int width = 0) const;
    QJsonObject state() const;

private:
    // The body of a page answered with 200; empty otherwise.
    QByteArray get(const QString& path) const;

    QString address_;
    quint16 port_;
};
