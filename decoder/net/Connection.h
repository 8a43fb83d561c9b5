#pragma once

#include "Notifier.h"
#include "Socket.h"
#include "protocol/RequestRouter.h"

#include "MessageStream.h"

#include <atomic>
#include <chrono>
#include <cstdint>
#include <thread>
#include <vector>

namespace vdec {

class DecoderCore;

// One client connection on a thread of its own: reads requests, answers them
// (some late, when a fault says so), sends heartbeats while idle and closes a peer
// that has gone silent.
class Connection {
public:
    Connection(Socket socket, uint64_t id, DecoderCore& core);
    ~Connection(); // stops and joins
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    void start();
    void stop(); // orderly close
    void abort(); // reset, as on power loss
    bool finished() const { return finished_; }
    uint64_t id() const { return session_.connectionId; }

private:
    using Clock = std::chrono::steady_clock;
    struct Pending {
        Clock::time_point due;
        std::vector<uint8_t> bytes;
    };

    void run();
    bool receive();
    bool handleBuffered();
    bool flushDue();
    bool sendAll(const std::vector<uint8_t>& bytes);
    int msUntilNextDeadline() const;

    Socket socket_;
    Notifier wake_;
    DecoderCore& core_;
    Session session_;
    cmatrix::wire::MessageStream stream_;
    std::vector<Pending> pending_;
    Clock::time_point lastReceived_, lastSent_;
    const std::chrono::milliseconds heartbeatInterval_, heartbeatTimeout_;

    std::atomic<bool> stopping_ { false };
    std::atomic<bool> aborting_ { false };
    std::atomic<bool> finished_ { false };
    std::thread thread_;
};

} // namespace vdec
