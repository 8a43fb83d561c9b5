#pragma once

#include <QDateTime>
#include <QString>

namespace vms_sdk {

// A camera channel's recording between two times.
struct PlaybackByTimeCondition {
    QString deviceId;
    int channel = 0;
    QDateTime begin;
    QDateTime end;
    int streamType = 0; // 0 main stream, 1 sub stream
};

} // namespace vms_sdk
