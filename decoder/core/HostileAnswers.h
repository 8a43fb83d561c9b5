#pragma once

#include "MessageType.h"

#include <cstdint>
#include <optional>
#include <random>
#include <vector>

namespace vdec {

// Answers a unit in a very odd state could give to the requests that read the wall: extreme
// grids, window rectangles, counts, divisions and texts filled to the last byte, well formed
// on the wire. Picked at random from a seed, so a run can be repeated.
class HostileAnswers {
public:
    using Type = cmatrix::wire::MessageType;

    explicit HostileAnswers(uint32_t seed)
        : random_(seed)
    {
    }

    // An encoded answer body for a request of this type; nothing for types it does not spoil.
    std::optional<std::vector<uint8_t>> answer(Type type);

private:
    int32_t extremeInt();
    uint32_t count();
    template <class T> T record();

    std::mt19937 random_;
};

} // namespace vdec
