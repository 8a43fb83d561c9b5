#include "UdpSocket.h"

#include "CMatrixSDK.h"

#include <arpa/inet.h>
#include <cerrno>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace cmatrix::sdk {

namespace {

sockaddr_in toSockaddr(const UdpEndpoint& endpoint)
{
    sockaddr_in sa {};
    sa.sin_family = AF_INET;
    sa.sin_addr.s_addr = htonl(endpoint.address);
    sa.sin_port = htons(endpoint.port);
    return sa;
}

} // namespace

std::string UdpEndpoint::text() const
{
    const in_addr a { htonl(address) };
    char buffer[INET_ADDRSTRLEN] = {};
    ::inet_ntop(AF_INET, &a, buffer, sizeof buffer);
    return std::string(buffer) + ':' + std::to_string(port);
}

UdpSocket::UdpSocket()
{
    fd_ = ::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    if (fd_ < 0)
        return;
    const sockaddr_in sa = toSockaddr({ INADDR_LOOPBACK, 0 });
    if (::bind(fd_, reinterpret_cast<const sockaddr*>(&sa), sizeof sa) != 0) {
        ::close(fd_);
        fd_ = -1;
    }
}

UdpSocket::~UdpSocket()
{
    if (fd_ >= 0)
        ::close(fd_);
}

UdpEndpoint UdpSocket::local() const
{
    sockaddr_in sa {};
    socklen_t length = sizeof sa;
    if (fd_ < 0 || ::getsockname(fd_, reinterpret_cast<sockaddr*>(&sa), &length) != 0)
        return {};
    return { ntohl(sa.sin_addr.s_addr), ntohs(sa.sin_port) };
}

int UdpSocket::sendTo(const UdpEndpoint& to, const std::vector<uint8_t>& datagram) const
{
    if (fd_ < 0)
        return CMATRIX_ERR_FAILED;
    const sockaddr_in sa = toSockaddr(to);
    for (;;) {
        const ssize_t n = ::sendto(
            fd_, datagram.data(), datagram.size(), MSG_NOSIGNAL, reinterpret_cast<const sockaddr*>(&sa), sizeof sa);
        if (n == ssize_t(datagram.size()))
            return CMATRIX_OK;
        if (n < 0 && errno == EINTR)
            continue;
        return CMATRIX_ERR_FAILED;
    }
}

UdpSocket::Read UdpSocket::receive(std::vector<uint8_t>& datagram, size_t limit, UdpEndpoint& from, int timeoutMs) const
{
    if (fd_ < 0)
        return Read::Failed;
    pollfd pfd { fd_, POLLIN, 0 };
    const int ready = ::poll(&pfd, 1, timeoutMs);
    if (ready == 0 || (ready < 0 && errno == EINTR))
        return Read::Timeout;
    if (ready < 0)
        return Read::Failed;
    datagram.resize(limit + 1);
    sockaddr_in sa {};
    socklen_t length = sizeof sa;
    // MSG_TRUNC makes recvfrom tell the datagram's real size even when the buffer is smaller.
    const ssize_t n
        = ::recvfrom(fd_, datagram.data(), datagram.size(), MSG_TRUNC, reinterpret_cast<sockaddr*>(&sa), &length);
    if (n < 0) {
        datagram.clear();
        // A port-unreachable report from an earlier send, or a spurious wake-up: nothing to read.
        return errno == EAGAIN || errno == EWOULDBLOCK || errno == EINTR || errno == ECONNREFUSED ? Read::Timeout
                                                                                                  : Read::Failed;
    }
    from = { ntohl(sa.sin_addr.s_addr), ntohs(sa.sin_port) };
    if (size_t(n) > limit) {
        datagram.clear();
        return Read::Oversized;
    }
    datagram.resize(size_t(n));
    return Read::Datagram;
}

} // namespace cmatrix::sdk
