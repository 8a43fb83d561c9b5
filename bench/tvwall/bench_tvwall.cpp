// The TV wall through the worker, end to end: the time from the public operation (which only
// queues a task) to the worker's result signal, against an in-process virtual decoder.
//
//   BM_ReadWholeWall:   getWindowInfo of a 5 x 5 wall whose 25 windows are each divided in 25,
//                       every one of the 625 sub-windows bound to a camera (one GetMatrix,
//                       GetBanner, WindowGet, GetDivision and 25 WindowDeviceGet round trips,
//                       with their call log lines)
//   BM_BindOneSource/1: setWindowSignalSource of a camera to a window of one sub-window
//   BM_BindOneSource/25: the same into one sub-window of a window divided in 25 (all 25
//                       descriptors are converted and sent, as the decoder takes them whole)
//   BM_DropDisplayDevice: a new display device into a window of 25 display devices the
//                       decoder already pulls; round_trips counts the requests it took
//
// The result signal is received by a direct connection on the worker thread, so the figures
// do not include a GUI event loop's delivery. Medians are reported as counters.

#include "MatrixSdkWorker.h"

#include "core/VirtualDecoder.h"

#include "KSingleton.h"
#include "LogInfo.h"

#include <QCoreApplication>
#include <QDir>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstring>
#include <thread>
#include <vector>

using namespace kvms_matrix;
using Clock = std::chrono::steady_clock;

namespace {

constexpr int kSide = 5;
constexpr int kDivision = 25;

MatrixSdkWorker* worker()
{
    return KCOMMON::KSingleton<MatrixSdkWorker>::instance();
}

double median(std::vector<double> samples)
{
    if (samples.empty())
        return 0;
    std::sort(samples.begin(), samples.end());
    return samples[samples.size() / 2];
}

DeviceInfo_t camera(int windowId, int sub)
{
    DeviceInfo_t d {};
    d.subWindow = sub;
    snprintf(d.devId, sizeof d.devId, "CAM%02d%02d&1", windowId, sub);
    snprintf(d.name, sizeof d.name, "Camera %d.%d", windowId, sub);
    d.channel = sub;
    d.protocol = 0;
    strcpy(d.ip, "127.0.0.9");
    d.port = 8000;
    d.mode = 2;
    return d;
}

// One decoder holding the full wall, and one logged-in worker connection.
struct Bench {
    vdec::VirtualDecoder decoder { []() {
        vdec::DecoderConfig config;
        config.address = QStringLiteral("127.0.0.250");
        config.httpPort = -1;
        return config;
    }() };
    QSharedPointer<CSharedHandle> handle;

    bool layWall()
    {
        CMHANDLE sdk = CMatrix_Create();
        bool ok = CMatrix_Connect(sdk, "127.0.0.250", decoder.port(), "admin", "admin123", 3000) == CMATRIX_OK
            && CMatrix_SetMatrix(sdk, kSide, kSide, "Bench") == CMATRIX_OK;
        const int32_t unit = 32768 / kSide;
        std::vector<MatrixWindow_t> cells;
        for (int i = 0; i < kSide * kSide; ++i) {
            MatrixWindow_t w {};
            w.id = uint32_t(i + 1);
            w.x = (i % kSide) * unit;
            w.y = (i / kSide) * unit;
            w.w = w.h = unit;
            cells.push_back(w);
        }
        ok = ok && CMatrix_WindowAdd(sdk, cells.data(), int(cells.size()), true) == CMATRIX_OK;
        for (int id = 1; ok && id <= kSide * kSide; ++id) {
            std::vector<DeviceInfo_t> sources;
            for (int sub = 1; sub <= kDivision; ++sub)
                sources.push_back(camera(id, sub));
            ok = CMatrix_WindowSetDivision(sdk, id, kDivision) == CMATRIX_OK
                && CMatrix_WindowDeviceAdd(sdk, id, sources.data(), kDivision, true) == CMATRIX_OK;
        }
        CMatrix_Destroy(sdk);
        return ok;
    }

