#include "DecoderTests.h"
#include "TestMain.h"
#include "WireRecords.h"

using namespace cmatrix::wire;

void DecoderTests::cleanup()
{
    fixture_.cleanup();
}

kvmstest::TestClient* DecoderTests::standardWall(vdec::VirtualDecoder** decoder)
{
    vdec::VirtualDecoder* d = fixture_.startDecoder(1);
    kvmstest::TestClient* c = fixture_.connectTo(d);
    if (!c)
        return nullptr;
    const bool ok = c->call(MessageType::SetMatrix, MatrixGeometry { 4, 4, "Lobby" }) == CMATRIX_OK
        && c->call(MessageType::WindowAdd,
               WindowAddRequest {
                   { wirerecords::window(1, 0, 0, 8192, 8192), wirerecords::window(2, 1000, 1000, 4000, 3000, true) },
                   false })
            == CMATRIX_OK
        && c->call(MessageType::WindowSetDivision, SetDivisionRequest { 1, 4 }) == CMATRIX_OK
        && c->call(MessageType::WindowDeviceAdd, WindowDevices { 1, { wirerecords::source(2, "cam-2") }, false })
            == CMATRIX_OK;
    if (decoder)
        *decoder = d;
    return ok ? c : nullptr;
}

KVMS_TEST_MAIN(DecoderTests)
