#include "UdpServer.h"

#include "core/DecoderCore.h"

#include <arpa/inet.h>
#include <cerrno>
#include <cstring>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>

namespace vdec {

namespace {

// Datagrams handled per wake-up before the stop flag is looked at again.
constexpr int kBurst = 64;

} // namespace

UdpServer::UdpServer(DecoderCore& core)
    : core_(core)
{
}

UdpServer::~UdpServer()
{
    stop();
}

bool UdpServer::bind(const QString& address, quint16 port, QString* error)
{
    auto fail = [error](const QString& what) {
        if (error)
            *error = what;
        return false;
    };
    sockaddr_in sa {};
    sa.sin_family = AF_INET;
    sa.sin_port = htons(port);
    if (inet_pton(AF_INET, address.toLatin1().constData(), &sa.sin_addr) != 1)
        return fail(QStringLiteral("not an IPv4 address: %1").arg(address));
    Socket s(::socket(AF_INET, SOCK_DGRAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
    if (!s.valid())
        return fail(QStringLiteral("socket: %1").arg(strerror(errno)));
    const int on = 1;
    setsockopt(s.fd(), SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
    if (::bind(s.fd(), reinterpret_cast<sockaddr*>(&sa), sizeof sa) != 0)
        return fail(QStringLiteral("bind udp %1:%2: %3").arg(address).arg(port).arg(strerror(errno)));
    port_ = s.localPort();
    socket_ = std::move(s);
    return true;
}

void UdpServer::start()
{
    stopping_ = false;
    thread_ = std::thread([this] { run(); });
}

void UdpServer::stop()
{
    stopping_ = true;
    wake_.notify();
    if (thread_.joinable())
        thread_.join();
    socket_.reset();
}

void UdpServer::run()
{
    while (!stopping_) {
        pollfd fds[2] = { { socket_.fd(), POLLIN, 0 }, { wake_.fd(), POLLIN, 0 } };
        if (::poll(fds, 2, -1) < 0 && errno != EINTR)
            break;
        if (fds[1].revents)
            wake_.drain();
        if (!stopping_ && fds[0].revents)
            receive();
    }
}

void UdpServer::receive()
{
    std::vector<uint8_t> buffer(kMaxDatagram + 1);
    for (int i = 0; i < kBurst && !stopping_; ++i) {
        sockaddr_in from {};
        socklen_t length = sizeof from;
        // MSG_TRUNC: the real size even of a datagram too large for the buffer.
        const ssize_t n = ::recvfrom(
            socket_.fd(), buffer.data(), buffer.size(), MSG_TRUNC, reinterpret_cast<sockaddr*>(&from), &length);
        if (n < 0)
            return; // nothing left (or an error report from an earlier answer)
        if (size_t(n) > kMaxDatagram || length != sizeof from || from.sin_family != AF_INET)
            continue;
        const std::optional<std::vector<uint8_t>> answer
            = core_.processDatagram(std::vector<uint8_t>(buffer.begin(), buffer.begin() + n));
        if (answer) {
            ::sendto(socket_.fd(), answer->data(), answer->size(), MSG_NOSIGNAL, reinterpret_cast<sockaddr*>(&from),
                sizeof from);
        }
    }
}

} // namespace vdec
