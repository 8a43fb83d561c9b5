#pragma once

#include "Notifier.h"
#include "Socket.h"

#include <atomic>
#include <thread>

namespace vdec {

class DecoderCore;

// The unit's discovery port: answers probes and set-up requests over UDP to whoever
// sent them, on a thread of its own. Datagrams that are not whole, well-formed
// requests are dropped.
class UdpServer {
public:
    // Larger than any request (a network set-up is some 450 bytes).
    static constexpr size_t kMaxDatagram = 8192;

    explicit UdpServer(DecoderCore& core);
    ~UdpServer(); // stops
    UdpServer(const UdpServer&) = delete;
    UdpServer& operator=(const UdpServer&) = delete;

    bool bind(const QString& address, quint16 port, QString* error);
    void start();
    void stop();
    quint16 port() const { return port_; }

private:
    void run();
    void receive();

    DecoderCore& core_;
    Socket socket_;
    quint16 port_ = 0;
    Notifier wake_;
    std::atomic<bool> stopping_ { false };
    std::thread thread_;
};

} // namespace vdec
