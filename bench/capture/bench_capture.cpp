// The desktop capture loop at 1920 x 1080 on a real X server (run under Xvfb, see
// CMakeLists.txt), against an in-process virtual decoder: pictures a second and CPU per picture
// in each stage of the loop, with the toolkit's grab and JPEG writer (before) and with MIT-SHM
// and the direct libjpeg-turbo path (after); then ffmpeg grabbing the same display with x11grab
// into MJPEG at 25 pictures a second, with its CPU per picture. The X server's CPU per picture
// is given beside each, since shared memory moves the copy from the server to neither side.
//
//   bench_capture [seconds per run, default 10]

#include "BusyDesktop.h"
#include "ChildRun.h"

#include "CaptureStageClock.h"
#include "KovCapThread.h"
#include "MatrixSdkWorker.h"

#include "KSingleton.h"
#include "LogInfo.h"
#include "core/VirtualDecoder.h"

#include <QApplication>
#include <QEventLoop>
#include <QFile>
#include <QMutex>
#include <QMutexLocker>
#include <QRegularExpression>
#include <QScreen>
#include <QTemporaryDir>
#include <QTimer>

#include <chrono>
#include <cstdio>

using kvms_matrix::CaptureStageClock;
using kvms_matrix::KovCapThread;
using kvms_matrix::MatrixSdkWorker;
using Handle = QSharedPointer<kvms_matrix::CSharedHandle>;
using Clock = std::chrono::steady_clock;

namespace {

const char* const kStageNames[CaptureStageClock::StageCount] = { "grab", "pointer", "scale", "encode", "pack", "send" };

struct Totals {
    QMutex mutex;
    bool started = false;
    int rounds = 0; // after the first, which sets up and is not counted
    int sharedMemoryRounds = 0;
    double cpuMs[CaptureStageClock::StageCount] = {};
    double wallMs[CaptureStageClock::StageCount] = {};
    Clock::time_point first, last;
};

void collect(const CaptureStageClock::Round& round, void* context)
{
    auto* t = static_cast<Totals*>(context);
    QMutexLocker lock(&t->mutex);
    if (!round.grabbed)
        return;
    const Clock::time_point now = Clock::now();
    if (!t->started) {
        t->started = true;
        t->first = now;
        return;
    }
    ++t->rounds;
    t->sharedMemoryRounds += round.sharedMemory ? 1 : 0;
    for (int s = 0; s < CaptureStageClock::StageCount; ++s) {
        t->cpuMs[s] += round.cpuNs[s] / 1e6;
        t->wallMs[s] += round.wallNs[s] / 1e6;
    }
    t->last = now;
}

void runEventsFor(int ms)
{
    QEventLoop loop;
    QTimer::singleShot(ms, &loop, &QEventLoop::quit);
    loop.exec();
}

QString loadAverage()
{
    QFile file(QStringLiteral("/proc/loadavg"));
    return file.open(QIODevice::ReadOnly) ? QString::fromLatin1(file.readAll()).section(' ', 0, 2) : QString("?");
}

struct Decoder {
    vdec::VirtualDecoder* decoder;
    Handle handle;
};

Handle connectWorker(const vdec::VirtualDecoder& d)
{
    MatrixSdkWorker* w = KCOMMON::KSingleton<MatrixSdkWorker>::instance();
    Handle result;
    QEventLoop loop;
    QObject::connect(
        w, &MatrixSdkWorker::signalConnectMatrixResult, &loop,
        [&](Handle h, int ret, int, void*) {
            if (ret == CMATRIX_OK)
                result = h;
            loop.quit();
        },
        Qt::QueuedConnection);
    kvms_matrix::MatrixInfo info;
    info.ip = d.address();
    info.manager_port = d.port();
    info.port = d.port();
    info.username = d.config().adminUser;
    info.password = d.config().adminPassword;
    w->connectMatrix(info, nullptr);
    QTimer::singleShot(10000, &loop, &QEventLoop::quit);
    loop.exec();
    return result;
}

void runLoop(const char* name, bool fast, int seconds, const Handle& h, vdec::VirtualDecoder& d, long xPid)
{
    MatrixSdkWorker* w = KCOMMON::KSingleton<MatrixSdkWorker>::instance();
    KovCapThread::setFastPathsEnabled(fast);
    Totals totals;
    CaptureStageClock::setObserver(collect, &totals);
    const vdec::DecoderSnapshot before = d.snapshot();
    const quint64 frames0 = before.mediaOf(1, 1) ? before.mediaOf(1, 1)->frames : 0;
    const quint64 bytes0 = before.mediaOf(1, 1) ? before.mediaOf(1, 1)->bytes : 0;
    const double x0 = processCpuSeconds(xPid);
    w->startCaptureThread(h, 1, 1);
    runEventsFor(seconds * 1000);
    w->stopCaptureThread();
    const double x1 = processCpuSeconds(xPid);
    CaptureStageClock::setObserver(nullptr, nullptr);
    const vdec::DecoderSnapshot after = d.snapshot();
    const quint64 frames = (after.mediaOf(1, 1) ? after.mediaOf(1, 1)->frames : 0) - frames0;
    const quint64 bytes = (after.mediaOf(1, 1) ? after.mediaOf(1, 1)->bytes : 0) - bytes0;

    QMutexLocker lock(&totals.mutex);
    const int n = totals.rounds;
    if (n < 1) {
        std::printf("%-28s no pictures\n", name);
        return;
    }
    const double span = std::chrono::duration<double>(totals.last - totals.first).count();
    double cpu = 0;
    for (double c : totals.cpuMs)
        cpu += c;
    std::printf("%-28s %5d pictures  %6.2f /s  CPU %6.2f ms/picture  X server %6.2f ms/picture  %7.0f bytes  %s\n",
        name, n, n / span, cpu / n, xPid ? (x1 - x0) * 1000 / (n + 1) : -1.0, frames ? double(bytes) / frames : 0.0,
        totals.sharedMemoryRounds == n ? "MIT-SHM" : "toolkit grab");
    std::printf("%-28s", "  CPU ms by stage:");
    for (int s = 0; s < CaptureStageClock::StageCount; ++s)
        std::printf(" %s %.3f", kStageNames[s], totals.cpuMs[s] / n);
    std::printf("\n%-28s", "  wall ms by stage:");
    for (int s = 0; s < CaptureStageClock::StageCount; ++s)
        std::printf(" %s %.3f", kStageNames[s], totals.wallMs[s] / n);
    std::printf("\n");
    std::fflush(stdout);
}

void runFfmpeg(const char* name, const QStringList& quality, int seconds, const QString& display, long xPid,
    const QString& outPath)
{
    QStringList args { "-hide_banner", "-loglevel", "error", "-stats", "-y", "-f", "x11grab", "-framerate", "25",
        "-video_size", "1920x1080", "-draw_mouse", "1", "-i", display, "-t", QString::number(seconds), "-c:v", "mjpeg",
        "-pix_fmt", "yuvj420p" };
    args << quality << "-f"
         << "mjpeg" << outPath;
    const double x0 = processCpuSeconds(xPid);
    const ChildRun r = ChildRun::run(QStringLiteral("ffmpeg"), args);
    const double x1 = processCpuSeconds(xPid);
    if (!r.ok) {
        std::printf("%-28s failed (exit %d): %s\n", name, r.exitCode, qPrintable(r.errorOutput.right(300)));
        return;
    }
    int n = 0;
    QRegularExpressionMatchIterator it = QRegularExpression("frame=\\s*(\\d+)").globalMatch(r.errorOutput);
    while (it.hasNext())
        n = it.next().captured(1).toInt();
    if (n < 1) {
        std::printf("%-28s no pictures counted\n", name);
        return;
    }
    const qint64 size = QFile(outPath).size();
    // Pictures over the grabbing time asked for; the process's wall time adds its start-up.
    std::printf("%-28s %5d pictures  %6.2f /s  CPU %6.2f ms/picture  X server %6.2f ms/picture  %7.0f bytes  (process "
                "%.1f s)\n",
        name, n, double(n) / seconds, r.cpuSeconds * 1000 / n, xPid ? (x1 - x0) * 1000 / n : -1.0, double(size) / n,
        r.wallSeconds);
    std::fflush(stdout);
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "xcb");
    QApplication app(argc, argv);
    const int seconds = argc > 1 ? qMax(2, QString::fromLocal8Bit(argv[1]).toInt()) : 10;
    const QString display = QString::fromLocal8Bit(qgetenv("DISPLAY"));
    const QSize screen = QGuiApplication::primaryScreen()->geometry().size();
    QTemporaryDir dir;
    vms_sdk::set_log_file(dir.filePath("client.log"));

