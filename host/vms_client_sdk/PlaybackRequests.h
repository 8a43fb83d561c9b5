#pragma once

#include "PlaybackByTimeCondition.h"

#include <QDateTime>
#include <QString>
#include <QStringList>

namespace vms_sdk {

// Control values of playback_ctrl_req.
enum PlaybackCtrl : int {
    PLAYBACK_CTRL_RESUME = 0,
    PLAYBACK_CTRL_PAUSE = 1,
    PLAYBACK_CTRL_STEP = 2, // one frame forward while paused
};

// Speeds playback_speed_set_req accepts, slowest first.
QStringList playback_speed_texts();

// Opens a stream of the recording; its frames arrive through ClientSignals::signalStreamData.
// Returns the stream id, or an empty text when the condition is unusable.
QString playback_by_time_req(const PlaybackByTimeCondition& condition);

// The functions below return 0 on success and -1 for an unknown stream or a bad argument.
int disconnect_stream_req(const QString& streamId);
int playback_ctrl_req(const QString& streamId, int ctrl);
int playback_speed_set_req(const QString& streamId, const QString& speedText);
int skip_by_appointed_time_req(const QString& streamId, const QDateTime& time);

} // namespace vms_sdk
