#pragma once

#include <QList>
#include <QString>

// One video channel of a device in the host's catalogue.
struct ChannelRecord {
    QString id; // "<device id>&<channel>", the source id the host hands to modules
    QString deviceId;
    int channel = 0;
    QString name;
};

// One device of the host's catalogue.
struct DevRecord {
    QString id;
    QString name;
    QString serialNumber;
    QString ip;
    int port = 0;
    QString user;
    QString password;
    QList<ChannelRecord> channels;
};
