#include "KavFrame.h"

#include "KavByteOrder.h"

#include <climits>
#include <cstdint>
#include <cstdio>
#include <cstring>

using namespace kav;

namespace {

constexpr unsigned char kMagic[3] = { 'k', 'a', 'v' };

constexpr unsigned char kVideoTag = 0x10;
constexpr unsigned char kVideoBodyLength = 7;
constexpr int kVideoBlockSize = 9;
constexpr unsigned char kAudioTag = 0x11;
constexpr unsigned char kAudioBodyLength = 4;
constexpr int kAudioBlockSize = 6;

// Unpacking turns the rate x 100 on the wire into a fraction over this.
constexpr std::uint32_t kUnpackedRateDen = 1000;

int validateFrame(const KavFrame& frame, const KavStreamInfo& info)
{
    if (frame.data == nullptr || frame.size == 0)
        return -1;
    if ((info.flags & KAV_STREAM_VIDEO)
        && (info.frameRateDen == 0 || info.frameRateNum == 0 || info.width == 0 || info.height == 0))
        return -1;
    // The audio bytes are opaque: nothing to check.
    return 0;
}

// Required output size in a range where no wrap can make a large frame look small;
// an unknown type keeps the -1 that lets it through the capacity test.
long long requiredFrameSize(unsigned int type, std::uint32_t payloadSize)
{
    const int header = KavCalcFrameHeaderSize(type);
    return header < 0 ? -1 : header + static_cast<long long>(payloadSize);
}

void writeVideoBlock(unsigned char* p, const KavStreamInfo& info)
{
    p[0] = kVideoTag;
    p[1] = kVideoBodyLength;
    p[2] = static_cast<unsigned char>(info.videoCodec);
    // Unsigned 32-bit arithmetic, truncated to 16 bits: what decoders expect.
    const std::uint32_t rate100 = info.frameRateNum * 100u / info.frameRateDen;
    storeNet16(p + 3, static_cast<std::uint16_t>(rate100));
    storeNet16(p + 5, info.width);
    storeNet16(p + 7, info.height);
}

// The audio bytes go out in the order B, D, A, C; readers expect exactly that.
void writeAudioBlock(unsigned char* p, const KavStreamInfo& info)
{
    p[0] = kAudioTag;
    p[1] = kAudioBodyLength;
    p[2] = static_cast<unsigned char>(info.audioB);
    p[3] = static_cast<unsigned char>(info.audioD);
    p[4] = static_cast<unsigned char>(info.audioA);
    p[5] = static_cast<unsigned char>(info.audioC);
}

void readVideoBlock(const unsigned char* p, KavStreamInfo& info)
{
    info.flags |= KAV_STREAM_VIDEO;
    info.videoCodec = p[2];
    info.frameRateNum = std::uint32_t(loadNet16(p + 3)) * 10u;
    info.frameRateDen = kUnpackedRateDen;
    info.width = loadNet16(p + 5);
    info.height = loadNet16(p + 7);
}

void readAudioBlock(const unsigned char* p, KavStreamInfo& info)
{
    info.flags |= KAV_STREAM_AUDIO;
    info.audioA = p[4];
    info.audioB = p[2];
    info.audioC = p[5];
    info.audioD = p[3];
}

// Walks the blocks between the fixed header and the payload. The length byte of a
// known tag is not consulted: its size is fixed. Reads stop at inLength, since the
// extension length was not part of the length test.
void readBlocks(const unsigned char* in, int inLength, unsigned extLength, KavStreamInfo& info)
{
    const unsigned end = KAV_FIXED_HEADER_SIZE + extLength;
    const auto fits = [inLength](unsigned offset, int n) { return static_cast<long long>(offset) + n <= inLength; };
    std::uint16_t offset = KAV_FIXED_HEADER_SIZE;
    while (offset < end) {
        if (!fits(offset, 2))
            return;
        const unsigned char* block = in + offset;
        if (block[0] == kVideoTag) {
            if (!fits(offset, kVideoBlockSize))
                return;
            readVideoBlock(block, info);
            offset += kVideoBlockSize;
        } else if (block[0] == kAudioTag) {
            if (!fits(offset, kAudioBlockSize))
                return;
            readAudioBlock(block, info);
            offset += kAudioBlockSize;
        } else {
            offset += 2 + block[1];
            std::fputs("Unknown type\n", stdout);
        }
    }
}

} // namespace

