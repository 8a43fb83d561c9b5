#pragma once

#include <QByteArray>
#include <QImage>
#include <QJsonObject>
#include <QString>

// Fetches pages of a decoder's monitor over HTTP on loopback.
class MonitorClient {
public:
    struct Reply {
        int status = 0; // 0: no answer
        QByteArray body;
        QString contentType;
    };

    MonitorClient(const QString& address, quint16 port);

    Reply get(const QString& path) const;
    // The wall picture (null when it could not be fetched or read).
    QImage wall(int width = 0) const;
    QJsonObject state() const;

private:
    QString address_;
    quint16 port_;
};
