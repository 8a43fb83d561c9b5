#include "TestMain.h"
#include "WallRecords.h"
#include "WallTests.h"

#include <string>

using namespace wallrecords;

void WallTests::cleanup()
{
    fixture_.cleanup();
}

void WallTests::cleanupTestCase()
{
    validationSdk_.reset();
    validationFixture_.cleanup();
}

vdec::VirtualDecoder* WallTests::standardWall(
    kvmstest::DecoderFixture& fixture, int n, kvmstest::SdkSession& sdk, int turnUnitMs)
{
    vdec::VirtualDecoder* d
        = fixture.startDecoder(n, [turnUnitMs](vdec::DecoderConfig& c) { c.turnUnitMs = turnUnitMs; });
    if (!d || sdk.connect(d) != CMATRIX_OK)
        return nullptr;
    const CMHANDLE h = sdk.handle();
    const MatrixWindow_t windows[]
        = { window(1, 0, 0, 16384, 16384), window(2, 1000, 1000, 8000, 6000, true), window(3, 16384, 0, 16384, 16384) };
    const DeviceInfo_t sources[] = { device(1, "cam-1"), device(3, "cam-3") };
    SchemeDevice_t loopSources[6];
    for (int i = 0; i < 6; ++i)
        loopSources[i] = schemeSource(("loop-" + std::to_string(i)).c_str());
    const SchemeInfo_t loop = scheme(1, "Lobby loop", 1);
    const bool ok = CMatrix_SetMatrix(h, 2, 2, "Wall") == CMATRIX_OK
        && CMatrix_WindowAdd(h, windows, 3, true) == CMATRIX_OK && CMatrix_WindowSetDivision(h, 1, 4) == CMATRIX_OK
        && CMatrix_WindowDeviceAdd(h, 1, sources, 2, true) == CMATRIX_OK && CMatrix_SchemeSet(h, &loop) == CMATRIX_OK
        && CMatrix_SchemeAddDevices(h, 1, loopSources, 6, true) == CMATRIX_OK;
    if (!ok)
        qWarning("standard wall not laid out on decoder %d", n);
    return ok ? d : nullptr;
}

KVMS_TEST_MAIN(WallTests)
