// Live video on the virtual decoder, with real cameras of camera-sim on loopback.
#include "VideoRig.h"

#include "core/DecoderSnapshot.h"
#include "monitor/WallMimic.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QProcess>

#include <benchmark/benchmark.h>

#include <sys/resource.h>

namespace {

constexpr int kCameras = 16;
constexpr double kSeconds = 10;
constexpr double kSettleSeconds = 3;

VideoRig* rig = nullptr;

bool ready(benchmark::State& state)
{
    if (!rig) {
        state.SkipWithError("the cameras or the decoder did not start");
        return false;
    }
    return true;
}

void report(benchmark::State& state, const VideoRig::Result& r)
{
    state.counters["playing"] = r.playing;
    state.counters["fps"] = r.shown / r.seconds;
    state.counters["decoded_fps"] = r.decoded / r.seconds;
    state.counters["cpu_cores"] = r.decoderCpu / r.seconds;
    state.counters["cpu_ms_per_frame"] = r.decoded ? 1000 * r.decoderCpu / r.decoded : 0;
    state.counters["late_over_200ms"] = double(r.dropped);
    state.counters["max_late_ms_sampled"] = r.maxLateMs;
    state.counters["failed"] = double(r.failed);
    state.counters["camsim_core_pct"] = 100 * r.cameraCpu / r.seconds;
    state.counters["latency_p50_ms"] = r.latencyP50;
    state.counters["latency_p95_ms"] = r.latencyP95;
    state.counters["latency_max_ms"] = r.latencyMax;
}

// 16 cameras' sub streams (640x360, 25 fps) in the 16 sub-windows of one window on one
// 1920x1080 screen: each shown at 480x270.
void BM_SixteenSubStreams(benchmark::State& state)
{
    if (!ready(state))
        return;
    QString error;
    if (!rig->bind(kCameras, 16, 1, &error)) {
        state.SkipWithError(qPrintable(error));
        return;
    }
    // The first seconds, while the last streams open and decode their first key pictures
    // beside those already playing, are counted apart from the steady state.
    const VideoRig::Result startup = rig->measure(kSettleSeconds);
    VideoRig::Result r;
    for (auto _ : state)
        r = rig->measure(kSeconds);
    report(state, r);
    state.counters["startup_late_over_200ms"] = double(startup.dropped);
    state.counters["startup_max_late_ms_sampled"] = startup.maxLateMs;
}

// The mimic: the whole wall (16 live sub-windows) drawn and encoded at the size asked;
// the thread's CPU time is the decoder's cost of one refresh.
void BM_MimicRefresh(benchmark::State& state)
{
    if (!ready(state))
        return;
    const int width = int(state.range(0));
    qint64 bytes = 0;
    for (auto _ : state) {
        const vdec::DecoderSnapshot s = rig->decoder().snapshot();
        bytes = vdec::WallMimic::jpeg(s, width, width * 9 / 16).size();
        benchmark::DoNotOptimize(bytes);
    }
    state.counters["jpeg_kB"] = double(bytes) / 1024;
}

// The same through the SDK, as the worker asks it: wall time of one call.
void BM_MimicCall(benchmark::State& state)
{
    if (!ready(state))
        return;
    const int width = int(state.range(0));
    for (auto _ : state) {
        if (rig->snapshotCall(width, width * 9 / 16) <= 0) {
            state.SkipWithError("snapshot refused");
            return;
        }
    }
}

double childrenCpu()
{
    rusage u {};
    getrusage(RUSAGE_CHILDREN, &u);
    return double(u.ru_utime.tv_sec + u.ru_stime.tv_sec) + double(u.ru_utime.tv_usec + u.ru_stime.tv_usec) / 1e6;
}

// One camera's main stream (1920x1080, 25 fps) on a whole screen, beside ffmpeg
// decoding the same clip (one thread, as the decoder uses per stream; and its default).
void BM_MainStream1080p(benchmark::State& state)
{
    if (!ready(state))
        return;
    QString error;
    if (!rig->bind(1, 1, 0, &error)) {
        state.SkipWithError(qPrintable(error));
        return;
    }
    VideoRig::Result r;
    for (auto _ : state)
        r = rig->measure(kSeconds);
    report(state, r);
    const QString clip = rig->mainClip();
    const int frames = 100; // 4 s at 25 fps
    for (const bool oneThread : { true, false }) {
        QStringList args { "-hide_banner", "-loglevel", "error", "-nostdin" };
        if (oneThread)
            args << "-threads"
                 << "1";
        args << "-i" << clip << "-f"
             << "null"
             << "-";
        const double before = childrenCpu();
        QProcess ffmpeg;
        ffmpeg.start(QStringLiteral("ffmpeg"), args);
        if (!ffmpeg.waitForFinished(120000) || ffmpeg.exitCode() != 0) {
            state.SkipWithError("ffmpeg failed");
            return;
        }
        state.counters[oneThread ? "ffmpeg_1thread_cpu_ms_per_frame" : "ffmpeg_default_cpu_ms_per_frame"]
            = 1000 * (childrenCpu() - before) / frames;
    }
}

} // namespace

BENCHMARK(BM_SixteenSubStreams)->Iterations(1)->UseRealTime()->Unit(benchmark::kSecond);
BENCHMARK(BM_MimicRefresh)->Arg(640)->Arg(1280)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_MimicCall)->Arg(640)->Arg(1280)->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_MainStream1080p)->Iterations(1)->UseRealTime()->Unit(benchmark::kSecond);

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen"); // labels are drawn as on the wall
    QGuiApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    VideoRig video;
    QString error;
    if (video.start(kCameras, &error))
        rig = &video;
    else
        fprintf(stderr, "bench_video: %s\n", qPrintable(error));
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