    BusyDesktop desktop;
    desktop.setGeometry(QGuiApplication::primaryScreen()->geometry());
    desktop.show();
    runEventsFor(500);

    vdec::DecoderConfig config;
    config.address = QStringLiteral("127.0.0.240");
    config.stateDir = dir.filePath("decoder");
    config.httpPort = -1;
    vdec::VirtualDecoder decoder(config);
    QString error;
    if (!decoder.start(&error)) {
        std::fprintf(stderr, "decoder did not start: %s\n", qPrintable(error));
        return 1;
    }
    const Handle h = connectWorker(decoder);
    MatrixWindow_t window {};
    window.id = 1;
    window.w = 32768;
    window.h = 32768;
    // Shown in a small sub-window: the decoder decodes cheaply and leaves the CPU to the loop.
    if (!h || CMatrix_SetMatrix(h->handle(), 1, 1, "Bench") != CMATRIX_OK
        || CMatrix_WindowAdd(h->handle(), &window, 1, true) != CMATRIX_OK
        || CMatrix_WindowSetDivision(h->handle(), 1, 25) != CMATRIX_OK) {
        std::fprintf(stderr, "could not set up the decoder\n");
        return 1;
    }

    const long xPid = xServerPid(display);
    std::printf("capture loop on %s (%dx%d), %d s per run, load average %s, X server pid %ld\n", qPrintable(display),
        screen.width(), screen.height(), seconds, qPrintable(loadAverage()), xPid);
    runLoop("before: toolkit grab + writer", false, seconds, h, decoder, xPid);
    runLoop("after: MIT-SHM + direct JPEG", true, seconds, h, decoder, xPid);
    const QString out = dir.filePath("ffmpeg.mjpeg");
    runFfmpeg("ffmpeg x11grab mjpeg -q:v 3", { "-q:v", "3" }, seconds, display, xPid, out);
    runFfmpeg("ffmpeg x11grab mjpeg default", {}, seconds, display, xPid, out);
    std::printf("load average at the end %s\n", qPrintable(loadAverage()));

    MatrixSdkWorker* w = KCOMMON::KSingleton<MatrixSdkWorker>::instance();
    w->disconnectAllMatrix();
    runEventsFor(1000);
    return 0;
}
