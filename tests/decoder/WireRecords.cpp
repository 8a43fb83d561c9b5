#include "WireRecords.h"

#include <QStringList>

#include <cstring>

namespace wirerecords {

DeviceInfo_t source(int32_t subWindow, const char* devId, int32_t channel)
{
    DeviceInfo_t d;
    auto* bytes = reinterpret_cast<uint8_t*>(&d);
    for (size_t i = 0; i < sizeof d; ++i)
        bytes[i] = uint8_t(i * 7 + channel);
    d.subWindow = subWindow;
    memset(d.devId, 0, sizeof d.devId);
    strncpy(d.devId, devId, sizeof d.devId - 1);
    d.channel = channel;
    return d;
}

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

QByteArray bytesOf(const void* data, size_t size)
{
    return QByteArray(static_cast<const char*>(data), int(size));
}

QString stateText(const vdec::DecoderSnapshot& s)
{
    QStringList lines;
    lines << QStringLiteral("grid %1x%2 '%3' status %4 master '%5' clock %6 set %7 activated %8")
                 .arg(s.cols)
                 .arg(s.rows)
                 .arg(s.name)
                 .arg(s.status)
                 .arg(s.masterIp)
                 .arg(s.clockOffsetSecs)
                 .arg(s.lastSetTime.toString(Qt::ISODate))
                 .arg(s.activated);
    for (const ScreenInfo_t& screen : s.screens)
        lines << QStringLiteral("screen %1 %2").arg(screen.position).arg(QString::fromLatin1(bytesOf(screen).toHex()));
    for (const vdec::Window& w : s.windows) {
        lines << QStringLiteral("window %1 floating %2 rect %3,%4 %5x%6 layer %7 division %8 full %9")
                     .arg(w.id)
                     .arg(w.floating)
                     .arg(w.x)
                     .arg(w.y)
                     .arg(w.w)
                     .arg(w.h)
                     .arg(w.layer)
                     .arg(w.division)
                     .arg(w.fullScreenSub);
        for (const auto& [sub, device] : w.sources)
            lines << QStringLiteral("  source %1 %2").arg(sub).arg(QString::fromLatin1(bytesOf(device).toHex()));
    }
    return lines.join('\n');
}

} // namespace wirerecords
