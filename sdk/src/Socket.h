#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>
#include <sys/types.h>

namespace cmatrix::sdk {

using Clock = std::chrono::steady_clock;

// Milliseconds left until a deadline, rounded up so a wait never ends early; 0 once it passed.
int millisecondsUntil(Clock::time_point deadline);

// A connected TCP socket with TCP_NODELAY. Results are CMATRIX_* codes.
class Socket {
public:
    Socket() = default;
    explicit Socket(int fd)
        : fd_(fd)
    {
    }
    ~Socket();
    Socket(Socket&& other) noexcept;
    Socket& operator=(Socket&& other) noexcept;
    Socket(const Socket&) = delete;
    Socket& operator=(const Socket&) = delete;

    // Connects to a numeric IPv4 or IPv6 address before the deadline.
    static int connectTo(const std::string& ip, uint16_t port, Clock::time_point deadline, Socket& out);
    // Whether connectTo takes this address: numeric IPv4 or IPv6 in a plain form, never a name.
    static bool isNumericAddress(const std::string& ip);

    bool isValid() const { return fd_ >= 0; }

    // Writes every byte, waiting for room until the deadline; `sent` tells how far it got,
    // so a caller knows whether the stream was left in the middle of a message.
    int sendAll(const uint8_t* data, size_t size, Clock::time_point deadline, size_t& sent);

    // Waits until bytes (or the end of the stream) can be read: 1 ready, 0 timed out, -1 failed.
    int waitReadable(int timeoutMs) const;

    // How long receive() waits for bytes before it answers Again.
    void setReceiveTimeout(std::chrono::milliseconds timeout);

    enum class Read { Data, Closed, Again, Failed };
    Read receive(uint8_t* buffer, size_t size, size_t& received);

    // Ends both directions: the peer sees the close and a thread waiting to read wakes up.
    // The descriptor itself stays open until the destructor, so no other thread can hit a reused one.
    void shutdown();

private:
    int fd_ = -1;
};

} // namespace cmatrix::sdk
