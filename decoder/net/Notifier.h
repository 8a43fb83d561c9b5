#pragma once

#include "Socket.h"

namespace vdec {

// Wakes a thread blocked in poll(): an eventfd that other threads poke.
class Notifier {
public:
    Notifier();
    bool valid() const { return fd_.valid(); }
    int fd() const { return fd_.fd(); }
    void notify() const;
    void drain() const;

private:
    Socket fd_;
};

} // namespace vdec
