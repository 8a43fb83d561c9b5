#include "VideoRig.h"

#include "CMatrixSDK.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QThread>

#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>

namespace {

const char* const kCameraAddress = "127.0.0.62";
const char* const kDecoderAddress = "127.0.0.61";

QString clipDir()
{
    return QCoreApplication::applicationDirPath() + QStringLiteral("/../camera-sim-bench-clips");
}

double seconds(const timeval& t)
{
    return double(t.tv_sec) + double(t.tv_usec) / 1e6;
}

} // namespace

VideoRig::~VideoRig()
{
    if (sdk_)
        CMatrix_Destroy(CMHANDLE(sdk_));
    decoder_.reset();
    if (cameras_) {
        cameras_->terminate();
        if (!cameras_->waitForFinished(5000))
            cameras_->kill();
        cameras_->waitForFinished(5000);
    }
}

double VideoRig::processCpu()
{
    rusage u {};
    getrusage(RUSAGE_SELF, &u);
    return seconds(u.ru_utime) + seconds(u.ru_stime);
}

double VideoRig::cpuOf(qint64 pid)
{
    QFile stat(QStringLiteral("/proc/%1/stat").arg(pid));
    if (!stat.open(QIODevice::ReadOnly))
        return 0;
    const QByteArray text = stat.readAll();
    // Fields after the command (which may hold spaces): utime and stime are 14 and 15.
    const QList<QByteArray> f = text.mid(text.lastIndexOf(')') + 2).split(' ');
    if (f.size() < 13)
        return 0;
    return double(f[11].toLongLong() + f[12].toLongLong()) / double(sysconf(_SC_CLK_TCK));
}

QString VideoRig::mainClip() const
{
    const QStringList clips = QDir(clipDir()).entryList({ "Camera_01-*-1920x1080-*.h264" });
    return clips.isEmpty() ? QString() : QDir(clipDir()).filePath(clips.first());
}

bool VideoRig::start(int cameras, QString* error)
{
    cameras_ = std::make_unique<QProcess>();
    cameras_->setProcessChannelMode(QProcess::ForwardedErrorChannel);
    cameras_->start(QCoreApplication::applicationDirPath() + QStringLiteral("/camera-sim"),
        { "--address", kCameraAddress, "--port", "0", "--count", QString::number(cameras), "--clip-dir", clipDir(),
            "--clip-seconds", "4", "--exit-with-stdin" });
    QDeadlineTimer deadline(15 * 60 * 1000); // the first run encodes every clip
    QByteArray out;
    while (!deadline.hasExpired() && cameras_->state() != QProcess::NotRunning && !out.contains("ready")) {
        cameras_->waitForReadyRead(200);
        out += cameras_->readAllStandardOutput();
    }
    const QRegularExpressionMatch m = QRegularExpression(QStringLiteral(":(\\d+)/ch1/main")).match(out);
    cameraPort_ = quint16(m.captured(1).toUInt());
    if (!out.contains("ready") || cameraPort_ == 0) {
        *error = QStringLiteral("camera-sim did not start: ") + QString::fromUtf8(out);
        return false;
    }
    vdec::DecoderConfig config;
    config.address = QString::fromLatin1(kDecoderAddress);
    config.httpPort = -1;
    decoder_ = std::make_unique<vdec::VirtualDecoder>(config);
    if (!decoder_->start(error))
        return false;
    sdk_ = CMatrix_Create();
    if (!sdk_
        || CMatrix_Connect(CMHANDLE(sdk_), kDecoderAddress, decoder_->port(), "admin", "admin123", 5000) != CMATRIX_OK
        || CMatrix_SetMatrix(CMHANDLE(sdk_), 1, 1, "Bench") != CMATRIX_OK) {
        *error = QStringLiteral("no SDK connection");
        return false;
    }
    return true;
}

