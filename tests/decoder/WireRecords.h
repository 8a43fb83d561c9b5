#pragma once

#include "SnapshotPrint.h"
#include "WireBuilders.h"

#include "CMatrixSDK.h"

// Records and payloads the decoder tests send.
namespace wirerecords {

using kvmstest::bytesOf;
using kvmstest::statePrint;
using kvmstest::window;
// Every byte set, reserved ones included, so a read-back proves the bytes were kept.
DeviceInfo_t source(int32_t subWindow, const char* devId, int32_t channel = 1);
ScreenInfo_t screen(int32_t position, const char* name);

} // namespace wirerecords
