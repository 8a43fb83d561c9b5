#include "WireRecords.h"

#include <cstring>

namespace wirerecords {

ScreenInfo_t screen(int32_t position, const char* name)
{
    ScreenInfo_t s {};
    strncpy(s.name, name, sizeof s.name - 1);
    strncpy(s.ip, "127.0.0.1", sizeof s.ip - 1);
    s.port = 8000;
    s.reserved[7] = 0x5A;
    s.outputIndex = position % 4;
    s.position = position;
    return s;
}

kvmstest::TestClient* standardWall(kvmstest::DecoderFixture& fixture, vdec::VirtualDecoder** decoder)
{
    using namespace cmatrix::wire;
    vdec::VirtualDecoder* d = fixture.startDecoder();
    kvmstest::TestClient* c = fixture.connectTo(d);
    if (!c)
        return nullptr;
    const bool ok = c->call(MessageType::SetMatrix, MatrixGeometry { 4, 4, "Lobby" }) == CMATRIX_OK
        && c->call(MessageType::WindowAdd,
               WindowAddRequest { { window(1, 0, 0, 8192, 8192), window(2, 1000, 1000, 4000, 3000, true) }, false })
            == CMATRIX_OK
        && c->call(MessageType::WindowSetDivision, SetDivisionRequest { 1, 4 }) == CMATRIX_OK
        && c->call(MessageType::WindowDeviceAdd, WindowDevices { 1, { device(2, "cam-2") }, false }) == CMATRIX_OK;
    if (decoder)
        *decoder = d;
    return ok ? c : nullptr;
}

} // namespace wirerecords
