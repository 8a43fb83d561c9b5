#pragma once

#include "LoopRun.h"

#include "CMatrixSDK.h"

#include <chrono>
#include <cstdint>
#include <map>

namespace vdec {

class SchemeBook;
class WindowTable;
struct Scheme;

// Which scheme turns in which window, and the turning itself. A window of division
// n shows n sources at a time: at turn t, sub-window k (from 0) shows source
// (start + t * n + k) mod count, so the whole group moves on at each step.
// While a loop runs, it owns the window's sources: binding others is refused until it
// stops. A loop that stops leaves its window empty.
class LoopTable {
public:
    using Clock = std::chrono::steady_clock;

    // Starts (or restarts) a scheme in a window and shows its first sources now.
    int32_t select(WindowTable& windows, const SchemeBook& schemes, int32_t windowId, uint32_t schemeId,
        int32_t startIndex, Clock::time_point now, int unitMs);
    // enable 0 stops the window's loop, if any; 1 only confirms that one runs.
    int32_t setEnabled(WindowTable& windows, int32_t windowId, int32_t enable);
    // Takes every step that is due; returns when the next one is (max(): none).
    Clock::time_point advance(WindowTable& windows, const SchemeBook& schemes, Clock::time_point now, int unitMs);

    // Drops loops whose window is gone, and stops those whose scheme was deleted or
    // lost its sources; clears the turning mark of windows that no loop drives, so
    // the table and the windows agree.
    void prune(WindowTable& windows, const SchemeBook& schemes);
    // Takes loops from disk or a scene as they are; they turn once resumed.
    void adopt(std::map<int32_t, LoopRun> runs) { runs_ = std::move(runs); }
    // Loops go on from the turn they had, their next step an interval from now;
    // those that cannot are dropped. show redraws each turn's sources now.
    void resume(WindowTable& windows, const SchemeBook& schemes, Clock::time_point now, int unitMs, bool show);

    const std::map<int32_t, LoopRun>& runs() const { return runs_; }

    // The window source a scheme source becomes in sub-window subWindow.
    static DeviceInfo_t toDevice(const SchemeDevice_t& source, int32_t subWindow);

private:
    static Clock::duration period(const Scheme& scheme, int unitMs);
    static void show(WindowTable& windows, int32_t windowId, const Scheme& scheme, const LoopRun& run);

    std::map<int32_t, LoopRun> runs_; // by window id
};

} // namespace vdec
