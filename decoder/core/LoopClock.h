#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

namespace vdec {

// A thread that runs a tick whenever it is due: the tick returns when it wants to
// run next (time_point::max() for "when woken"). It turns the loops on the
// decoder's own time, whatever the callers' threads are doing. The tick runs
// without the clock's lock held, so it may take any lock of its own.
class LoopClock {
public:
    using Clock = std::chrono::steady_clock;
    using Tick = std::function<Clock::time_point(Clock::time_point now)>;

    LoopClock() = default;
    ~LoopClock(); // stops
    LoopClock(const LoopClock&) = delete;
    LoopClock& operator=(const LoopClock&) = delete;

    void start(Tick tick);
    // Runs the tick again soon, e.g. because a new loop started.
    void wake();
    // Joins the thread; the tick never runs again.
    void stop();

private:
    void run();

    Tick tick_;
    std::mutex mutex_;
    std::condition_variable changed_;
    bool stopping_ = false;
    bool woken_ = false;
    std::thread thread_;
};

} // namespace vdec
