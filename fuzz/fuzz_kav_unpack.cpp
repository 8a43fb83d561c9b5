// Unpacks arbitrary bytes as a Kav frame. What unpacks must point inside the input
// (apart from the extension length the length test leaves out) and must survive
// being packed again and unpacked once more.

#include "FuzzCheck.h"
#include "KavFrame.h"

#include <climits>
#include <cstdint>
#include <cstring>
#include <vector>

namespace {

constexpr unsigned kBothBlocks = KAV_STREAM_VIDEO | KAV_STREAM_AUDIO;

bool packable(unsigned type, unsigned flags)
{
    switch (type) {
    case KAV_TYPE_KEY:
        return (flags & kBothBlocks) == kBothBlocks;
    case KAV_TYPE_AUDIO:
        return (flags & KAV_STREAM_AUDIO) != 0;
    default:
        return true;
    }
}

// Blocks the type carries are read back as written; the others are gone.
void checkRepackedInfo(unsigned type, const KavStreamInfo& before, const KavStreamInfo& after)
{
    const bool video = type == KAV_TYPE_KEY;
    const bool audio = type == KAV_TYPE_KEY || type == KAV_TYPE_AUDIO;
    FUZZ_CHECK(after.flags == ((video ? KAV_STREAM_VIDEO : 0u) | (audio ? KAV_STREAM_AUDIO : 0u)));
    if (video) {
        FUZZ_CHECK(after.videoCodec == (before.videoCodec & 0xFF));
        FUZZ_CHECK(after.frameRateNum == before.frameRateNum && after.frameRateDen == before.frameRateDen);
        FUZZ_CHECK(after.width == before.width && after.height == before.height);
    }
    if (audio) {
        FUZZ_CHECK(after.audioA == before.audioA && after.audioB == before.audioB);
        FUZZ_CHECK(after.audioC == before.audioC && after.audioD == before.audioD);
    }
}

void repack(const uint8_t* in, const KavFrame& frame, const KavStreamInfo& info)
{
    // A type without a known header size still packs, behind a bare fixed header.
    const int calculated = KavCalcFrameSize(frame.type, frame.size);
    const int required = calculated >= 0 ? calculated : KAV_FIXED_HEADER_SIZE + int(frame.size);
    std::vector<unsigned char> out(static_cast<size_t>(required));
    if (calculated >= 0)
        FUZZ_CHECK(KavPackFrame(&frame, &info, out.data(), required - 1) == -1);

    const int packed = KavPackFrame(&frame, &info, out.data(), required);
    if (!packable(frame.type, info.flags)) {
        FUZZ_CHECK(packed == -1);
        return;
    }
    FUZZ_CHECK(packed == required);
    FUZZ_CHECK(std::memcmp(out.data(), in, 16) == 0); // magic, type, size, timestamp
    FUZZ_CHECK(out[16] == required - int(frame.size) - KAV_FIXED_HEADER_SIZE);

    KavFrame again;
    KavStreamInfo againInfo;
    FUZZ_CHECK(KavUnpackFrame(out.data(), packed, &again, &againInfo) == int(frame.size));
    FUZZ_CHECK(again.type == frame.type && again.size == frame.size && again.timestamp == frame.timestamp);
    FUZZ_CHECK(again.data == out.data() + (required - int(frame.size)));
    FUZZ_CHECK(std::memcmp(again.data, frame.data, frame.size) == 0);
    checkRepackedInfo(frame.type, info, againInfo);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size > INT_MAX)
        return 0;
    KavFrame frame;
    KavStreamInfo info;
    const int result = KavUnpackFrame(data, int(size), &frame, &info);
    if (result < 0)
        return 0;

    FUZZ_CHECK(size >= KAV_FIXED_HEADER_SIZE);
    FUZZ_CHECK(result == int(frame.size) && frame.size > 0);
    FUZZ_CHECK(frame.type == data[3]);
    const unsigned extLength = data[16];
    FUZZ_CHECK(frame.data == data + KAV_FIXED_HEADER_SIZE + extLength);
    if (info.flags & KAV_STREAM_VIDEO) {
        FUZZ_CHECK(info.frameRateDen == 1000 && info.frameRateNum % 10 == 0);
        FUZZ_CHECK(info.frameRateNum > 0 && info.width > 0 && info.height > 0);
    }

    // The payload may reach past the input by the extension length, never further.
    const uint64_t payloadEnd = uint64_t(KAV_FIXED_HEADER_SIZE) + extLength + frame.size;
    FUZZ_CHECK(payloadEnd <= uint64_t(size) + extLength);
    if (payloadEnd <= size)
        repack(data, frame, info);
    return 0;
}
