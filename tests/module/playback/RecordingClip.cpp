#include "RecordingClip.h"

#include "TestTimeout.h"

#include <QProcess>

namespace kvmstest {

bool makeRecordingClip(const QString& path, int seconds)
{
    QProcess ffmpeg;
    ffmpeg.start(QStringLiteral("ffmpeg"),
        { "-hide_banner", "-loglevel", "error", "-nostdin", "-y", "-f", "lavfi", "-i",
            QStringLiteral("testsrc2=size=320x180:rate=25:duration=%1").arg(seconds), "-c:v", "libx264", "-preset",
            "ultrafast", "-g", "25", "-bf", "0", "-pix_fmt", "yuv420p", path });
    return ffmpeg.waitForFinished(scaled(60000)) && ffmpeg.exitStatus() == QProcess::NormalExit
        && ffmpeg.exitCode() == 0;
}

} // namespace kvmstest
