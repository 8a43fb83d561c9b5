#include "WireHeader.h"

#include "ByteOrder.h"

namespace cmatrix::wire {

void WireHeader::encode(uint8_t* out) const
{
    putBe32(out, magic);
    putBe16(out + 4, version);
    putBe16(out + 6, type);
    putBe32(out + 8, requestId);
    putBe32(out + 12, static_cast<uint32_t>(status));
    putBe32(out + 16, length);
}

WireHeader::Parse WireHeader::decode(const uint8_t* in, size_t size, WireHeader& out)
{
    if (size < kSize)
        return Parse::NeedMore;
    out.magic = getBe32(in);
    if (out.magic != kMagic)
        return Parse::BadMagic;
    out.version = getBe16(in + 4);
    if (out.version != kVersion)
        return Parse::BadVersion;
    out.type = getBe16(in + 6);
    out.requestId = getBe32(in + 8);
    out.status = static_cast<int32_t>(getBe32(in + 12));
    out.length = getBe32(in + 16);
    if (out.length > kMaxPayload)
        return Parse::TooLarge;
    return Parse::Ok;
}

} // namespace cmatrix::wire
