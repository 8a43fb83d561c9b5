#pragma once

#include <cstdint>
#include <functional>
#include <thread>
#include <vector>

// A blocking one-client server on 127.0.0.1 with TCP_NODELAY, as lean as a server can be,
// so what a benchmark measures is the client. `serve` owns the accepted socket until the
// client closes; it runs on the server's thread.
class LoopbackServer {
public:
    using Serve = std::function<void(int fd)>;

    explicit LoopbackServer(Serve serve);
    ~LoopbackServer();
    LoopbackServer(const LoopbackServer&) = delete;
    LoopbackServer& operator=(const LoopbackServer&) = delete;

    uint16_t port() const { return port_; }

    // Reads exactly size bytes; false when the peer closed.
    static bool readExactly(int fd, uint8_t* data, size_t size);
    static bool writeAll(int fd, const uint8_t* data, size_t size);
    // Opens a client connection with TCP_NODELAY; -1 on failure.
    static int connectTo(uint16_t port);

private:
    int listenFd_ = -1;
    uint16_t port_ = 0;
    std::thread thread_;
};
