#include "TestClient.h"

#include "RawUdp.h"

#include <arpa/inet.h>
#include <cerrno>
#include <chrono>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace kvmstest {

using namespace cmatrix::wire;

namespace {

using Clock = std::chrono::steady_clock;

int msLeft(Clock::time_point deadline)
{
    const auto ms = std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now()).count();
    return ms < 0 ? 0 : int(ms);
}

} // namespace

TestClient::~TestClient()
{
    close();
}

bool TestClient::connectTo(const QString& address, quint16 port, int timeoutMs)
{
    close();
    sockaddr_in sa {};
    sa.sin_family = AF_INET;
    sa.sin_port = htons(port);
    if (inet_pton(AF_INET, address.toLatin1().constData(), &sa.sin_addr) != 1)
        return false;
    fd_ = ::socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
    if (fd_ < 0)
        return false;
    const int on = 1;
    setsockopt(fd_, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
    if (::connect(fd_, reinterpret_cast<sockaddr*>(&sa), sizeof sa) != 0 && errno != EINPROGRESS) {
        close();
        return false;
    }
    pollfd p { fd_, POLLOUT, 0 };
    int error = 0;
    socklen_t len = sizeof error;
    if (::poll(&p, 1, timeoutMs) != 1 || getsockopt(fd_, SOL_SOCKET, SO_ERROR, &error, &len) != 0 || error != 0) {
        close();
        return false;
    }
    return true;
}

void TestClient::close()
{
    if (fd_ >= 0)
        ::close(fd_);
    fd_ = -1;
    stream_ = MessageStream();
}

int32_t TestClient::login(const QString& user, const QString& password, QString* errorJson)
{
    Message reply;
    const int32_t rc = callRaw(
        uint16_t(Type::Login), encodeBody(LoginRequest { user.toStdString(), password.toStdString() }), &reply);
    LoginFailure failure;
    if (errorJson && rc != CMATRIX_OK && reply.decode(failure))
        *errorJson = QString::fromStdString(failure.errorJson);
    return rc;
}

bool TestClient::sendHeartbeat()
{
    return sendBytes(RawUdp::message(uint16_t(Type::Heartbeat), 0, 0, {}));
}

bool TestClient::sendBytes(const Bytes& bytes)
{
    size_t sent = 0;
    const Clock::time_point deadline = Clock::now() + std::chrono::seconds(5);
    while (fd_ >= 0 && sent < bytes.size()) {
        const ssize_t n = ::send(fd_, bytes.data() + sent, bytes.size() - sent, MSG_NOSIGNAL);
        if (n > 0) {
            sent += size_t(n);
        } else if (n < 0 && (errno == EAGAIN || errno == EINTR)) {
            pollfd p { fd_, POLLOUT, 0 };
            if (::poll(&p, 1, msLeft(deadline)) == 0)
                return false;
        } else {
            return false;
        }
    }
    return fd_ >= 0;
}

int32_t TestClient::callRaw(uint16_t type, const Bytes& payload, Message* reply, int timeoutMs)
{
    const uint32_t id = nextRequestId_++;
    if (!sendBytes(RawUdp::message(type, id, 0, payload)))
        return CMATRIX_ERR_DISCONNECTED;
    const Clock::time_point deadline = Clock::now() + std::chrono::milliseconds(timeoutMs);
    for (;;) {
        Message m;
        switch (receive(m, msLeft(deadline))) {
        case Wait::Timeout:
            return CMATRIX_ERR_TIMEOUT;
        case Wait::Closed:
            return CMATRIX_ERR_DISCONNECTED;
        case Wait::Message:
            break;
        }
        if (m.header.requestId == id && m.header.type == (type | kResponseFlag)) {
            const int32_t status = m.header.status;
            if (reply)
                *reply = std::move(m);
            return status;
        }
    }
}

TestClient::Wait TestClient::receive(Message& out, int timeoutMs)
{
    const Clock::time_point deadline = Clock::now() + std::chrono::milliseconds(timeoutMs);
    while (fd_ >= 0) {
        switch (stream_.next(out)) {
        case MessageStream::Status::Message:
            if (out.header.type == uint16_t(Type::Heartbeat)) {
                ++heartbeats_;
                continue;
            }
            return Wait::Message;
        case MessageStream::Status::Error:
            close(); // the stream cannot be read past a bad header
            return Wait::Closed;
        case MessageStream::Status::NeedMore:
            break;
        }
        pollfd p { fd_, POLLIN, 0 };
        const int ready = ::poll(&p, 1, msLeft(deadline));
        if (ready == 0)
            return Wait::Timeout;
        uint8_t buffer[64 * 1024];
        const ssize_t n = ::recv(fd_, buffer, sizeof buffer, 0);
        if (n == 0 || (n < 0 && errno != EAGAIN && errno != EINTR)) {
            close();
            return Wait::Closed;
        }
        if (n > 0)
            stream_.append(buffer, size_t(n));
    }
    return Wait::Closed;
}

bool TestClient::waitClosed(int timeoutMs)
{
    const Clock::time_point deadline = Clock::now() + std::chrono::milliseconds(timeoutMs);
    Message m;
    for (;;) {
        switch (receive(m, msLeft(deadline))) {
        case Wait::Closed:
            return true;
        case Wait::Timeout:
            return false;
        case Wait::Message:
            break;
        }
    }
}

} // namespace kvmstest
