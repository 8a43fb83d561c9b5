#pragma once

#include "DecoderFixture.h"
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

// A decoder with a 4x4 wall "Lobby": cell window 1 (division 4, a source in sub-window 2)
// and floating window 2; and a client logged in to it (nullptr if any step failed).
kvmstest::TestClient* standardWall(kvmstest::DecoderFixture& fixture, vdec::VirtualDecoder** decoder = nullptr);

} // namespace wirerecords