    bool start()
    {
        if (!decoder.start() || !layWall())
            return false;
        std::atomic<bool> done { false };
        const auto connection = QObject::connect(worker(), &MatrixSdkWorker::signalConnectMatrixResult,
            [&](QSharedPointer<CSharedHandle> h, int ret, int, void*) {
                if (ret == CMATRIX_OK)
                    handle = h;
                done.store(true);
            });
        MatrixInfo info;
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

void BM_ReadWholeWall(benchmark::State& state)
{
    std::atomic<int> subWindows { -1 };
    const auto connection = QObject::connect(
        worker(), &MatrixSdkWorker::signalGetWindowInfoResult, [&](const QList<MatrixWindowInfo>& windows, int, int) {
            int count = 0;
            for (const MatrixWindowInfo& w : windows) {
                for (const MatrixSubWindowInfo& sub : w.subWindows)
                    count += sub.device.deviceType == 1 ? 1 : 0;
            }
            subWindows.store(count);
        });
    std::vector<double> samples;
    for (auto _ : state) {
        subWindows.store(-1);
        const Clock::time_point called = Clock::now();
        worker()->getWindowInfo(g_bench->handle);
        while (subWindows.load() < 0)
            std::this_thread::yield();
        const double ms = std::chrono::duration<double, std::milli>(Clock::now() - called).count();
        samples.push_back(ms);
        state.SetIterationTime(ms / 1000.0);
        if (subWindows.load() != kSide * kSide * kDivision) {
            state.SkipWithError("the wall did not read back whole");
            break;
        }
    }
    QObject::disconnect(connection);
    state.counters["median_ms"] = median(samples);
    state.counters["sub_windows"] = kSide * kSide * kDivision;
}
BENCHMARK(BM_ReadWholeWall)->UseManualTime()->Iterations(30)->Unit(benchmark::kMillisecond);

void BM_BindOneSource(benchmark::State& state)
{
    const int division = int(state.range(0));
    const int windowId = division == 1 ? 1 : 2;
    CMatrix_WindowSetDivision(g_bench->handle->handle(), windowId, division);
    MatrixWindowInfo window;
    window.windowId = windowId;
    window.division = division;
    for (int k = 0; k < division; ++k) {
        MatrixSubWindowInfo sub;
        sub.subWindowId = k + 1;
        sub.subWindowIndex = k;
        sub.device.deviceType = 1;
        sub.device.deviceId = QStringLiteral("CAM%1&1").arg(k + 1);
        sub.device.deviceName = QStringLiteral("Camera %1").arg(k + 1);
        sub.device.ip = QStringLiteral("127.0.0.9");
        sub.device.channel = 1;
        window.subWindows.append(sub);
    }
    std::atomic<int> ret { INT32_MIN };
    const auto connection = QObject::connect(worker(), &MatrixSdkWorker::signalSetWindowSignalSourceResult,
        [&](int result, const MatrixWindowInfo&, int, bool) { ret.store(result); });
    std::vector<double> samples;
    int n = 0;
    for (auto _ : state) {
        // A different camera each time, into the middle sub-window.
        window.subWindows[division / 2].device.deviceId = QStringLiteral("NEW%1").arg(++n);
        ret.store(INT32_MIN);
        const Clock::time_point called = Clock::now();
        worker()->setWindowSignalSource(g_bench->handle, window, division / 2 + 1, false);
        while (ret.load() == INT32_MIN)
            std::this_thread::yield();
        const double ms = std::chrono::duration<double, std::milli>(Clock::now() - called).count();
        samples.push_back(ms);
        state.SetIterationTime(ms / 1000.0);
        if (ret.load() != CMATRIX_OK) {
            state.SkipWithError("binding failed");
            break;
        }
    }
    QObject::disconnect(connection);
    state.counters["median_ms"] = median(samples);
}
BENCHMARK(BM_BindOneSource)->Arg(1)->Arg(25)->UseManualTime()->Iterations(200)->Unit(benchmark::kMillisecond);

// A display device dropped into one sub-window of a window of 25 whose other sub-windows already
// show display devices the decoder pulls through distributions: every one of them is converted
// again, and each asks whether the decoder still holds its source.
void BM_DropDisplayDevice(benchmark::State& state)
{
    const int windowId = 3;
    const CMHANDLE sdk = g_bench->handle->handle();
    CMatrix_WindowSetDivision(sdk, windowId, kDivision);
    MatrixWindowInfo window;
    window.windowId = windowId;
    window.division = kDivision;
    std::vector<DeviceInfo_t> held;
    for (int k = 0; k < kDivision; ++k) {
        MatrixSubWindowInfo sub;
        sub.subWindowId = k + 1;
        sub.subWindowIndex = k;
        sub.device.deviceType = 2;
        sub.device.deviceId = QStringLiteral("pc-%1").arg(k + 1);
        sub.device.displayName = sub.device.deviceId;
        sub.device.channel = 100 + k;
        sub.device.mainUrl = QStringLiteral("rtsp://127.0.0.1/held%1").arg(k);
        window.subWindows.append(sub);
        DeviceInfo_t d {};
        d.subWindow = k + 1;
        snprintf(d.devId, sizeof d.devId, "pc-%d", k + 1);
        d.channel = 100 + k;
        d.protocol = 7;
        d.mode = 2;
        held.push_back(d);
    }
    CMatrix_WindowDeviceAdd(sdk, windowId, held.data(), kDivision, true);
    std::atomic<int> ret { INT32_MIN };
    const auto connection = QObject::connect(worker(), &MatrixSdkWorker::signalSetWindowSignalSourceResult,
        [&](int result, const MatrixWindowInfo& echoed, int, bool) {
            // The new source's distribution is not wanted by the next round.
            worker()->removeMdHandle(g_bench->handle, echoed.windowId, kDivision / 2 + 1, 0);
            ret.store(result);
        });
    std::vector<double> samples;
    std::vector<double> trips;
    int n = 0;
    for (auto _ : state) {
        MatrixDeviceInfo& dropped = window.subWindows[kDivision / 2].device;
        dropped.deviceId = QStringLiteral("new-pc-%1").arg(++n);
        dropped.channel = 0; // a new source: a channel is found and a distribution started
        ret.store(INT32_MIN);
        const int before = g_bench->decoder.journal().total();
        const Clock::time_point called = Clock::now();
        worker()->setWindowSignalSource(g_bench->handle, window, kDivision / 2 + 1, false);
        while (ret.load() == INT32_MIN)
            std::this_thread::yield();
        const double ms = std::chrono::duration<double, std::milli>(Clock::now() - called).count();
        samples.push_back(ms);
        trips.push_back(g_bench->decoder.journal().total() - before);
        state.SetIterationTime(ms / 1000.0);
        if (ret.load() != CMATRIX_OK) {
            state.SkipWithError("binding failed");
            break;
        }
        while (worker()->pendingTaskCount() > 0) // the distribution's removal
            std::this_thread::yield();
    }
    QObject::disconnect(connection);
    state.counters["median_ms"] = median(samples);
    state.counters["round_trips"] = median(trips);
}
BENCHMARK(BM_DropDisplayDevice)->UseManualTime()->Iterations(30)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    // The call log and the banner mirror go to a directory of their own.
    QTemporaryDir dir;
    QDir::setCurrent(dir.path());
    vms_sdk::set_log_file(dir.filePath(QStringLiteral("bench.log")));
    Bench bench;
    if (!bench.start()) {
        fprintf(stderr, "no wall on a decoder at 127.0.0.250\n");
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
