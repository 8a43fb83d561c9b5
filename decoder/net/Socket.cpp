#include "Socket.h"

#include <arpa/inet.h>
#include <cerrno>
#include <cstring>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <unistd.h>

namespace vdec {

namespace {

bool parse(const QString& address, in_addr& out)
{
    return inet_pton(AF_INET, address.toLatin1().constData(), &out) == 1;
}

} // namespace

void Socket::reset(int fd)
{
    if (fd_ >= 0)
        ::close(fd_);
    fd_ = fd;
}

bool Socket::isIpv4(const QString& address)
{
    in_addr a {};
    return parse(address, a);
}

bool Socket::isLoopback(const QString& address)
{
    in_addr a {};
    return parse(address, a) && (ntohl(a.s_addr) >> 24) == 127;
}

Socket Socket::listenTcp(const QString& address, quint16 port, QString* error)
{
    auto fail = [error](const QString& what) {
        if (error)
            *error = what;
        return Socket();
    };
    sockaddr_in sa {};
    sa.sin_family = AF_INET;
    sa.sin_port = htons(port);
    if (!parse(address, sa.sin_addr))
        return fail(QStringLiteral("not an IPv4 address: %1").arg(address));

    Socket s(::socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
    if (!s.valid())
        return fail(QStringLiteral("socket: %1").arg(strerror(errno)));
    const int on = 1;
    // A restart must get its port back while old connections sit in TIME_WAIT.
    setsockopt(s.fd(), SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
    if (::bind(s.fd(), reinterpret_cast<sockaddr*>(&sa), sizeof sa) != 0)
        return fail(QStringLiteral("bind %1:%2: %3").arg(address).arg(port).arg(strerror(errno)));
    if (::listen(s.fd(), 64) != 0)
        return fail(QStringLiteral("listen: %1").arg(strerror(errno)));
    return s;
}

Socket Socket::accept() const
{
    Socket s(::accept4(fd_, nullptr, nullptr, SOCK_NONBLOCK | SOCK_CLOEXEC));
    if (s.valid()) {
        const int on = 1;
        setsockopt(s.fd(), IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
    }
    return s;
}

quint16 Socket::localPort() const
{
    sockaddr_in sa {};
    socklen_t len = sizeof sa;
    if (::getsockname(fd_, reinterpret_cast<sockaddr*>(&sa), &len) != 0)
        return 0;
    return ntohs(sa.sin_port);
}

void Socket::abortOnClose() const
{
    const linger l { 1, 0 };
    setsockopt(fd_, SOL_SOCKET, SO_LINGER, &l, sizeof l);
}

} // namespace vdec
