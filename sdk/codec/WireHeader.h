#pragma once

#include <cstddef>
#include <cstdint>

namespace cmatrix::wire {

// Every message starts with this fixed header; all its fields are big-endian.
struct WireHeader {
    static constexpr uint32_t kMagic = 0x4B4D5458; // "KMTX"
    static constexpr uint16_t kVersion = 1;
    static constexpr size_t kSize = 20;
    // Checked before any allocation: a JPEG picture or a firmware image fits, a
    // garbage length does not.
    static constexpr uint32_t kMaxPayload = 64u * 1024u * 1024u;

    uint32_t magic = kMagic;
    uint16_t version = kVersion;
    uint16_t type = 0;
    uint32_t requestId = 0;
    int32_t status = 0;
    uint32_t length = 0;

    enum class Parse { Ok, NeedMore, BadMagic, BadVersion, TooLarge };

    void encode(uint8_t* out) const;
    static Parse decode(const uint8_t* in, size_t size, WireHeader& out);
};

} // namespace cmatrix::wire
