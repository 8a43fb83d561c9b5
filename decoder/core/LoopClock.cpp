#include "LoopClock.h"

namespace vdec {

LoopClock::~LoopClock()
{
    stop();
}

void LoopClock::start(Tick tick)
{
    std::lock_guard<std::mutex> lock(mutex_);
    if (thread_.joinable() || stopping_)
        return;
    tick_ = std::move(tick);
    thread_ = std::thread([this] { run(); });
}

void LoopClock::wake()
{
    {
        std::lock_guard<std::mutex> lock(mutex_);
        woken_ = true;
    }
    changed_.notify_one();
}

void LoopClock::stop()
{
    {
        std::lock_guard<std::mutex> lock(mutex_);
        stopping_ = true;
    }
    changed_.notify_one();
    if (thread_.joinable() && thread_.get_id() != std::this_thread::get_id())
        thread_.join();
}

void LoopClock::run()
{
    std::unique_lock<std::mutex> lock(mutex_);
    while (!stopping_) {
        woken_ = false;
        lock.unlock();
        const Clock::time_point next = tick_(Clock::now());
        lock.lock();
        const auto interrupted = [this] { return stopping_ || woken_; };
        if (next == Clock::time_point::max())
            changed_.wait(lock, interrupted);
        else
            changed_.wait_until(lock, next, interrupted);
    }
}

} // namespace vdec
