// The worker polls its queue once a millisecond and carries out at most one task per pass, so
// a task waits for the next pass (0 to 1 ms when the worker is idle, a whole 1 ms sleep when it
// has just finished another) and a burst of tasks drains at about one per millisecond plus the
// decoder's round trip. These benchmarks measure both against the direct SDK call.
//
//   BM_DispatchLatency/idle:        operation called at a random moment of an idle worker
//   BM_DispatchLatency/backToBack:  the next operation called as soon as the previous started
//   BM_QueuedResolutionReads:       1000 getMatrixResolution tasks, call to last result
//   BM_DirectResolutionReads:       the same 1000 reads made on the SDK without the worker

#include "MatrixSdkWorker.h"

#include "core/VirtualDecoder.h"

#include "KSingleton.h"

#include <QCoreApplication>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <random>
#include <thread>
#include <vector>

using kvms_matrix::CSharedHandle;
using kvms_matrix::MatrixSdkWorker;
using kvms_matrix::WorkerTaskParam;
using Clock = std::chrono::steady_clock;

namespace {

MatrixSdkWorker* worker()
{
    return KCOMMON::KSingleton<MatrixSdkWorker>::instance();
}

// Stamped by the worker thread as a task is about to be dispatched.
std::atomic<int64_t> g_dispatchedAt { 0 };

void stampDispatch(const WorkerTaskParam&, void*)
{
    g_dispatchedAt.store(Clock::now().time_since_epoch().count(), std::memory_order_release);
}

int64_t waitForDispatch()
{
    int64_t at = 0;
    while ((at = g_dispatchedAt.exchange(0, std::memory_order_acq_rel)) == 0)
        std::this_thread::yield();
    return at;
}

double percentile(std::vector<double> samples, double p)
{
    if (samples.empty())
        return 0;
    std::sort(samples.begin(), samples.end());
    return samples[std::min(samples.size() - 1, size_t(p * double(samples.size())))];
}

// One decoder and one logged-in worker connection for the whole program.
struct Bench {
    vdec::VirtualDecoder decoder { []() {
        vdec::DecoderConfig config;
        config.address = QStringLiteral("127.0.0.170");
        config.httpPort = -1;
        return config;
    }() };
    QSharedPointer<CSharedHandle> handle;

    bool start()
    {
        if (!decoder.start())
            return false;
        std::atomic<bool> done { false };
        const auto connection = QObject::connect(worker(), &MatrixSdkWorker::signalConnectMatrixResult,
            [&](QSharedPointer<CSharedHandle> h, int ret, int, void*) {
                if (ret == CMATRIX_OK)
                    handle = h;
                done.store(true);
            });
        kvms_matrix::MatrixInfo info;
        info.ip = decoder.address();
        info.manager_port = decoder.port();
        info.username = QStringLiteral("admin");
        info.password = QStringLiteral("admin123");
        worker()->connectMatrix(info, nullptr);
        while (!done.load())
            std::this_thread::yield();
        QObject::disconnect(connection);
        return handle != nullptr;
    }
};

Bench* g_bench = nullptr;

void BM_DispatchLatency(benchmark::State& state)
{
    const bool idle = state.range(0) != 0;
    std::mt19937 random(42);
    std::uniform_int_distribution<int> gapUs(0, 2000);
    std::vector<double> samples;
    worker()->setDispatchObserver(&stampDispatch, nullptr);
    for (auto _ : state) {
        if (idle) {
            state.PauseTiming();
            std::this_thread::sleep_for(std::chrono::microseconds(gapUs(random)));
            state.ResumeTiming();
        }
        const Clock::time_point called = Clock::now();
        worker()->factoryReset({}); // no connection: the handler only reports -1
        const int64_t started = waitForDispatch();
        const double us = double(started - called.time_since_epoch().count()) / 1000.0;
        samples.push_back(us);
        state.SetIterationTime(us / 1e6);
    }
    worker()->setDispatchObserver(nullptr, nullptr);
    state.counters["median_us"] = percentile(samples, 0.5);
    state.counters["p99_us"] = percentile(samples, 0.99);
    state.SetLabel(idle ? "idle" : "backToBack");
}
BENCHMARK(BM_DispatchLatency)->Arg(1)->Arg(0)->UseManualTime()->Iterations(2000)->Unit(benchmark::kMicrosecond);

void BM_QueuedResolutionReads(benchmark::State& state)
{
    const int tasks = int(state.range(0));
    std::atomic<int> results { 0 };
    const auto connection = QObject::connect(
        worker(), &MatrixSdkWorker::signalMatrixGetResolutionResult, [&](ScreenResolution_t) { results.fetch_add(1); });
    for (auto _ : state) {
        results.store(0);
        for (int i = 0; i < tasks; ++i)
            worker()->getMatrixResolution(g_bench->handle);
        while (results.load() < tasks)
            std::this_thread::yield();
    }
    QObject::disconnect(connection);
    state.counters["tasks_per_s"]
        = benchmark::Counter(double(tasks) * double(state.iterations()), benchmark::Counter::kIsRate);
}
BENCHMARK(BM_QueuedResolutionReads)->Arg(1000)->Iterations(3)->Unit(benchmark::kMillisecond)->UseRealTime();

void BM_DirectResolutionReads(benchmark::State& state)
{
    const int calls = int(state.range(0));
    const CMHANDLE handle = g_bench->handle->handle();
    for (auto _ : state) {
        for (int i = 0; i < calls; ++i) {
            ScreenResolution_t resolution {};
            resolution.outputIndex = -1;
            if (CMatrix_GetResolution(handle, &resolution) != CMATRIX_OK) {
                state.SkipWithError("GetResolution failed");
                return;
            }
        }
    }
    state.counters["calls_per_s"]
        = benchmark::Counter(double(calls) * double(state.iterations()), benchmark::Counter::kIsRate);
}
BENCHMARK(BM_DirectResolutionReads)->Arg(1000)->Iterations(3)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    Bench bench;
    if (!bench.start()) {
        fprintf(stderr, "no decoder connection on 127.0.0.170\n");
        return 1;
    }
    g_bench = &bench;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();

    // Let the worker end before the decoder and the application go.
    worker()->disconnectMatrix(bench.handle);
    bench.handle.clear();
    worker()->finishPendingAndStop();
    worker()->wait();
    return 0;
}
