#pragma once

#include <QString>

namespace vdec {

// Owns one POSIX file descriptor; move-only.
class Socket {
public:
    Socket() = default;
    explicit Socket(int fd)
        : fd_(fd)
    {
    }
    ~Socket() { reset(); }
    Socket(Socket&& other) noexcept
        : fd_(other.release())
    {
    }
    Socket& operator=(Socket&& other) noexcept
    {
        if (this != &other)
            reset(other.release());
        return *this;
    }
    Socket(const Socket&) = delete;
    Socket& operator=(const Socket&) = delete;

    int fd() const { return fd_; }
    bool valid() const { return fd_ >= 0; }
    int release()
    {
        const int fd = fd_;
        fd_ = -1;
        return fd;
    }
    void reset(int fd = -1);

    // A listening TCP socket on address:port (port 0: ephemeral), non-blocking.
    static Socket listenTcp(const QString& address, quint16 port, QString* error);
    // The next pending connection, non-blocking; invalid when there is none.
    Socket accept() const;
    quint16 localPort() const;
    // The next close sends a reset instead of an orderly shutdown, as a unit losing
    // power mid-connection would look to its peer.
    void abortOnClose() const;

    static bool isIpv4(const QString& address);
    static bool isLoopback(const QString& address);

private:
    int fd_ = -1;
};

} // namespace vdec
