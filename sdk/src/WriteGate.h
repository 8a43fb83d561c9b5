#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>

namespace cmatrix::sdk {

// Lets one user at a time in (a socket's writer, the opener of a link). Waiting for the
// turn ends at the caller's deadline, so a writer stuck on a decoder that stopped reading
// cannot hold every other call past its own timeout. The names are a timed mutex's, so
// std::unique_lock and std::lock_guard hold it.
class WriteGate {
public:
    using Clock = std::chrono::steady_clock;

    // False when the turn did not come before the deadline.
    bool try_lock_until(Clock::time_point deadline)
    {
        std::unique_lock<std::mutex> lock(mutex_);
        if (!free_.wait_until(lock, deadline, [this] { return !busy_; }))
            return false;
        busy_ = true;
        return true;
    }

    void lock()
    {
        std::unique_lock<std::mutex> lock(mutex_);
        free_.wait(lock, [this] { return !busy_; });
        busy_ = true;
    }

    bool try_lock()
    {
        std::lock_guard<std::mutex> lock(mutex_);
        if (busy_)
            return false;
        busy_ = true;
        return true;
    }

    void unlock()
    {
        {
            std::lock_guard<std::mutex> lock(mutex_);
            busy_ = false;
        }
        free_.notify_one();
    }

private:
    std::mutex mutex_;
    std::condition_variable free_;
    bool busy_ = false;
};

} // namespace cmatrix::sdk
