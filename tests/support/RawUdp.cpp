#include "RawUdp.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

using namespace cmatrix::wire;

RawUdp::RawUdp(const QString& address)
{
    sockaddr_in sa {};
    sa.sin_family = AF_INET;
    if (inet_pton(AF_INET, address.toLatin1().constData(), &sa.sin_addr) != 1)
        return;
    fd_ = ::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    socklen_t length = sizeof sa;
    if (fd_ < 0 || ::bind(fd_, reinterpret_cast<sockaddr*>(&sa), sizeof sa) != 0
        || ::getsockname(fd_, reinterpret_cast<sockaddr*>(&sa), &length) != 0) {
        if (fd_ >= 0)
            ::close(fd_);
        fd_ = -1;
        return;
    }
    port_ = ntohs(sa.sin_port);
}

RawUdp::~RawUdp()
{
    if (fd_ >= 0)
        ::close(fd_);
}

bool RawUdp::sendTo(const Peer& to, const Bytes& datagram) const
{
    sockaddr_in sa {};
    sa.sin_family = AF_INET;
    sa.sin_port = htons(to.port);
    if (inet_pton(AF_INET, to.address.toLatin1().constData(), &sa.sin_addr) != 1)
        return false;
    return ::sendto(fd_, datagram.data(), datagram.size(), 0, reinterpret_cast<sockaddr*>(&sa), sizeof sa)
        == ssize_t(datagram.size());
}

bool RawUdp::receiveMessage(Message& message, Peer& from, int timeoutMs) const
{
    pollfd p { fd_, POLLIN, 0 };
    if (::poll(&p, 1, timeoutMs) != 1)
        return false;
    Bytes datagram(65536);
    sockaddr_in sa {};
    socklen_t length = sizeof sa;
    const ssize_t n = ::recvfrom(fd_, datagram.data(), datagram.size(), 0, reinterpret_cast<sockaddr*>(&sa), &length);
    if (n < 0)
        return false;
    datagram.resize(size_t(n));
    char text[INET_ADDRSTRLEN] = {};
    inet_ntop(AF_INET, &sa.sin_addr, text, sizeof text);
    from = { QString::fromLatin1(text), ntohs(sa.sin_port) };
    if (WireHeader::decode(datagram.data(), datagram.size(), message.header) != WireHeader::Parse::Ok
        || message.header.length != datagram.size() - WireHeader::kSize)
        return false;
    message.payload.assign(datagram.begin() + WireHeader::kSize, datagram.end());
    return true;
}

RawUdp::Bytes RawUdp::message(uint16_t type, uint32_t requestId, int32_t status, const Bytes& payload)
{
    Bytes out(WireHeader::kSize);
    WireHeader h;
    h.type = type;
    h.requestId = requestId;
    h.status = status;
    h.length = uint32_t(payload.size());
    h.encode(out.data());
    out.insert(out.end(), payload.begin(), payload.end());
    return out;
}
