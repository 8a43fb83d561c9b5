#include "SnapshotPrint.h"

#include "WireBuilders.h"

#include <QStringList>

namespace kvmstest {

namespace {

template <class Record> QString hex(const Record& r)
{
    return QString::fromLatin1(bytesOf(r).toHex());
}

void printLoops(QStringList& lines, const std::map<int32_t, vdec::LoopRun>& loops, const QString& indent)
{
    for (const auto& [window, run] : loops)
        lines << QStringLiteral("%1loop in %2: scheme %3 from %4")
                     .arg(indent)
                     .arg(window)
                     .arg(run.schemeId)
                     .arg(run.startIndex);
}

QString windowsPrint(const std::vector<vdec::Window>& windows)
{
    QStringList lines;
    for (const vdec::Window& w : windows) {
        lines << QStringLiteral(
            "window %1 floating %2 rect %3,%4 %5x%6 layer %7 division %8 full %9 turning %10 at %11")
                     .arg(w.id)
                     .arg(w.floating)
                     .arg(w.x)
                     .arg(w.y)
                     .arg(w.w)
                     .arg(w.h)
                     .arg(w.layer)
                     .arg(w.division)
                     .arg(w.fullScreenSub)
                     .arg(w.sourceKind)
                     .arg(w.turnIndex);
        for (const auto& [sub, device] : w.sources)
            lines << QStringLiteral("  source %1 %2").arg(sub).arg(hex(device));
    }
    return lines.join('\n');
}

} // namespace

QString statePrint(const vdec::DecoderSnapshot& s)
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
        lines << QStringLiteral("screen %1 %2").arg(screen.position).arg(hex(screen));
    lines << windowsPrint(s.windows);
    for (const vdec::Scene& scene : s.scenes) {
        lines << QStringLiteral("scene %1 '%2'").arg(scene.id).arg(QString::fromStdString(scene.name));
        lines << windowsPrint(scene.windows).replace(QLatin1String("\n"), QLatin1String("\n  ")).prepend("  ");
        printLoops(lines, scene.loops, QStringLiteral("  "));
    }
    for (const vdec::Scheme& scheme : s.schemes) {
        lines << QStringLiteral("scheme %1").arg(hex(scheme.info));
        for (const SchemeDevice_t& d : scheme.devices)
            lines << QStringLiteral("  source %1").arg(hex(d));
    }
    printLoops(lines, s.loops, QString());
    lines << QStringLiteral("banner %1").arg(hex(s.banner)) << QStringLiteral("audio %1").arg(hex(s.audio));
    for (const auto& [cell, color] : s.screenColors)
        lines << QStringLiteral("colour %1,%2 %3").arg(cell.first).arg(cell.second).arg(hex(color));
    return lines.join('\n');
}

} // namespace kvmstest
