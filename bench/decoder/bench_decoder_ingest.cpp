// The virtual decoder taking in 1920x1080 JPEG pictures (a camera-like scene, about
// 300 KB) for a window of 16 sub-windows at once, each fed by its own media
// distribution through the real SDK: can it keep up with 16 x 25 = 400 pictures a
// second, how many can it take at most, and what does a picture cost in CPU time
// (the whole process: SDK senders and decoder)? The machine's other load counts:
// run it on an idle machine, or read it beside the load average it prints. Three ways
// of decoding are measured: the decoder's own (at the size shown, 960x540, the JPEG
// decoder's 1/2 scale, and at most one picture per sub-window every 200 ms, the latest
// when looked at), every picture at the size shown, and every picture whole and scaled
// afterwards.

#include "IngestRig.h"
#include "ScenePicture.h"

#include "KavFrame.h"
#include "core/DecoderConfig.h"
#include "media/PictureDecoder.h"

#include <QGuiApplication>
#include <QImage>

#include <benchmark/benchmark.h>

#include <vector>

namespace {

constexpr double kFps = 25;
constexpr double kSeconds = 5;

// Picture decoding loads Qt's image plugins, which takes an application object.
void ensureApplication()
{
    static int argc = 1;
    static char name[] = "bench_decoder_ingest";
    static char* argv[] = { name, nullptr };
    if (!QCoreApplication::instance()) {
        if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
            qputenv("QT_QPA_PLATFORM", "offscreen");
        new QGuiApplication(argc, argv); // lives as long as the program
    }
}

const QByteArray& sceneJpeg()
{
    ensureApplication();
    static const QByteArray jpeg = ScenePicture::jpeg();
    return jpeg;
}

const std::vector<uint8_t>& sceneFrame()
{
    static const std::vector<uint8_t> frame = [] {
        const QByteArray& jpeg = sceneJpeg();
        KavFrame f {};
        f.type = KAV_TYPE_KEY;
        f.data = reinterpret_cast<const unsigned char*>(jpeg.constData());
        f.size = uint32_t(jpeg.size());
        KavStreamInfo info {};
        info.flags = KAV_STREAM_VIDEO | KAV_STREAM_AUDIO;
        info.videoCodec = 4;
        info.frameRateNum = 25;
        info.frameRateDen = 1;
        info.width = 1920;
        info.height = 1080;
        std::vector<uint8_t> out(size_t(KavCalcFrameSize(f.type, f.size)));
        out.resize(size_t(std::max(0, KavPackFrame(&f, &info, out.data(), int(out.size())))));
        return out;
    }();
    return frame;
}

// One picture decoded for a 960x540 sub-window: the decoder's own cost, alone.
void BM_DecodePicture(benchmark::State& state)
{
    const bool atShownSize = state.range(0) != 0;
    const QByteArray& jpeg = sceneJpeg();
    for (auto _ : state) {
        QImage image;
        if (!vdec::PictureDecoder::decode(reinterpret_cast<const uint8_t*>(jpeg.constData()), size_t(jpeg.size()),
                QSize(960, 540), atShownSize, image)) {
            state.SkipWithError("does not decode");
            break;
        }
        benchmark::DoNotOptimize(image);
    }
    state.SetLabel(atShownSize ? "decoded at 960x540" : "decoded whole, then scaled");
    state.counters["jpeg_kB"] = double(jpeg.size()) / 1024;
}

// fps 0: every sender sends as fast as it is answered.
void ingest(benchmark::State& state, double fps)
{
    ensureApplication();
    const int mode = int(state.range(0));
    const bool atShownSize = mode != 0;
    IngestRig rig(atShownSize, mode == 2 ? vdec::DecoderConfig().pictureIntervalMs : 0);
    if (!rig.error().isEmpty()) {
        state.SkipWithError(qPrintable(rig.error()));
        return;
    }
    IngestRig::Result r;
    for (auto _ : state)
        r = rig.run(sceneFrame(), fps, kSeconds);
    if (r.failures > 0 || r.frames == 0) {
        state.SkipWithError("frames refused");
        return;
    }
    const double achieved = r.frames / r.seconds;
    static const char* const labels[]
        = { "every picture decoded whole, then scaled", "every picture decoded at 960x540", "decoder's default" };
    state.SetLabel(labels[mode]);
    state.counters["fps"] = achieved;
    state.counters["cpu_ms_per_frame"] = 1000 * r.cpuSeconds / r.frames;
    state.counters["decoded_share"] = double(r.decoded) / r.frames;
    state.counters["frame_kB"] = double(sceneFrame().size()) / 1024;
    if (fps > 0) {
        const double target = fps * IngestRig::kStreams;
        state.counters["target_fps"] = target;
        state.counters["kept_up"] = achieved >= 0.95 * target ? 1 : 0;
        state.counters["skipped"] = r.late;
    }
}

void BM_IngestPaced(benchmark::State& state)
{
    ingest(state, kFps);
}

void BM_IngestFlatOut(benchmark::State& state)
{
    ingest(state, 0);
}

} // namespace

BENCHMARK(BM_DecodePicture)->Arg(1)->Arg(0)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_IngestPaced)->Arg(2)->Arg(1)->Arg(0)->Iterations(1)->UseRealTime()->Unit(benchmark::kSecond);
BENCHMARK(BM_IngestFlatOut)->Arg(2)->Arg(1)->Arg(0)->Iterations(1)->UseRealTime()->Unit(benchmark::kSecond);

BENCHMARK_MAIN();