extern "C" {

int KavCalcFrameHeaderSize(unsigned int type)
{
    switch (type) {
    case KAV_TYPE_AUDIO:
        return KAV_FIXED_HEADER_SIZE + kAudioBlockSize;
    case KAV_TYPE_KEY:
        return KAV_FIXED_HEADER_SIZE + kVideoBlockSize + kAudioBlockSize;
    case KAV_TYPE_VIDEO:
    case KAV_TYPE_PLAIN:
        return KAV_FIXED_HEADER_SIZE;
    default:
        return -1;
    }
}

int KavCalcFrameSize(unsigned int type, unsigned int payloadSize)
{
    const long long size = requiredFrameSize(type, payloadSize);
    return size > INT_MAX ? -1 : static_cast<int>(size);
}

int KavPackFrameHeader(const KavFrame* frame, const KavStreamInfo* info, unsigned char* out, int outCapacity)
{
    // Signed on purpose: an unknown type (-1) passes the capacity test and gets a bare
    // fixed header, which callers that leave the type at 0 rely on.
    if (frame == nullptr || info == nullptr || out == nullptr || frame->size == 0
        || outCapacity < KavCalcFrameHeaderSize(frame->type) || validateFrame(*frame, *info) != 0)
        return -1;

    unsigned char header[KAV_FIXED_HEADER_SIZE] = {};
    std::memcpy(header, kMagic, sizeof kMagic);
    header[3] = static_cast<unsigned char>(frame->type);
    storeNet32(header + 4, frame->size);
    storeNet64(header + 8, frame->timestamp);
    int length = KAV_FIXED_HEADER_SIZE;

    // Blocks are written before the fixed header; a failure may leave a video block
    // in out, which the caller discards with the -1.
    if (frame->type == KAV_TYPE_KEY) {
        if (!(info->flags & KAV_STREAM_VIDEO))
            return -1;
        writeVideoBlock(out + length, *info);
        length += kVideoBlockSize;
    }
    if (frame->type == KAV_TYPE_KEY || frame->type == KAV_TYPE_AUDIO) {
        if (!(info->flags & KAV_STREAM_AUDIO))
            return -1;
        writeAudioBlock(out + length, *info);
        length += kAudioBlockSize;
    }

    header[16] = static_cast<unsigned char>(length - KAV_FIXED_HEADER_SIZE);
    std::memcpy(out, header, sizeof header);
    return length;
}

int KavPackFrame(const KavFrame* frame, const KavStreamInfo* info, unsigned char* out, int outCapacity)
{
    if (frame == nullptr || outCapacity < requiredFrameSize(frame->type, frame->size) || frame->data == nullptr)
        return -1;
    const int header = KavPackFrameHeader(frame, info, out, outCapacity);
    if (header < 1)
        return -1;
    std::memcpy(out + header, frame->data, frame->size);
    return header + static_cast<int>(frame->size);
}

int KavUnpackFrame(const unsigned char* in, int inLength, KavFrame* frame, KavStreamInfo* info)
{
    if (in == nullptr || inLength < KAV_FIXED_HEADER_SIZE || frame == nullptr || info == nullptr)
        return -1;

    unsigned char header[KAV_FIXED_HEADER_SIZE];
    std::memcpy(header, in, sizeof header);
    if (std::memcmp(header, kMagic, sizeof kMagic) != 0)
        return -1;
    const std::uint32_t size = loadNet32(header + 4);
    // Only the payload is counted, not the blocks: a frame short by its extension
    // length is accepted.
    if (static_cast<unsigned long long>(inLength) < KAV_FIXED_HEADER_SIZE + static_cast<unsigned long long>(size))
        return -1;

    const unsigned extLength = header[16];
    *frame = KavFrame {};
    frame->type = header[3];
    frame->data = in + KAV_FIXED_HEADER_SIZE + extLength;
    frame->size = size;
    frame->timestamp = loadNet64(header + 8);

    *info = KavStreamInfo {};
    readBlocks(in, inLength, extLength, *info);

    if (validateFrame(*frame, *info) != 0)
        return -1;
    return static_cast<int>(frame->size);
}

} // extern "C"
