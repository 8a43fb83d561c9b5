#include "Socket.h"

#include "CMatrixSDK.h"

#include <arpa/inet.h>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace cmatrix::sdk {

int millisecondsUntil(Clock::time_point deadline)
{
    const auto left = deadline - Clock::now();
    if (left <= Clock::duration::zero())
        return 0;
    const auto ms = std::chrono::ceil<std::chrono::milliseconds>(left).count();
    return ms > 0x7fffffff ? 0x7fffffff : int(ms);
}

namespace {

// Numeric addresses only, in their plain forms: the SDK takes addresses, and a name
// lookup could block past the timeout. 0 for anything else.
socklen_t socketAddress(const std::string& ip, uint16_t port, sockaddr_storage& address)
{
    address = {};
    auto* v4 = reinterpret_cast<sockaddr_in*>(&address);
    auto* v6 = reinterpret_cast<sockaddr_in6*>(&address);
    if (::inet_pton(AF_INET, ip.c_str(), &v4->sin_addr) == 1) {
        v4->sin_family = AF_INET;
        v4->sin_port = htons(port);
        return sizeof *v4;
    }
    if (::inet_pton(AF_INET6, ip.c_str(), &v6->sin6_addr) == 1) {
        v6->sin6_family = AF_INET6;
        v6->sin6_port = htons(port);
        return sizeof *v6;
    }
    return 0;
}

} // namespace

Socket::~Socket()
{
    if (fd_ >= 0)
        ::close(fd_);
}

Socket::Socket(Socket&& other) noexcept
    : fd_(other.fd_)
{
    other.fd_ = -1;
}

Socket& Socket::operator=(Socket&& other) noexcept
{
    if (this != &other) {
        if (fd_ >= 0)
            ::close(fd_);
        fd_ = other.fd_;
        other.fd_ = -1;
    }
    return *this;
}

bool Socket::isNumericAddress(const std::string& ip)
{
    sockaddr_storage address;
    return socketAddress(ip, 0, address) != 0;
}

int Socket::connectTo(const std::string& ip, uint16_t port, Clock::time_point deadline, Socket& out)
{
    sockaddr_storage address;
    const socklen_t length = socketAddress(ip, port, address);
    if (length == 0)
        return CMATRIX_ERR_INVALID_PARAM;
    Socket socket(::socket(address.ss_family, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
    if (!socket.isValid())
        return CMATRIX_ERR_CONNECT;
    int rc = ::connect(socket.fd_, reinterpret_cast<const sockaddr*>(&address), length);
    const int connectErrno = errno;
    if (rc != 0) {
        if (connectErrno != EINPROGRESS)
            return CMATRIX_ERR_CONNECT;
        pollfd p { socket.fd_, POLLOUT, 0 };
        do
            rc = ::poll(&p, 1, millisecondsUntil(deadline));
        while (rc < 0 && errno == EINTR);
        if (rc == 0)
            return CMATRIX_ERR_TIMEOUT;
        int error = 0;
        socklen_t errorLength = sizeof error;
        if (rc < 0 || ::getsockopt(socket.fd_, SOL_SOCKET, SO_ERROR, &error, &errorLength) != 0 || error != 0)
            return CMATRIX_ERR_CONNECT;
    }
    // Control messages are small and answered at once; Nagle would hold each one back.
    const int one = 1;
    ::setsockopt(socket.fd_, IPPROTO_TCP, TCP_NODELAY, &one, sizeof one);
    // Reads block (with a timeout) so the reader needs one call per read, not a poll as
    // well; writes stay non-blocking per call (MSG_DONTWAIT) to honour their deadlines.
    ::fcntl(socket.fd_, F_SETFL, ::fcntl(socket.fd_, F_GETFL) & ~O_NONBLOCK);
    out = std::move(socket);
    return CMATRIX_OK;
}

int Socket::sendAll(const uint8_t* data, size_t size, Clock::time_point deadline, size_t& sent)
{
    sent = 0;
    while (sent < size) {
        const ssize_t n = ::send(fd_, data + sent, size - sent, MSG_NOSIGNAL | MSG_DONTWAIT);
        if (n > 0) {
            sent += size_t(n);
            continue;
        }
        if (n < 0 && errno == EINTR)
            continue;
        if (n < 0 && (errno == EAGAIN || errno == EWOULDBLOCK)) {
            pollfd p { fd_, POLLOUT, 0 };
            const int rc = ::poll(&p, 1, millisecondsUntil(deadline));
            if (rc == 0)
                return CMATRIX_ERR_TIMEOUT;
            if (rc < 0 && errno != EINTR)
                return CMATRIX_ERR_DISCONNECTED;
            continue;
        }
        return CMATRIX_ERR_DISCONNECTED;
    }
    return CMATRIX_OK;
}

int Socket::waitReadable(int timeoutMs) const
{
    pollfd p { fd_, POLLIN, 0 };
    const int rc = ::poll(&p, 1, timeoutMs);
    if (rc < 0)
        return errno == EINTR ? 0 : -1;
    return rc;
}

void Socket::setReceiveTimeout(std::chrono::milliseconds timeout)
{
    timeval tv {};
    tv.tv_sec = time_t(timeout.count() / 1000);
    tv.tv_usec = suseconds_t(timeout.count() % 1000 * 1000);
    ::setsockopt(fd_, SOL_SOCKET, SO_RCVTIMEO, &tv, sizeof tv);
}

Socket::Read Socket::receive(uint8_t* buffer, size_t size, size_t& received)
{
    received = 0;
    const ssize_t n = ::recv(fd_, buffer, size, 0);
    if (n > 0) {
        received = size_t(n);
        return Read::Data;
    }
    if (n == 0)
        return Read::Closed;
    if (errno == EAGAIN || errno == EWOULDBLOCK || errno == EINTR)
        return Read::Again;
    return Read::Failed;
}

void Socket::shutdown()
{
    if (fd_ >= 0)
        ::shutdown(fd_, SHUT_RDWR);
}

} // namespace cmatrix::sdk
