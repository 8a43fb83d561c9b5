#pragma once

#include "DecoderFixture.h"
#include "SdkSession.h"
#include "SnapshotPrint.h"
#include "WireBuilders.h"

#include "CMatrixSDK.h"
#include "core/VirtualDecoder.h"

// Records for the scene, loop, banner, input, colour and audio calls.
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

// A running decoder with the standard wall, and sdk logged in to it (nullptr on failure):
// a 2 x 2 grid; window 1 (a quarter, division 4, cam-1 in 1 and cam-3 in 3), floating
// window 2, window 3 (a quarter, division 1); scheme 1 of six sources ("loop-0".."loop-5",
// interval 1); loops turn a step every turnUnitMs.
vdec::VirtualDecoder* standardWall(kvmstest::DecoderFixture& fixture, kvmstest::SdkSession& sdk, int turnUnitMs = 40);

} // namespace wallrecords
