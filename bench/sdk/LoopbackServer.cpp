#include "LoopbackServer.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <stdexcept>
#include <sys/socket.h>
#include <unistd.h>

namespace {

void noDelay(int fd)
{
    const int one = 1;
    ::setsockopt(fd, IPPROTO_TCP, TCP_NODELAY, &one, sizeof one);
}

sockaddr_in loopback(uint16_t port)
{
    sockaddr_in address {};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(port);
    return address;
}

} // namespace

LoopbackServer::LoopbackServer(Serve serve)
{
    listenFd_ = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address = loopback(0);
    socklen_t length = sizeof address;
    if (listenFd_ < 0 || ::bind(listenFd_, reinterpret_cast<sockaddr*>(&address), length) != 0
        || ::listen(listenFd_, 1) != 0 || ::getsockname(listenFd_, reinterpret_cast<sockaddr*>(&address), &length) != 0)
        throw std::runtime_error("cannot listen on loopback");
    port_ = ntohs(address.sin_port);
    thread_ = std::thread([this, serve = std::move(serve)] {
        const int fd = ::accept4(listenFd_, nullptr, nullptr, SOCK_CLOEXEC);
        if (fd < 0)
            return;
        noDelay(fd);
        serve(fd);
        ::close(fd);
    });
}

LoopbackServer::~LoopbackServer()
{
    ::shutdown(listenFd_, SHUT_RDWR); // ends an accept still waiting
    thread_.join();
    ::close(listenFd_);
}

bool LoopbackServer::readExactly(int fd, uint8_t* data, size_t size)
{
    size_t got = 0;
    while (got < size) {
        const ssize_t n = ::recv(fd, data + got, size - got, 0);
        if (n <= 0)
            return false;
        got += size_t(n);
    }
    return true;
}

bool LoopbackServer::writeAll(int fd, const uint8_t* data, size_t size)
{
    size_t sent = 0;
    while (sent < size) {
        const ssize_t n = ::send(fd, data + sent, size - sent, MSG_NOSIGNAL);
        if (n <= 0)
            return false;
        sent += size_t(n);
    }
    return true;
}

int LoopbackServer::connectTo(uint16_t port)
{
    const int fd = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const sockaddr_in address = loopback(port);
    if (fd < 0 || ::connect(fd, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
        if (fd >= 0)
            ::close(fd);
        return -1;
    }
    noDelay(fd);
    return fd;
}
