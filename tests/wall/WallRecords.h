#pragma once

#include "SnapshotPrint.h"
#include "WireBuilders.h"

#include "CMatrixSDK.h"
#include "core/VirtualDecoder.h"

// Records for the calls under test, and how far a loop has turned.
namespace wallrecords {

using kvmstest::device;
using kvmstest::setText;
using kvmstest::statePrint;
using kvmstest::window;
SchemeInfo_t scheme(uint32_t id, const char* name, uint32_t interval, int32_t kind = 4);
SchemeDevice_t schemeSource(const char* devId, const char* protocolName = "kst1.0");
BannerInfo_t banner(const char* message);
ScreenColor color(int brightness, int contrast, int saturation, int hue);
DeviceAudioInfo_t audio(const char* state, int windowId, int subWindowId, int volume);

// The steps a window's loop has taken, -1 when it does not turn.
int64_t turnOf(const vdec::VirtualDecoder* d, int32_t windowId);

} // namespace wallrecords
