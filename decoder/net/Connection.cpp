#include "Connection.h"

#include "Outbox.h"
#include "core/DecoderCore.h"
#include "core/FaultPlan.h"

#include <algorithm>
#include <cerrno>
#include <poll.h>
#include <sys/socket.h>

namespace vdec {

using namespace cmatrix::wire;

namespace {

constexpr size_t kReadChunk = 64 * 1024;
// Bytes taken in one go before deadlines are looked at again, so a client pouring
// data in cannot hold up heartbeats and late answers.
constexpr size_t kReadBudget = 1024 * 1024;

std::vector<uint8_t> heartbeat()
{
    std::vector<uint8_t> out(WireHeader::kSize);
    WireHeader h;
    h.type = uint16_t(MessageType::Heartbeat);
    h.encode(out.data());
    return out;
}

} // namespace

Connection::Connection(Socket socket, uint64_t id, DecoderCore& core)
    : socket_(std::move(socket))
    , core_(core)
    , heartbeatInterval_(std::max(10, core.config().heartbeatIntervalMs))
    , heartbeatTimeout_(std::max(10, core.config().heartbeatTimeoutMs))
{
    session_.connectionId = id;
    session_.outbox = std::make_shared<Outbox>();
}

Connection::~Connection()
{
    stop();
    if (thread_.joinable())
        thread_.join();
}

void Connection::start()
{
    thread_ = std::thread([this] { run(); });
}

void Connection::stop()
{
    stopping_ = true;
    wake_.notify();
}

void Connection::abort()
{
    aborting_ = true;
    stop();
}

int Connection::msUntilNextDeadline() const
{
    Clock::time_point next = std::min(lastReceived_ + heartbeatTimeout_, lastSent_ + heartbeatInterval_);
    for (const Pending& p : pending_)
        next = std::min(next, p.due);
    const auto ms = std::chrono::duration_cast<std::chrono::milliseconds>(next - Clock::now()).count();
    return int(std::clamp<long long>(ms + 1, 0, 1000));
}

void Connection::run()
{
    lastReceived_ = lastSent_ = Clock::now();
    bool open = true;
    while (open && !stopping_) {
        pollfd fds[3]
            = { { socket_.fd(), POLLIN, 0 }, { wake_.fd(), POLLIN, 0 }, { session_.outbox->fd(), POLLIN, 0 } };
        if (::poll(fds, 3, msUntilNextDeadline()) < 0 && errno != EINTR)
            break;
        if (fds[1].revents)
            wake_.drain();
        if (stopping_)
            break;
        if (fds[0].revents)
            open = receive();
        if (open && fds[2].revents) {
            for (const std::vector<uint8_t>& pushed : session_.outbox->take()) {
                open = sendAll(pushed);
                if (!open)
                    break;
            }
        }
        if (open)
            open = flushDue();
        const Clock::time_point now = Clock::now();
        if (now - lastReceived_ >= heartbeatTimeout_)
            break; // the peer has gone silent
        if (open && now - lastSent_ >= heartbeatInterval_) {
            if (core_.faults().heartbeatsMuted())
                lastSent_ = now;
            else
                open = sendAll(heartbeat());
        }
    }
    session_.outbox->close();
    if (aborting_)
        socket_.abortOnClose();
    socket_.reset();
    finished_ = true;
}

bool Connection::receive()
{
    uint8_t buffer[kReadChunk];
    size_t taken = 0;
    // A killed connection must not carry out one more request of what it has already read.
    while (taken < kReadBudget && !stopping_) {
        const ssize_t n = ::recv(socket_.fd(), buffer, sizeof buffer, 0);
        if (n == 0)
            return false;
        if (n < 0) {
            if (errno == EINTR)
                continue;
            if (errno != EAGAIN && errno != EWOULDBLOCK)
                return false;
            break;
        }
        lastReceived_ = Clock::now();
        stream_.append(buffer, size_t(n));
        taken += size_t(n);
        if (!handleBuffered())
            return false;
    }
    return true;
}

bool Connection::handleBuffered()
{
    Message message;
    while (!stopping_) {
        switch (stream_.next(message)) {
        case MessageStream::Status::NeedMore:
            return true;
        case MessageStream::Status::Error:
            return false; // bad magic, version or length: the stream cannot be trusted any more
        case MessageStream::Status::Message:
            break;
        }
        Reply reply = core_.process(session_, message);
        if (reply.action == Reply::Action::Close)
            return false;
        if (reply.action != Reply::Action::Send)
            continue;
        if (reply.delayMs > 0)
            pending_.push_back({ Clock::now() + std::chrono::milliseconds(reply.delayMs), std::move(reply.bytes) });
        else if (!sendAll(reply.bytes))
            return false;
    }
    return false;
}

bool Connection::flushDue()
{
    const Clock::time_point now = Clock::now();
    auto due = std::stable_partition(pending_.begin(), pending_.end(), [now](const Pending& p) { return p.due > now; });
    std::vector<Pending> ready(std::make_move_iterator(due), std::make_move_iterator(pending_.end()));
    pending_.erase(due, pending_.end());
    std::stable_sort(ready.begin(), ready.end(), [](const Pending& a, const Pending& b) { return a.due < b.due; });
    for (const Pending& p : ready) {
        if (!sendAll(p.bytes))
            return false;
    }
    return true;
}

bool Connection::sendAll(const std::vector<uint8_t>& bytes)
{
    size_t sent = 0;
    const Clock::time_point giveUp = Clock::now() + heartbeatTimeout_;
    while (sent < bytes.size()) {
        const ssize_t n = ::send(socket_.fd(), bytes.data() + sent, bytes.size() - sent, MSG_NOSIGNAL);
        if (n > 0) {
            sent += size_t(n);
            continue;
        }
        if (n < 0 && errno == EINTR)
            continue;
        if (n < 0 && errno != EAGAIN && errno != EWOULDBLOCK)
            return false;
        // The peer is not reading: wait for room, but not longer than a silent peer is kept.
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(giveUp - Clock::now()).count();
        if (left <= 0 || stopping_)
            return false;
        pollfd fds[2] = { { socket_.fd(), POLLOUT, 0 }, { wake_.fd(), POLLIN, 0 } };
        if (::poll(fds, 2, int(std::min<long long>(left, 1000))) < 0 && errno != EINTR)
            return false;
    }
    lastSent_ = Clock::now();
    return true;
}

} // namespace vdec
