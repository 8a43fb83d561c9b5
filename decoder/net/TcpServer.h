#pragma once

#include "Notifier.h"
#include "Socket.h"

#include <atomic>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

namespace vdec {

class Connection;
class DecoderCore;

// Accepts clients on the control port, each on a Connection thread of its own, and
// reaps connections that have ended.
class TcpServer {
public:
    explicit TcpServer(DecoderCore& core);
    ~TcpServer(); // stops
    TcpServer(const TcpServer&) = delete;
    TcpServer& operator=(const TcpServer&) = delete;

    bool listen(const QString& address, quint16 port, QString* error);
    void start();
    void stop(); // closes the port and every connection, and joins all threads
    void killConnections(); // resets every connection; the port stays open
    void closeConnections(); // closes every connection in order; the port stays open
    int connectionCount() const;
    quint16 port() const { return port_; }

private:
    void run();
    void acceptPending();
    void reap();

    DecoderCore& core_;
    Socket listener_;
    quint16 port_ = 0;
    Notifier wake_;
    std::atomic<bool> stopping_ { false };
    std::thread thread_;

    mutable std::mutex mutex_;
    std::vector<std::unique_ptr<Connection>> connections_;
};

} // namespace vdec
