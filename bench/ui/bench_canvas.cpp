// The TV wall canvas on the offscreen platform, a 5 x 5 wall of 25 windows each divided in 25
// (625 panels):
//
//   BM_LayoutAfterResize: the canvas resized (alternately 1600 x 900 and 1599 x 899), which lays
//                         out every panel from wall units again; the paint that follows is not
//                         included
//   BM_ApplyWallInfo:     a whole window-info result applied (setWindowInfoList), alternating
//                         between two walls whose sources differ, so every panel is updated
//
// Medians are reported as counters.

#include "BenchWall.h"
#include "ControlMatrixWt.h"

#include <QApplication>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <vector>

using namespace kvms_matrix;
using benchwall::median;
using Clock = std::chrono::steady_clock;

namespace {

constexpr int kSide = 5;
constexpr int kDivision = 25;



ControlMatrixWt* g_canvas = nullptr;

void BM_LayoutAfterResize(benchmark::State& state)
{
    g_canvas->setWindowInfoList(benchwall::wall(kSide, kDivision, QStringLiteral("Camera")), kSide, kSide);
    QApplication::processEvents();
    std::vector<double> samples;
    bool odd = false;
    for (auto _ : state) {
        odd = !odd;
        const Clock::time_point start = Clock::now();
        g_canvas->resize(odd ? QSize(1599, 899) : QSize(1600, 900));
        const double ms = std::chrono::duration<double, std::milli>(Clock::now() - start).count();
        samples.push_back(ms);
        state.SetIterationTime(ms / 1000.0);
        // The paint requests the layout posted are served outside the measured time.
        QApplication::processEvents();
    }
    state.counters["median_ms"] = median(samples);
    state.counters["panels"] = kSide * kSide * kDivision;
}
BENCHMARK(BM_LayoutAfterResize)->UseManualTime()->Iterations(200)->Unit(benchmark::kMillisecond);

void BM_ApplyWallInfo(benchmark::State& state)
{
    const QList<MatrixWindowInfo> walls[2] = { benchwall::wall(kSide, kDivision, QStringLiteral("Camera")), benchwall::wall(kSide, kDivision, QStringLiteral("Stream")) };
    std::vector<double> samples;
    int n = 0;
    for (auto _ : state) {
        const QList<MatrixWindowInfo>& windows = walls[++n % 2];
        const Clock::time_point start = Clock::now();
        g_canvas->setWindowInfoList(windows, kSide, kSide);
        const double ms = std::chrono::duration<double, std::milli>(Clock::now() - start).count();
        samples.push_back(ms);
        state.SetIterationTime(ms / 1000.0);
        QApplication::processEvents();
    }
    state.counters["median_ms"] = median(samples);
}
BENCHMARK(BM_ApplyWallInfo)->UseManualTime()->Iterations(100)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    ControlMatrixWt canvas;
    canvas.resize(1600, 900);
    canvas.show();
    QApplication::processEvents();
    g_canvas = &canvas;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
