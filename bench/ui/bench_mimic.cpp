// The GUI thread's share of one live-mimic refresh on the offscreen platform: the wall's picture
// (already read from its JPEG by the worker) cut into every panel, and the canvas painted again.
//
//   BM_MimicRefresh/<side>/<division>: a wall of side x side windows, each divided in `division`,
//                                      on a 1600 x 900 canvas, every sub-window with a camera
//
// Medians are reported as counters.

#include "BenchWall.h"
#include "CanvasMimic.h"
#include "ControlMatrixWt.h"

#include <QApplication>
#include <QBuffer>
#include <QPainter>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <vector>

using namespace kvms_matrix;
using benchwall::median;
using Clock = std::chrono::steady_clock;

namespace {

const QSize kCanvas(1600, 900);

// A picture as the worker hands it over: read from a JPEG of the canvas's size.
QImage wallPicture(int shade)
{
    QImage image(kCanvas, QImage::Format_RGB32);
    QPainter painter(&image);
    QLinearGradient gradient(0, 0, kCanvas.width(), kCanvas.height());
    gradient.setColorAt(0, QColor(shade, 40, 90));
    gradient.setColorAt(1, QColor(20, 160, 255 - shade));
    painter.fillRect(image.rect(), gradient);
    painter.end();
    QByteArray jpeg;
    QBuffer buffer(&jpeg);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "JPEG", 80);
    return QImage::fromData(jpeg, "JPEG");
}

ControlMatrixWt* g_canvas = nullptr;

void BM_MimicRefresh(benchmark::State& state)
{
    const int side = int(state.range(0));
    g_canvas->setWindowInfoList(benchwall::wall(side, int(state.range(1)), QStringLiteral("Camera")), side, side);
    QApplication::processEvents();
    const QImage pictures[2] = { wallPicture(30), wallPicture(200) };
    std::vector<double> samples;
    int n = 0;
    for (auto _ : state) {
        const QImage& picture = pictures[++n % 2];
        const Clock::time_point start = Clock::now();
        CanvasMimic::applyPicture(g_canvas, picture, kCanvas);
        g_canvas->repaint();
        const double ms = std::chrono::duration<double, std::milli>(Clock::now() - start).count();
        samples.push_back(ms);
        state.SetIterationTime(ms / 1000.0);
        QApplication::processEvents();
    }
    state.counters["median_ms"] = median(samples);
    state.counters["panels"] = side * side * state.range(1);
}
BENCHMARK(BM_MimicRefresh)
    ->Args({ 1, 4 })
    ->Args({ 3, 9 })
    ->Args({ 5, 25 })
    ->UseManualTime()
    ->Iterations(60)
    ->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    ControlMatrixWt canvas;
    canvas.resize(kCanvas);
    canvas.show();
    QApplication::processEvents();
    g_canvas = &canvas;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
