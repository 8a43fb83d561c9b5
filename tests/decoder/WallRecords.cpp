#include "WallRecords.h"

#include <string>

namespace wallrecords {

SchemeInfo_t scheme(uint32_t id, const char* name, uint32_t interval, int32_t kind)
{
    SchemeInfo_t s {};
    s.id = id;
    setText(s.name, name);
    s.kind = kind;
    s.interval = interval;
    return s;
}

SchemeDevice_t schemeSource(const char* devId, const char* protocolName)
{
    SchemeDevice_t d {};
    d.index = -7; // the decoder numbers them
    setText(d.devId, devId);
    d.channel = 3;
    d.stream = 1;
    setText(d.name, devId);
    setText(d.protocolName, protocolName);
    setText(d.ip, "127.0.0.8");
    d.port = 8000;
    setText(d.mainUrl, "rtsp://127.0.0.8/0");
    setText(d.subUrl, "rtsp://127.0.0.8/1");
    setText(d.userName, "viewer");
    setText(d.password, "secret");
    d.mode = 2;
    return d;
}

BannerInfo_t banner(const char* message)
{
    BannerInfo_t b {};
    b.show = 1;
    setText(b.message, message);
    b.direction = 2;
    b.speed = 3;
    b.x = 0;
    b.y = 30000;
    b.w = 32768;
    b.h = 2000;
    b.fontSize = 1000;
    b.fontColor = 0xFF102030;
    b.backColor = 0x80000000;
    return b;
}

ScreenColor color(int brightness, int contrast, int saturation, int hue)
{
    ScreenColor c {};
    c.brightness = brightness;
    c.contrast = contrast;
    c.saturation = saturation;
    c.hue = hue;
    return c;
}

DeviceAudioInfo_t audio(const char* state, int windowId, int subWindowId, int volume)
{
    DeviceAudioInfo_t a {};
    setText(a.state, state);
    a.windowId = windowId;
    a.subWindowId = subWindowId;
    a.volume = volume;
    return a;
}

vdec::VirtualDecoder* standardWall(kvmstest::DecoderFixture& fixture, kvmstest::SdkSession& sdk, int turnUnitMs)
{
    vdec::VirtualDecoder* d
        = fixture.startDecoder(0, [turnUnitMs](vdec::DecoderConfig& c) { c.turnUnitMs = turnUnitMs; });
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
        qWarning("standard wall not laid out on %s", qPrintable(d->address()));
    return ok ? d : nullptr;
}

} // namespace wallrecords
