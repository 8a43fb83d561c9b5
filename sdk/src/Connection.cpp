#include "Connection.h"

#include "Messages.h"

#include <algorithm>

namespace cmatrix::sdk {

using wire::MessageType;
using wire::WireHeader;

namespace {

// How long the reader keeps off the socket after a call, and how often it looks again
// while calls are under way.
constexpr std::chrono::milliseconds kReaderPause { 5 };
// Messages the decoder pushes on its own are small (firmware progress).
constexpr uint32_t kMaxPushPayload = 64 * 1024;

} // namespace

int Connection::open(
    const std::string& ip, uint16_t port, Clock::time_point deadline, Timing timing, std::shared_ptr<Connection>& out)
{
    Socket socket;
    const int rc = Socket::connectTo(ip, port, deadline, socket);
    if (rc == CMATRIX_OK)
        out = std::make_shared<Connection>(std::move(socket), timing);
    return rc;
}

Connection::Connection(Socket socket, Timing timing)
    : socket_(std::move(socket))
    , timing_(timing)
    , tick_(std::clamp(
          std::min(timing.heartbeat, timing.silence) / 4, std::chrono::milliseconds(1), std::chrono::milliseconds(250)))
    , buffer_(64 * 1024)
    , lastSent_(Clock::now().time_since_epoch().count())
    , lastReceived_(lastSent_.load())
{
    socket_.setReceiveTimeout(tick_);
}

Connection::~Connection()
{
    stop();
}

void Connection::start(std::function<void()> onLost)
{
    onLost_ = std::move(onLost);
    std::lock_guard<std::mutex> lock(mutex_);
    // The reader keeps the connection alive while it runs, so a handle destroyed from
    // inside its own status callback does not pull the object out from under it.
    reader_ = std::thread([self = shared_from_this()] { self->run(); });
}

void Connection::stop()
{
    close(State::Stopped);
    socket_.shutdown();
    std::thread reader;
    {
        std::lock_guard<std::mutex> lock(mutex_);
        reader = std::move(reader_);
    }
    if (!reader.joinable())
        return;
    if (reader.get_id() == std::this_thread::get_id())
        reader.detach(); // stopped from a callback: the reader ends right after it returns
    else
        reader.join();
}

uint32_t Connection::nextRequestId()
{
    uint32_t id = ++lastRequestId_;
    while (id == 0) // 0 marks pushed messages
        id = ++lastRequestId_;
    return id;
}

bool Connection::close(State how)
{
    std::lock_guard<std::mutex> lock(mutex_);
    if (state_.load() != State::Open)
        return false;
    state_.store(how);
    for (auto& entry : pending_) {
        entry.second->result = CMATRIX_ERR_DISCONNECTED;
        entry.second->finished = true;
        entry.second->done.notify_one();
    }
    pending_.clear();
    readerWake_.notify_all();
    return true;
}

void Connection::lose()
{
    if (close(State::Lost))
        socket_.shutdown(); // wakes the reader, which reports the loss
}

int Connection::exchange(MessageType type, uint32_t requestId, const std::vector<uint8_t>& frame,
    Clock::time_point deadline, wire::Message& answer, size_t maxAnswer)
{
    if (frame.size() - WireHeader::kSize > WireHeader::kMaxPayload)
        return CMATRIX_ERR_TOO_LARGE;
    Pending pending;
    pending.maxAnswer = maxAnswer;
    {
        std::lock_guard<std::mutex> lock(mutex_);
        if (!isOpen())
            return CMATRIX_ERR_DISCONNECTED;
        // Registered before sending: the answer may arrive before send() returns.
        pending_.emplace(requestId, &pending);
    }
    lastCall_.store(Clock::now().time_since_epoch().count());
    const int sent = send(frame, deadline, true);
    std::unique_lock<std::mutex> lock(mutex_);
    if (sent != CMATRIX_OK && !pending.finished) {
        pending_.erase(requestId);
        return sent;
    }
    awaitAnswer(pending, deadline, lock);
    lastCall_.store(Clock::now().time_since_epoch().count());
    if (!pending.finished) {
        pending_.erase(requestId);
        return CMATRIX_ERR_TIMEOUT;
    }
    if (pending.result != CMATRIX_OK)
        return pending.result;
    if (pending.answer.header.type != wire::responseOf(type))
        return CMATRIX_ERR_PROTOCOL;
    answer = std::move(pending.answer);
    return CMATRIX_OK;
}

void Connection::awaitAnswer(Pending& pending, Clock::time_point deadline, std::unique_lock<std::mutex>& lock)
{
    while (!pending.finished && Clock::now() < deadline) {
        pending.nudged = false; // before trying, so a release after a failed try is not missed
        lock.unlock();
        const bool reading = readMutex_.try_lock();
        if (reading) {
            readFor(pending, deadline);
            releaseReading();
        }
        lock.lock();
        if (!reading)
            pending.done.wait_until(lock, deadline, [&] { return pending.finished || pending.nudged; });
    }
}

void Connection::readFor(const Pending& pending, Clock::time_point deadline)
{
    for (;;) {
        {
            std::lock_guard<std::mutex> lock(mutex_);
            if (pending.finished)
                return;
        }
        const int waitMs = millisecondsUntil(deadline);
        if (waitMs == 0)
            return;
        if (!readOnce(waitMs)) {
            lose();
            return;
        }
    }
}

void Connection::releaseReading()
{
    readMutex_.unlock();
    // Every waiting caller may take over; one will, the others wait on.
    std::lock_guard<std::mutex> lock(mutex_);
    for (auto& entry : pending_) {
        entry.second->nudged = true;
        entry.second->done.notify_one();
    }
}

int Connection::sendBare(MessageType type, Clock::time_point deadline, bool wait)
{
    const uint32_t id = type == MessageType::Heartbeat ? 0 : nextRequestId();
    return send(wire::Message::encode(uint16_t(type), id, 0, wire::Empty {}), deadline, wait);
}

int Connection::send(const std::vector<uint8_t>& frame, Clock::time_point deadline, bool wait)
{
    if (wait ? !writeGate_.try_lock_until(deadline) : !writeGate_.try_lock())
        return CMATRIX_ERR_TIMEOUT;
    size_t sent = 0;
    int rc = CMATRIX_ERR_DISCONNECTED;
    if (isOpen())
        rc = socket_.sendAll(frame.data(), frame.size(), deadline, sent);
    writeGate_.unlock();
    if (sent > 0)
        lastSent_.store(Clock::now().time_since_epoch().count());
    if (rc == CMATRIX_OK || (rc == CMATRIX_ERR_TIMEOUT && sent == 0))
        return rc;
    // Broken, or cut off in the middle of a message: the stream cannot carry anything more.
    lose();
    return rc;
}

void Connection::run()
{
    while (isOpen()) {
        const Clock::time_point now = Clock::now();
        if (now - Clock::time_point(Clock::duration(lastReceived_.load())) >= timing_.silence) {
            lose();
            break;
        }
        keepAlive(now);
        if (!readerMayRead() || !readMutex_.try_lock())
            continue;
        const bool intact = readOnce(-1);
        releaseReading();
        if (!intact) {
            lose();
            break;
        }
    }
    if (state_.load() == State::Lost && onLost_)
        onLost_();
}

bool Connection::readerMayRead()
{
    // Callers read for themselves while they wait, and the reader keeps off the socket
    // for a moment after the last call, so a run of calls never waits for this thread
    // to pass answers on. It looks again soon, so a peer that closes is noticed at once.
    std::unique_lock<std::mutex> lock(mutex_);
    return readerWake_.wait_for(lock, std::min(tick_, kReaderPause), [this] {
        const Clock::time_point lastCall { Clock::duration(lastCall_.load()) };
        return !isOpen() || (pending_.empty() && Clock::now() - lastCall >= kReaderPause);
    }) && isOpen();
}

// Reads what arrived and hands out the answers; false once the stream is over or broken.
// waitMs < 0: wait as long as the socket's receive timeout (one tick).
bool Connection::readOnce(int waitMs)
{
    if (waitMs >= 0) {
        const int ready = socket_.waitReadable(waitMs);
        if (ready <= 0)
            return ready == 0;
    }
    size_t size = 0;
    switch (socket_.receive(buffer_.data(), buffer_.size(), size)) {
    case Socket::Read::Again:
        return true;
    case Socket::Read::Closed:
    case Socket::Read::Failed:
        return false;
    case Socket::Read::Data:
        break;
    }
    lastReceived_.store(Clock::now().time_since_epoch().count());
    stream_.append(buffer_.data(), size);
    wire::Message message;
    for (;;) {
        WireHeader header;
        if (stream_.peekHeader(header) && !admit(header)) {
            stream_.skipMessage();
            continue;
        }
        switch (stream_.next(message)) {
        case wire::MessageStream::Status::Message:
            dispatch(message);
            break;
        case wire::MessageStream::Status::NeedMore:
            return true;
        case wire::MessageStream::Status::Error:
            return false; // a bad header cannot be skipped: framing is lost
        }
    }
}

// Whether a message whose header has arrived is worth keeping. An answer longer than its caller
// can take ends that call at once and is dropped unread, as is an answer nobody waits for.
bool Connection::admit(const WireHeader& header)
{
    if (!wire::isResponse(header.type))
        return header.length <= kMaxPushPayload;
    std::lock_guard<std::mutex> lock(mutex_);
    const auto it = pending_.find(header.requestId);
    if (it == pending_.end())
        return false;
    Pending* pending = it->second;
    if (header.length <= pending->maxAnswer)
        return true;
    pending_.erase(it);
    pending->result = CMATRIX_ERR_TOO_LARGE;
    pending->finished = true;
    pending->done.notify_one();
    return false;
}

void Connection::dispatch(wire::Message& message)
{
    // Heartbeats only prove the decoder is alive, which any byte already did.
    if (!wire::isResponse(message.header.type)) {
        if (message.header.type != uint16_t(MessageType::Heartbeat) && message.header.requestId == 0 && onPush_)
            onPush_(message);
        return;
    }
    std::lock_guard<std::mutex> lock(mutex_);
    const auto it = pending_.find(message.header.requestId);
    if (it == pending_.end())
        return; // the caller gave up waiting
    Pending* pending = it->second;
    pending_.erase(it);
    pending->answer = std::move(message);
    pending->finished = true;
    pending->done.notify_one();
}

void Connection::keepAlive(Clock::time_point now)
{
    // Skipped while another message is on its way out: that one tells the decoder as much.
    if (now - Clock::time_point(Clock::duration(lastSent_.load())) >= timing_.heartbeat)
        sendBare(MessageType::Heartbeat, now + timing_.heartbeat, false);
}

} // namespace cmatrix::sdk
