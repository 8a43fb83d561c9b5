#include "FakeDecoder.h"

#include <algorithm>
#include <arpa/inet.h>
#include <cerrno>
#include <chrono>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <stdexcept>
#include <sys/socket.h>
#include <unistd.h>

using namespace cmatrix::wire;

FakeDecoder::FakeDecoder()
{
    listenFd_ = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address {};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t length = sizeof address;
    if (listenFd_ < 0 || ::bind(listenFd_, reinterpret_cast<sockaddr*>(&address), length) != 0
        || ::listen(listenFd_, 8) != 0 || ::getsockname(listenFd_, reinterpret_cast<sockaddr*>(&address), &length) != 0)
        throw std::runtime_error("FakeDecoder: cannot listen on loopback");
    port_ = ntohs(address.sin_port);
    handler_ = [](const Message& request, FakeDecoder& decoder) { decoder.answerPlainly(request); };
    thread_ = std::thread([this] { run(); });
}

FakeDecoder::~FakeDecoder()
{
    stop_ = true;
    thread_.join();
    closeClient();
    ::close(listenFd_);
}

void FakeDecoder::setHandler(Handler handler)
{
    std::lock_guard<std::mutex> lock(mutex_);
    handler_ = std::move(handler);
}

void FakeDecoder::answerPlainly(const Message& request)
{
    switch (MessageType(request.header.type)) {
    case MessageType::GetMatrix:
        return reply(request, 0, MatrixGeometry {});
    case MessageType::GetScreens:
        return reply(request, 0, ScreenList {});
    case MessageType::WindowGet:
        return reply(request, 0, WindowList {});
    case MessageType::WindowGetDivision:
        return reply(request, 0, DivisionList {});
    case MessageType::WindowDeviceGet:
        return reply(request, 0, WindowDevices {});
    default:
        return reply(request);
    }
}

void FakeDecoder::sendRaw(std::vector<uint8_t> bytes)
{
    std::lock_guard<std::mutex> lock(mutex_);
    if (batching_ && reverse_)
        outbox_.push_back(std::move(bytes));
    else
        writeLocked(bytes);
}

void FakeDecoder::writeLocked(const std::vector<uint8_t>& bytes)
{
    size_t sent = 0;
    while (clientFd_ >= 0 && sent < bytes.size()) {
        const ssize_t n = ::send(clientFd_, bytes.data() + sent, bytes.size() - sent, MSG_NOSIGNAL);
        if (n <= 0)
            return;
        sent += size_t(n);
    }
}

void FakeDecoder::dropClient()
{
    // The server thread notices the shutdown and closes the descriptor itself.
    std::lock_guard<std::mutex> lock(mutex_);
    if (clientFd_ >= 0)
        ::shutdown(clientFd_, SHUT_RDWR);
}

void FakeDecoder::closeClient()
{
    std::lock_guard<std::mutex> lock(mutex_);
    if (clientFd_ >= 0)
        ::close(clientFd_);
    clientFd_ = -1;
}

std::vector<Message> FakeDecoder::requests() const
{
    std::lock_guard<std::mutex> lock(mutex_);
    return requests_;
}

void FakeDecoder::run()
{
    using Clock = std::chrono::steady_clock;
    auto lastBeat = Clock::now();
    while (!stop_) {
        int client = -1;
        {
            std::lock_guard<std::mutex> lock(mutex_);
            client = clientFd_;
        }
        pollfd fds[2] = { { listenFd_, POLLIN, 0 }, { client, POLLIN, 0 } };
        ::poll(fds, 2, 10);
        if (fds[0].revents & POLLIN) {
            const int fd = ::accept4(listenFd_, nullptr, nullptr, SOCK_CLOEXEC);
            if (fd >= 0) {
                const int one = 1;
                ::setsockopt(fd, IPPROTO_TCP, TCP_NODELAY, &one, sizeof one);
                closeClient();
                std::lock_guard<std::mutex> lock(mutex_);
                clientFd_ = fd;
                stream_ = MessageStream(); // a new client starts a new stream
                client = -1; // its readiness belonged to the old client
                ++accepted_;
            }
        }
        if (client >= 0 && fds[1].revents != 0)
            serveClient();
        if (Clock::now() - lastBeat >= std::chrono::milliseconds(200)) {
            lastBeat = Clock::now();
            sendRaw(Message::encode(uint16_t(MessageType::Heartbeat), 0, 0, Empty {}));
        }
    }
}

void FakeDecoder::serveClient()
{
    uint8_t buffer[64 * 1024];
    int fd = -1;
    {
        std::lock_guard<std::mutex> lock(mutex_);
        fd = clientFd_;
    }
    const ssize_t n = fd >= 0 ? ::recv(fd, buffer, sizeof buffer, MSG_DONTWAIT) : -1;
    if (n <= 0) {
        if (n == 0 || (errno != EAGAIN && errno != EINTR))
            closeClient();
        return;
    }
    stream_.append(buffer, size_t(n));
    {
        std::lock_guard<std::mutex> lock(mutex_);
        batching_ = true;
    }
    Message message;
    MessageStream::Status status;
    while ((status = stream_.next(message)) == MessageStream::Status::Message) {
        if (message.header.type == uint16_t(MessageType::Heartbeat)) {
            ++heartbeatsReceived_;
            continue;
        }
        Handler handler;
        {
            std::lock_guard<std::mutex> lock(mutex_);
            requests_.push_back(message);
            handler = handler_;
        }
        handler(message, *this);
    }
    std::lock_guard<std::mutex> lock(mutex_);
    batching_ = false;
    std::for_each(outbox_.rbegin(), outbox_.rend(), [this](const std::vector<uint8_t>& bytes) { writeLocked(bytes); });
    outbox_.clear();
    if (status == MessageStream::Status::Error && clientFd_ >= 0)
        ::shutdown(clientFd_, SHUT_RDWR);
}
