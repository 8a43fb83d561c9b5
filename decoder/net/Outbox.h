#pragma once

#include "Notifier.h"

#include <cstdint>
#include <deque>
#include <mutex>
#include <vector>

namespace vdec {

// Messages that other threads push to one client connection (firmware progress, say).
// The connection polls fd() and sends what take() gives it. Once the connection has
// ended, pushes are dropped, so a sender never needs to know whether it is still there.
class Outbox {
public:
    static constexpr size_t kMaxQueued = 256;

    // Queues a whole encoded message; false when closed or full.
    bool push(std::vector<uint8_t> message);
    std::vector<std::vector<uint8_t>> take();
    void close();
    int fd() const { return notifier_.fd(); }

private:
    Notifier notifier_;
    std::mutex mutex_;
    std::deque<std::vector<uint8_t>> queue_;
    bool closed_ = false;
};

} // namespace vdec
