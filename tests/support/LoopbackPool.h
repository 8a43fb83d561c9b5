#pragma once

#include <QString>

namespace kvmstest {

// Hands out loopback addresses (127.0.0.30 to 127.0.0.254) that no other test process
// holds. CTest runs suites side by side, and decoders answer discovery on a fixed UDP
// port, so two suites must never share an address. A claim is an flock on a file per
// address in the temporary directory; it lasts until the process ends (a crash
// releases it too). Addresses below 30 are left to the demo and to hand-run decoders.
class LoopbackPool {
public:
    // A free address, claimed for this process, e.g. "127.0.0.57"; an empty text when all
    // are taken. Addresses a process claimed are not handed out twice within it.
    static QString claim();
    // The last byte of a claimed address (57 for "127.0.0.57"), or 0 when none is free.
    static int claimHost();
};

} // namespace kvmstest
