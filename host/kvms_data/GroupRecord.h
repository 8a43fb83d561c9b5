#pragma once

#include <QString>
#include <QStringList>

// A named set of channels, as the operator arranged them in the host.
struct GroupRecord {
    QString id;
    QString name;
    QStringList channelIds;
};
