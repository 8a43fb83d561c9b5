#include "WallRecords.h"

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

int64_t turnOf(const vdec::VirtualDecoder* d, int32_t windowId)
{
    const vdec::DecoderSnapshot s = d->snapshot();
    const auto it = s.loops.find(windowId);
    return it == s.loops.end() ? -1 : it->second.turn;
}

} // namespace wallrecords
