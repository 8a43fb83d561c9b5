#pragma once

#include <cstdint>
#include <cstring>

// Host/network order conversion for the Kav envelope. The host's order is looked
// at once while the library loads; on a big-endian host the conversions are the
// identity, otherwise they reverse the bytes, so one function serves both ways.
namespace kav {

extern const bool hostIsBigEndian;

inline std::uint16_t netOrder16(std::uint16_t v)
{
    return hostIsBigEndian ? v : static_cast<std::uint16_t>((v >> 8) | (v << 8));
}

inline std::uint32_t netOrder32(std::uint32_t v)
{
    if (hostIsBigEndian)
        return v;
    return (v >> 24) | ((v >> 8) & 0x0000FF00u) | ((v << 8) & 0x00FF0000u) | (v << 24);
}

inline std::uint64_t netOrder64(std::uint64_t v)
{
    if (hostIsBigEndian)
        return v;
    return (std::uint64_t(netOrder32(std::uint32_t(v))) << 32) | netOrder32(std::uint32_t(v >> 32));
}

// Unaligned stores and loads of network-order values.
inline void storeNet16(unsigned char* p, std::uint16_t v)
{
    v = netOrder16(v);
    std::memcpy(p, &v, sizeof v);
}

inline void storeNet32(unsigned char* p, std::uint32_t v)
{
    v = netOrder32(v);
    std::memcpy(p, &v, sizeof v);
}

inline void storeNet64(unsigned char* p, std::uint64_t v)
{
    v = netOrder64(v);
    std::memcpy(p, &v, sizeof v);
}

inline std::uint16_t loadNet16(const unsigned char* p)
{
    std::uint16_t v;
    std::memcpy(&v, p, sizeof v);
    return netOrder16(v);
}

inline std::uint32_t loadNet32(const unsigned char* p)
{
    std::uint32_t v;
    std::memcpy(&v, p, sizeof v);
    return netOrder32(v);
}

inline std::uint64_t loadNet64(const unsigned char* p)
{
    std::uint64_t v;
    std::memcpy(&v, p, sizeof v);
    return netOrder64(v);
}

} // namespace kav
