#pragma once

#include "DecoderFixture.h"
#include "SnapshotPrint.h"
#include "WireBuilders.h"

#include "CMatrixSDK.h"

// Records and payloads the decoder tests send.
namespace wirerecords {

using kvmstest::device;
using kvmstest::statePrint;
using kvmstest::window;
ScreenInfo_t screen(int32_t position, const char* name);

// A decoder with a 4x4 wall "Lobby": cell window 1 (division 4, a source in sub-window 2)
// and floating window 2; and a client logged in to it (nullptr if any step failed).
kvmstest::TestClient* standardWall(kvmstest::DecoderFixture& fixture, vdec::VirtualDecoder** decoder = nullptr);

} // namespace wirerecords
