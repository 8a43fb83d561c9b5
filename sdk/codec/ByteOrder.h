#pragma once

#include <cstdint>

// Big-endian helpers for the wire; byte by byte, so alignment and host order do not matter.
namespace cmatrix::wire {

inline void putBe16(uint8_t* p, uint16_t v)
{
    p[0] = uint8_t(v >> 8);
    p[1] = uint8_t(v);
}

inline void putBe32(uint8_t* p, uint32_t v)
{
    p[0] = uint8_t(v >> 24);
    p[1] = uint8_t(v >> 16);
    p[2] = uint8_t(v >> 8);
    p[3] = uint8_t(v);
}

inline void putBe64(uint8_t* p, uint64_t v)
{
    putBe32(p, uint32_t(v >> 32));
    putBe32(p + 4, uint32_t(v));
}

inline uint16_t getBe16(const uint8_t* p)
{
    return uint16_t((p[0] << 8) | p[1]);
}

inline uint32_t getBe32(const uint8_t* p)
{
    return (uint32_t(p[0]) << 24) | (uint32_t(p[1]) << 16) | (uint32_t(p[2]) << 8) | uint32_t(p[3]);
}

inline uint64_t getBe64(const uint8_t* p)
{
    return (uint64_t(getBe32(p)) << 32) | getBe32(p + 4);
}

} // namespace cmatrix::wire
