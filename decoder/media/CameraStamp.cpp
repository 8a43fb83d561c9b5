#include "CameraStamp.h"

#include <algorithm>
#include <cstring>

namespace vdec {

namespace {

constexpr uint8_t kUuid[16]
    = { 0x6b, 0x76, 0x6d, 0x73, 0x2d, 0x63, 0x61, 0x6d, 0x2d, 0x63, 0x6c, 0x6f, 0x63, 0x6b, 0x00, 0x01 };
constexpr uint8_t kSeiNal = 6;
constexpr uint8_t kUserDataUnregistered = 5;
constexpr size_t kBody = sizeof kUuid + 8 + 4;

// H.264 forbids 00 00 0x (x <= 3) inside a NAL unit: an 03 is put after each 00 00.
void appendEscaped(std::vector<uint8_t>& out, const uint8_t* data, size_t size)
{
    int zeros = 0;
    for (size_t i = 0; i < size; ++i) {
        if (zeros >= 2 && data[i] <= 3) {
            out.push_back(3);
            zeros = 0;
        }
        out.push_back(data[i]);
        zeros = data[i] == 0 ? zeros + 1 : 0;
    }
}

std::vector<uint8_t> unescape(const uint8_t* data, size_t size)
{
    std::vector<uint8_t> out;
    out.reserve(size);
    int zeros = 0;
    for (size_t i = 0; i < size; ++i) {
        if (zeros >= 2 && data[i] == 3) {
            zeros = 0;
            continue;
        }
        out.push_back(data[i]);
        zeros = data[i] == 0 ? zeros + 1 : 0;
    }
    return out;
}

std::optional<CameraStamp::Value> parseSei(const std::vector<uint8_t>& rbsp)
{
    size_t at = 0;
    while (at + 2 <= rbsp.size() && rbsp[at] != 0x80) {
        size_t type = 0, size = 0;
        while (at < rbsp.size() && rbsp[at] == 0xff)
            type += rbsp[at++];
        if (at >= rbsp.size())
            return std::nullopt;
        type += rbsp[at++];
        while (at < rbsp.size() && rbsp[at] == 0xff)
            size += rbsp[at++];
        if (at >= rbsp.size())
            return std::nullopt;
        size += rbsp[at++];
        if (size > rbsp.size() - at)
            return std::nullopt;
        if (type == kUserDataUnregistered && size >= kBody && std::memcmp(&rbsp[at], kUuid, sizeof kUuid) == 0) {
            const uint8_t* p = &rbsp[at + sizeof kUuid];
            uint64_t us = 0;
            for (int i = 0; i < 8; ++i)
                us = (us << 8) | p[i];
            uint32_t frame = 0;
            for (int i = 8; i < 12; ++i)
                frame = (frame << 8) | p[i];
            return CameraStamp::Value { int64_t(us), frame };
        }
        at += size;
    }
    return std::nullopt;
}

} // namespace

std::vector<uint8_t> CameraStamp::encode(const Value& value)
{
    uint8_t body[kBody];
    std::memcpy(body, kUuid, sizeof kUuid);
    for (int i = 0; i < 8; ++i)
        body[sizeof kUuid + i] = uint8_t(uint64_t(value.sentUs) >> (56 - 8 * i));
    for (int i = 0; i < 4; ++i)
        body[sizeof kUuid + 8 + i] = uint8_t(value.frame >> (24 - 8 * i));
    uint8_t payload[2 + kBody + 1];
    payload[0] = kUserDataUnregistered;
    payload[1] = uint8_t(kBody);
    std::memcpy(payload + 2, body, kBody);
    payload[2 + kBody] = 0x80; // end of the message
    std::vector<uint8_t> out { 0, 0, 0, 1, kSeiNal };
    appendEscaped(out, payload, sizeof payload);
    return out;
}

std::optional<CameraStamp::Value> CameraStamp::find(const uint8_t* data, size_t size, size_t scanLimit)
{
    if (!data)
        return std::nullopt;
    size = std::min(size, scanLimit);
    for (size_t i = 0; i + 3 < size; ++i) {
        if (data[i] != 0 || data[i + 1] != 0 || data[i + 2] != 1)
            continue;
        const size_t start = i + 3;
        if ((data[start] & 0x1f) != kSeiNal) {
            i = start - 1;
            continue;
        }
        size_t end = start + 1;
        while (end + 2 < size && !(data[end] == 0 && data[end + 1] == 0 && (data[end + 2] <= 1)))
            ++end;
        if (end + 2 >= size)
            end = size;
        if (auto v = parseSei(unescape(data + start + 1, end - start - 1)))
            return v;
        i = end - 1;
    }
    return std::nullopt;
}

} // namespace vdec
