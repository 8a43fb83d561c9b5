#include "WallRecords.h"

#include <QDataStream>

namespace wallrecords {

DeviceInfo_t source(int subWindow, const char* devId)
{
    DeviceInfo_t d {};
    d.subWindow = subWindow;
    setText(d.devId, devId);
    setText(d.name, devId);
    d.channel = subWindow;
    d.protocol = 1;
    setText(d.ip, "127.0.0.9");
    d.mode = 2;
    return d;
}

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

QByteArray wallPrint(const std::vector<vdec::Window>& windows)
{
    QByteArray out;
    QDataStream s(&out, QIODevice::WriteOnly);
    for (const vdec::Window& w : windows) {
        s << w.id << w.floating << w.x << w.y << w.w << w.h << w.layer << w.division << w.fullScreenSub << w.sourceKind
          << w.turnIndex << quint32(w.sources.size());
        for (const auto& [sub, device] : w.sources)
            s << sub << bytesOf(device);
    }
    return out;
}

QByteArray statePrint(const vdec::DecoderSnapshot& snapshot)
{
    QByteArray out;
    QDataStream s(&out, QIODevice::WriteOnly);
    for (const vdec::Scene& scene : snapshot.scenes) {
        s << scene.id << QByteArray::fromStdString(scene.name) << wallPrint(scene.windows);
        for (const auto& [window, run] : scene.loops)
            s << window << run.schemeId << run.startIndex;
    }
    for (const vdec::Scheme& scheme : snapshot.schemes) {
        s << bytesOf(scheme.info);
        for (const SchemeDevice_t& d : scheme.devices)
            s << bytesOf(d);
    }
    for (const auto& [window, run] : snapshot.loops)
        s << window << run.schemeId << run.startIndex;
    s << bytesOf(snapshot.banner) << bytesOf(snapshot.audio);
    for (const auto& [cell, color] : snapshot.screenColors)
        s << cell.first << cell.second << bytesOf(color);
    s << wallPrint(snapshot.windows);
    return out;
}

} // namespace wallrecords
