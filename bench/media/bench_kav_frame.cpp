// Packing copies the payload once, so it should run at memcpy speed for anything
// but tiny frames; unpacking copies nothing, so its cost must not grow with the
// payload. Both copies here use the same pre-touched buffers, so neither pays for
// page faults the other does not.

#include "KavFrame.h"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <cstring>
#include <map>
#include <memory>

namespace {

constexpr int kHeaderRoom = 32; // the largest header, for type 250

struct FreeDeleter {
    void operator()(unsigned char* p) const { std::free(p); }
};
using Buffer = std::unique_ptr<unsigned char, FreeDeleter>;

Buffer allocate(size_t size)
{
    const size_t rounded = (size + 63) / 64 * 64;
    return Buffer(static_cast<unsigned char*>(std::aligned_alloc(64, rounded)));
}

// Source payload and destination frame of one size, shared by all benchmarks and
// written once, so every page is mapped before timing starts.
struct Buffers {
    explicit Buffers(size_t size)
        : payload(allocate(size))
        , frame(allocate(size + kHeaderRoom))
    {
        std::memset(payload.get(), 0x5A, size);
        std::memset(frame.get(), 0, size + kHeaderRoom);
    }
    Buffer payload;
    Buffer frame;
};

Buffers& buffersFor(size_t size)
{
    static std::map<size_t, std::unique_ptr<Buffers>> cache;
    std::unique_ptr<Buffers>& slot = cache[size];
    if (!slot)
        slot = std::make_unique<Buffers>(size);
    return *slot;
}

KavStreamInfo keyFrameInfo()
{
    KavStreamInfo info {};
    info.flags = KAV_STREAM_VIDEO | KAV_STREAM_AUDIO;
    info.videoCodec = 1;
    info.frameRateNum = 25;
    info.frameRateDen = 1;
    info.width = 1920;
    info.height = 1080;
    return info;
}

// The payload lands where a packed frame of the given type puts it.
void BM_Memcpy(benchmark::State& state)
{
    const size_t size = size_t(state.range(0));
    const int offset = KavCalcFrameHeaderSize(unsigned(state.range(1)));
    Buffers& b = buffersFor(size);
    for (auto _ : state) {
        std::memcpy(b.frame.get() + offset, b.payload.get(), size);
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(int64_t(state.iterations()) * int64_t(size));
}

void BM_KavPackFrame(benchmark::State& state)
{
    const size_t size = size_t(state.range(0));
    Buffers& b = buffersFor(size);
    const KavFrame frame { unsigned(state.range(1)), b.payload.get(), unsigned(size), 0 };
    const KavStreamInfo info = keyFrameInfo();
    const int capacity = int(size) + kHeaderRoom;
    for (auto _ : state) {
        benchmark::DoNotOptimize(KavPackFrame(&frame, &info, b.frame.get(), capacity));
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(int64_t(state.iterations()) * int64_t(size));
}

void BM_KavUnpackFrame(benchmark::State& state)
{
    const size_t size = size_t(state.range(0));
    Buffers& b = buffersFor(size);
    const KavFrame frame { KAV_TYPE_KEY, b.payload.get(), unsigned(size), 0 };
    const KavStreamInfo info = keyFrameInfo();
    const int length = KavPackFrame(&frame, &info, b.frame.get(), int(size) + kHeaderRoom);
    if (length < 0) {
        state.SkipWithError("packing failed");
        return;
    }
    KavFrame out;
    KavStreamInfo outInfo;
    for (auto _ : state) {
        benchmark::DoNotOptimize(KavUnpackFrame(b.frame.get(), length, &out, &outInfo));
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(int64_t(state.iterations()));
}

void copySizes(benchmark::internal::Benchmark* b)
{
    b->ArgNames({ "bytes", "type" });
    for (int64_t type : { KAV_TYPE_KEY, KAV_TYPE_VIDEO })
        for (int64_t size : { int64_t(4) << 10, int64_t(256) << 10, int64_t(4) << 20 })
            b->Args({ size, type });
}

} // namespace

BENCHMARK(BM_Memcpy)->Apply(copySizes);
BENCHMARK(BM_KavPackFrame)->Apply(copySizes);
BENCHMARK(BM_KavUnpackFrame)->ArgName("bytes")->RangeMultiplier(4)->Range(4 << 10, 4 << 20);

BENCHMARK_MAIN();