bool VideoRig::bind(int count, int division, int stream, QString* error)
{
    MatrixWindow_t window {};
    window.id = 1;
    window.w = window.h = 32768;
    std::vector<DeviceInfo_t> sources(static_cast<size_t>(division));
    for (int i = 0; i < division; ++i) {
        DeviceInfo_t& d = sources[size_t(i)];
        d.subWindow = i + 1;
        if (i >= count) {
            std::strcpy(d.devId, "emp_1");
            d.protocol = 8;
            continue;
        }
        std::snprintf(d.devId, sizeof d.devId, "NVR62&%d", i + 1);
        std::snprintf(d.name, sizeof d.name, "Camera %02d", i + 1);
        std::strcpy(d.ip, kCameraAddress);
        d.port = cameraPort_;
        d.channel = i + 1;
        d.stream = stream;
        d.mode = 2;
    }
    CMHANDLE h = CMHANDLE(sdk_);
    if (CMatrix_WindowAdd(h, &window, 1, true) != CMATRIX_OK || CMatrix_WindowSetDivision(h, 1, division) != CMATRIX_OK
        || CMatrix_WindowDeviceAdd(h, 1, sources.data(), division, true) != CMATRIX_OK) {
        *error = QStringLiteral("binding failed");
        return false;
    }
    QDeadlineTimer deadline(30000);
    while (!deadline.hasExpired()) {
        int shown = 0;
        for (const auto& [key, v] : decoder_->snapshot().video)
            shown += v.shown > 0 ? 1 : 0;
        if (shown == count)
            return true;
        QThread::msleep(100);
    }
    *error = QStringLiteral("not every stream played");
    return false;
}

int VideoRig::snapshotCall(int width, int height)
{
    unsigned char* jpeg = nullptr;
    const int size = CMatrix_GetWallSnapshot(CMHANDLE(sdk_), width, height, &jpeg);
    if (jpeg)
        CMatrix_Free(CMHANDLE(sdk_), jpeg);
    return size;
}

VideoRig::Result VideoRig::measure(double wanted)
{
    auto totals = [this]() {
        Result t;
        for (const auto& [key, v] : decoder_->snapshot().video) {
            t.decoded += v.decoded;
            t.shown += v.shown;
            t.dropped += v.dropped;
            t.failed += v.failed;
            t.playing += v.state == vdec::VideoStatus::State::Playing ? 1 : 0;
        }
        return t;
    };
    Result r;
    const Result before = totals();
    r.maxLateMs = 0; // lateness counts from here: sampled, and `dropped` counts every late one
    const double cpu0 = processCpu();
    const double cam0 = cpuOf(cameras_->processId());
    const qint64 start = QDateTime::currentMSecsSinceEpoch();
    std::vector<int> latencies;
    while (QDateTime::currentMSecsSinceEpoch() - start < qint64(wanted * 1000)) {
        QThread::msleep(97); // a sample now and then, not in step with the pictures
        for (const auto& [key, v] : decoder_->snapshot().video) {
            if (v.latencyMs >= 0)
                latencies.push_back(v.latencyMs);
            r.maxLateMs = std::max(r.maxLateMs, v.lastLateMs);
        }
    }
    r.seconds = double(QDateTime::currentMSecsSinceEpoch() - start) / 1000;
    r.decoderCpu = processCpu() - cpu0;
    r.cameraCpu = cpuOf(cameras_->processId()) - cam0;
    const Result after = totals();
    r.decoded = after.decoded - before.decoded;
    r.shown = after.shown - before.shown;
    r.dropped = after.dropped - before.dropped;
    r.failed = after.failed - before.failed;
    r.playing = after.playing;
    if (!latencies.empty()) {
        std::sort(latencies.begin(), latencies.end());
        r.latencyP50 = latencies[latencies.size() / 2];
        r.latencyP95 = latencies[latencies.size() * 95 / 100];
        r.latencyMax = latencies.back();
    }
    return r;
}
