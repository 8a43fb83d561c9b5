#pragma once

#include "DevRecord.h"
#include "GroupRecord.h"

#include <QByteArray>
#include <QList>
#include <QString>

// Parses the host's device catalogue (JSON):
//   { "devices": [ { "id", "name", "serial", "ip", "port", "user", "password",
//                    "channels": [ { "channel", "name" } ] } ],
//     "groups":  [ { "id", "name", "channels": [ "<device id>&<channel>" ] } ] }
class DevCatalogueReader {
public:
    // False, with a reason in error(), when the text is not a usable catalogue.
    bool read(const QByteArray& json);

    const QList<DevRecord>& devices() const { return devices_; }
    const QList<GroupRecord>& groups() const { return groups_; }
    const QString& error() const { return error_; }

private:
    bool fail(const QString& reason);

    QList<DevRecord> devices_;
    QList<GroupRecord> groups_;
    QString error_;
};
