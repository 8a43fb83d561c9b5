// One search of the worker from searchMatrix() to signalSearchMatrixResult, with N in-process
// decoders answering on 127.0.0.2 and up (N = 1 and 16).
//
// By design a search is three discovery rounds of 32 centiseconds each, and a round lasts its
// whole time whatever answers (the SDK collects answers until the round ends), so no search can
// take less than 3 x 320 ms = 960 ms. What the benchmark shows is the rest: the worker picking
// the task off its queue (it polls every millisecond), a new SDK round thread per round, and the
// callback storing every answer (each unit answers every probe: 9 answers per unit per search)
// under the device mutex. Counters: found (entries in the result), over_ms (mean time past the
// 960 ms floor).

#include "MatrixSdkWorker.h"

#include "core/VirtualDecoder.h"

#include "KSingleton.h"

#include <QCoreApplication>

#include <benchmark/benchmark.h>

#include <atomic>
#include <chrono>
#include <memory>
#include <thread>
#include <vector>

using kvms_matrix::MatrixInfo;
using kvms_matrix::MatrixSdkWorker;
using Clock = std::chrono::steady_clock;

namespace {

constexpr int kDecoders = 16;
constexpr double kDesignMs = 3 * 320.0;

MatrixSdkWorker* worker()
{
    return KCOMMON::KSingleton<MatrixSdkWorker>::instance();
}

std::vector<std::unique_ptr<vdec::VirtualDecoder>>& decoders()
{
    static std::vector<std::unique_ptr<vdec::VirtualDecoder>> all;
    return all;
}

bool startDecoders()
{
    for (int i = 0; i < kDecoders; ++i) {
        vdec::DecoderConfig config;
        config.address = QStringLiteral("127.0.0.%1").arg(2 + i);
        config.deviceId = QStringLiteral("VD%1").arg(2 + i, 8, 10, QLatin1Char('0'));
        config.httpPort = -1;
        auto decoder = std::make_unique<vdec::VirtualDecoder>(config);
        if (!decoder->start())
            return false;
        decoders().push_back(std::move(decoder));
    }
    return true;
}

// Targets of the first n decoders only: their loopback discovery ports.
QByteArray targetsOf(int n)
{
    QStringList targets;
    for (int i = 0; i < n; ++i)
        targets << QStringLiteral("%1:%2").arg(decoders()[size_t(i)]->address()).arg(decoders()[size_t(i)]->udpPort());
    return targets.join(QLatin1Char(',')).toLatin1();
}

// Set from the SDK's thread as the result is emitted (direct connection).
std::atomic<int64_t> g_resultAt { 0 };
std::atomic<int> g_found { 0 };

void BM_SearchToResult(benchmark::State& state)
{
    const int answering = int(state.range(0));
    if (Discovery_SetTargets(targetsOf(answering).constData()) != CMATRIX_OK) {
        state.SkipWithError("targets refused");
        return;
    }
    double total = 0;
    int found = 0;
    for (auto _ : state) {
        g_resultAt.store(0);
        const Clock::time_point begin = Clock::now();
        worker()->searchMatrix();
        int64_t at = 0;
        while ((at = g_resultAt.load(std::memory_order_acquire)) == 0)
            std::this_thread::sleep_for(std::chrono::microseconds(200));
        const double seconds = std::chrono::duration<double>(Clock::duration(at) - begin.time_since_epoch()).count();
        state.SetIterationTime(seconds);
        total += seconds * 1000;
        found = g_found.load();
    }
    state.counters["found"] = found;
    state.counters["over_ms"] = total / double(state.iterations()) - kDesignMs;
    if (found != answering)
        state.SkipWithError("not every decoder was found");
}
BENCHMARK(BM_SearchToResult)->Arg(1)->Arg(kDecoders)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(8);

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (!startDecoders()) {
        fprintf(stderr, "decoders on 127.0.0.2..17 did not start\n");
        return 1;
    }
    QObject::connect(
        worker(), &MatrixSdkWorker::signalSearchMatrixResult, worker(),
        [](const QMap<QString, MatrixInfo>& found) {
            g_found.store(found.size());
            g_resultAt.store(Clock::now().time_since_epoch().count(), std::memory_order_release);
        },
        Qt::DirectConnection);
    benchmark::RunSpecifiedBenchmarks();
    worker()->finishPendingAndStop();
    worker()->wait();
    decoders().clear();
    return 0;
}
