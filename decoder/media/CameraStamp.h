#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace vdec {

// The time a camera sent a picture, carried inside the H.264 stream itself: an SEI
// message of unregistered user data (our own UUID) in front of each access unit. The
// camera simulator writes it from its wall clock as it sends; the decoder reads it from
// what it received, so the two clocks are the same machine's and the difference is the
// real glass-to-glass delay up to the decoded picture.
class CameraStamp {
public:
    struct Value {
        int64_t sentUs = 0; // microseconds since the Unix epoch
        uint32_t frame = 0; // pictures sent since the camera started
    };

    // A whole NAL unit with a four-byte start code, ready to put before an access unit.
    static std::vector<uint8_t> encode(const Value& value);
    // Looks through an Annex-B buffer for the stamp; reads at most `scanLimit` bytes.
    static std::optional<Value> find(const uint8_t* data, size_t size, size_t scanLimit = 4096);
};

} // namespace vdec
