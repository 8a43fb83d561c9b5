#pragma once

#include <chrono>
#include <cstdint>

namespace vdec {

// A scheme turning in one window. The turn counts the steps taken since the loop
// started; the time of the next step is only kept while the decoder runs.
struct LoopRun {
    uint32_t schemeId = 0;
    int32_t startIndex = 0; // 0-based source shown first in sub-window 1
    int64_t turn = 0;
    std::chrono::steady_clock::time_point due {};

    bool operator==(const LoopRun& o) const
    {
        return schemeId == o.schemeId && startIndex == o.startIndex && turn == o.turn;
    }
};

} // namespace vdec
