#pragma once

#include "CMatrixSDK.h"
#include "Message.h"
#include "MessageStream.h"
#include "Socket.h"
#include "WriteGate.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <unordered_map>
#include <vector>

namespace cmatrix::sdk {

// One TCP connection to a decoder. Callers on any thread send requests and wait for
// their answers, paired by request id. While one of them waits, it reads the socket
// itself if no one else does and hands other callers their answers, so an answer
// reaches its caller without a hop through another thread. A reader thread of its
// own reads while no call is under way, sends heartbeats and notices a silent peer.
// A handle owns one for control and may open more (media).
//
// The connection closes once, for good: either on purpose (stop) or because it was
// lost (peer closed, silence, garbage, a write cut short). Only a loss is reported,
// once, through the handler given to start(), on the reader thread.
class Connection : public std::enable_shared_from_this<Connection> {
public:
    struct Timing {
        // A hung decoder must be noticed within a second: a control call waiting on it holds up
        // the whole worker (every other decoder's work), so silence ends it at 900 ms, with room
        // for three heartbeats lost or late before that.
        std::chrono::milliseconds heartbeat { 200 }; // sent after this long without sending anything
        std::chrono::milliseconds silence { 900 }; // the peer is gone after this long without a byte
    };

    // Opens the TCP connection; the reader starts with start().
    static int open(const std::string& ip, uint16_t port, Clock::time_point deadline, Timing timing,
        std::shared_ptr<Connection>& out);

    Connection(Socket socket, Timing timing);
    ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    void start(std::function<void()> onLost);
    // Messages the decoder pushes on its own (request id 0, no answer flag), other than
    // heartbeats, go to this handler on whichever thread reads them. Set before start().
    void setPushHandler(std::function<void(const wire::Message&)> handler) { onPush_ = std::move(handler); }
    // Closes without reporting and waits for the reader (unless called on the reader itself).
    void stop();
    bool isOpen() const { return state_.load() == State::Open; }

    uint32_t nextRequestId();

    // Sends a whole request frame (header with this id, then payload) and waits for its answer.
    // An answer whose payload is longer than maxAnswer is dropped unread: CMATRIX_ERR_TOO_LARGE.
    int exchange(wire::MessageType type, uint32_t requestId, const std::vector<uint8_t>& frame,
        Clock::time_point deadline, wire::Message& answer, size_t maxAnswer = wire::WireHeader::kMaxPayload);

    // Sends a payload-less message nobody waits an answer for.
    int post(wire::MessageType type, Clock::time_point deadline) { return sendBare(type, deadline, true); }

    // A request and its decoded answer. A decoder's refusal comes back as its error code.
    template <class Request, class Answer>
    int call(wire::MessageType type, const Request& request, Answer& answer, Clock::time_point deadline,
        size_t maxAnswer = wire::WireHeader::kMaxPayload)
    {
        const uint32_t id = nextRequestId();
        wire::Message reply;
        const int rc
            = exchange(type, id, wire::Message::encode(uint16_t(type), id, 0, request), deadline, reply, maxAnswer);
        if (rc != CMATRIX_OK)
            return rc;
        if (reply.header.status != CMATRIX_OK)
            return statusResult(reply.header.status);
        return reply.decode(answer) ? CMATRIX_OK : CMATRIX_ERR_PROTOCOL;
    }

    // A decoder's status as a result: codes are negative, anything else is a broken answer.
    static int statusResult(int32_t status) { return status <= 0 ? status : CMATRIX_ERR_PROTOCOL; }

private:
    enum class State { Open, Stopped, Lost };
    struct Pending {
        std::condition_variable done;
        wire::Message answer;
        int result = CMATRIX_OK;
        size_t maxAnswer = wire::WireHeader::kMaxPayload;
        bool finished = false;
        bool nudged = false; // the socket is free: try to read it
    };

    bool close(State how);
    void lose();
    int send(const std::vector<uint8_t>& frame, Clock::time_point deadline, bool wait);
    int sendBare(wire::MessageType type, Clock::time_point deadline, bool wait);
    void run();
    bool readerMayRead();
    void awaitAnswer(Pending& pending, Clock::time_point deadline, std::unique_lock<std::mutex>& lock);
    void readFor(const Pending& pending, Clock::time_point deadline);
    bool readOnce(int waitMs);
    void releaseReading();
    bool admit(const wire::WireHeader& header);
    void dispatch(wire::Message& message);
    void keepAlive(Clock::time_point now);

    Socket socket_;
    const Timing timing_;
    const std::chrono::milliseconds tick_; // longest the reader blocks before it looks at the clock
    std::function<void()> onLost_;
    std::function<void(const wire::Message&)> onPush_;

    std::mutex mutex_; // guards pending_, reader_, the Pending records and changes of state_
    std::condition_variable readerWake_;
    std::atomic<State> state_ { State::Open };
    std::unordered_map<uint32_t, Pending*> pending_;
    std::thread reader_;

    // Held by whoever reads the socket (a waiting caller or the reader thread); guards
    // stream_ and buffer_. Taken before mutex_, never while holding it.
    std::mutex readMutex_;
    wire::MessageStream stream_;
    std::vector<uint8_t> buffer_;

    WriteGate writeGate_; // one message at a time on the wire
    std::atomic<Clock::rep> lastSent_;
    std::atomic<Clock::rep> lastReceived_;
    std::atomic<Clock::rep> lastCall_ { 0 };
    std::atomic<uint32_t> lastRequestId_ { 0 };
};

} // namespace cmatrix::sdk
