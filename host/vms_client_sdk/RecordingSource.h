#pragma once

#include "PlaybackByTimeCondition.h"

#include <QString>

#include <functional>

namespace vms_sdk {

// Where the recording of a condition is read from: a URL or a file path libavformat opens.
// The default asks the host's device catalogue for the channel's device and reads
// "rtsp://<ip>:<port>/ch<channel>/main" (or "/sub" for the sub stream): the recorder serves
// its channels there. A host (or a test) may install its own rule.
using RecordingLocator = std::function<QString(const PlaybackByTimeCondition&)>;

void set_recording_locator(RecordingLocator locator); // an empty function restores the default
QString recording_source(const PlaybackByTimeCondition& condition);

} // namespace vms_sdk
