#include "ClipMaker.h"

#include "CameraList.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>

namespace {

const char* const kFont = "/usr/share/fonts/truetype/dejavu/DejaVuSans-Bold.ttf";
constexpr int kEncodeTimeoutMs = 10 * 60 * 1000;
// Changing how clips look changes this, so old clips are not reused.
const char* const kRecipe = "v1";

} // namespace

ClipMaker::ClipMaker(QString dir)
    : dir_(std::move(dir))
{
}

QString ClipMaker::defaultDir()
{
    QString cache = qEnvironmentVariable("XDG_CACHE_HOME");
    if (cache.isEmpty())
        cache = QDir::homePath() + QStringLiteral("/.cache");
    return cache + QStringLiteral("/kvms-camera-sim");
}

QString ClipMaker::clip(const QString& cameraName, QSize size, int seconds, QString* error) const
{
    const QByteArray hash = QCryptographicHash::hash(cameraName.toUtf8(), QCryptographicHash::Sha1).toHex().left(8);
    const QString base = QStringLiteral("%1-%2-%3x%4-%5s-%6")
                             .arg(CameraList::slug(cameraName), QString::fromLatin1(hash))
                             .arg(size.width())
                             .arg(size.height())
                             .arg(seconds)
                             .arg(QLatin1String(kRecipe));
    const QString path = QDir(dir_).filePath(base + QStringLiteral(".h264"));
    if (QFileInfo(path).size() > 0)
        return path;
    if (!QDir().mkpath(dir_)) {
        *error = QStringLiteral("cannot create %1").arg(dir_);
        return {};
    }
    // The name goes through a file, so no character of it can break the filter text.
    const QString textFile = base + QStringLiteral(".txt");
    QFile text(QDir(dir_).filePath(textFile));
    if (!text.open(QIODevice::WriteOnly | QIODevice::Truncate) || text.write(cameraName.toUtf8()) < 0) {
        *error = QStringLiteral("cannot write %1").arg(text.fileName());
        return {};
    }
    text.close();
    const int h = size.height();
    const QString filters
        = QStringLiteral("drawtext=fontfile=%1:textfile=%2:x=h/30:y=h/30:fontsize=%3:fontcolor=white:box=1:"
                         "boxcolor=black@0.6:boxborderw=%4,"
                         "drawtext=fontfile=%1:text='%{pts\\:hms}':x=(w-tw)/2:y=(h-th)/2:fontsize=%5:"
                         "fontcolor=yellow:box=1:boxcolor=black@0.7:boxborderw=%4")
              .arg(QLatin1String(kFont), textFile)
              .arg(std::max(10, h / 12))
              .arg(std::max(2, h / 90))
              .arg(std::max(12, h / 7));
    const QString bitrate = QStringLiteral("%1k").arg(std::max(200, size.width() * size.height() / 500));
    const QString partial = QStringLiteral("%1.%2.part").arg(base).arg(QCoreApplication::applicationPid());
    QProcess ffmpeg;
    ffmpeg.setWorkingDirectory(dir_);
    ffmpeg.setProcessChannelMode(QProcess::MergedChannels);
    ffmpeg.start(QStringLiteral("ffmpeg"),
        { "-hide_banner", "-loglevel", "error", "-nostdin", "-y", "-f", "lavfi", "-i",
            QStringLiteral("testsrc2=size=%1x%2:rate=25:duration=%3").arg(size.width()).arg(h).arg(seconds), "-vf",
            filters, "-c:v", "libx264", "-preset", "veryfast", "-tune", "zerolatency", "-profile:v", "main", "-pix_fmt",
            "yuv420p", "-g", "25", "-keyint_min", "25", "-sc_threshold", "0", "-bf", "0", "-b:v", bitrate, "-maxrate",
            bitrate, "-bufsize", bitrate, "-x264-params", "repeat-headers=1", "-bsf:v", "h264_metadata=aud=insert",
            "-f", "h264", partial });
    if (!ffmpeg.waitForStarted()) {
        *error = QStringLiteral("ffmpeg is not installed (Debian package ffmpeg)");
        return {};
    }
    const bool done = ffmpeg.waitForFinished(kEncodeTimeoutMs);
    const QString partialPath = QDir(dir_).filePath(partial);
    if (!done || ffmpeg.exitStatus() != QProcess::NormalExit || ffmpeg.exitCode() != 0) {
        *error = QStringLiteral("encoding %1 failed: %2").arg(base, QString::fromLocal8Bit(ffmpeg.readAll()).trimmed());
        QFile::remove(partialPath);
        return {};
    }
    QFile::remove(path);
    if (!QFile::rename(partialPath, path)) {
        *error = QStringLiteral("cannot rename %1").arg(partialPath);
        return {};
    }
    return path;
}
