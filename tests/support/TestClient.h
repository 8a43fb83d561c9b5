#pragma once

#include "CMatrixSDK.h"
#include "Message.h"
#include "MessageStream.h"
#include "Messages.h"

#include <QString>

#include <deque>
#include <vector>

namespace kvmstest {

// A blocking client speaking the wire protocol straight, without the SDK: tests use
// it to send exactly the bytes they mean, good or bad. Every wait has a timeout.
// Heartbeats from the peer are counted and otherwise skipped.
class TestClient {
public:
    using Type = cmatrix::wire::MessageType;
    using Bytes = std::vector<uint8_t>;
    enum class Wait { Message, Timeout, Closed };

    TestClient() = default;
    ~TestClient();
    TestClient(const TestClient&) = delete;
    TestClient& operator=(const TestClient&) = delete;

    bool connectTo(const QString& address, quint16 port, int timeoutMs = 2000);
    void close();
    bool isOpen() const { return fd_ >= 0; }

    // 0 or the refusal code; *errorJson gets the LoginFailure text.
    int32_t login(const QString& user, const QString& password, QString* errorJson = nullptr);

    // Sends one request and waits for its answer. Returns the answer's status, or
    // CMATRIX_ERR_TIMEOUT / _DISCONNECTED, or _PROTOCOL if *answer does not parse.
    // The answer body is decoded when the status is 0.
    template <class Request, class Answer = cmatrix::wire::Empty>
    int32_t call(Type type, const Request& request, Answer* answer = nullptr, int timeoutMs = 2000)
    {
        cmatrix::wire::Message reply;
        const int32_t rc = callRaw(uint16_t(type), encodeBody(request), &reply, timeoutMs);
        if (rc != CMATRIX_OK || !answer)
            return rc;
        return reply.decode(*answer) ? rc : CMATRIX_ERR_PROTOCOL;
    }
    // The same with a payload given as bytes; the whole answer lands in *reply.
    int32_t callRaw(uint16_t type, const Bytes& payload, cmatrix::wire::Message* reply = nullptr, int timeoutMs = 2000);

    // Sends a request without waiting; returns its request id.
    uint32_t sendRequest(uint16_t type, const Bytes& payload);
    bool sendBytes(const Bytes& bytes);
    bool sendHeartbeat();
    // The next message that is not a heartbeat.
    Wait receive(cmatrix::wire::Message& out, int timeoutMs);
    // True once the peer has closed (anything it sends meanwhile is dropped).
    bool waitClosed(int timeoutMs);
    int heartbeatsReceived() const { return heartbeats_; }
    // Why the last stream from the peer was given up on (Ok: it was not).
    cmatrix::wire::WireHeader::Parse streamError() const { return streamError_; }

    template <class Body> static Bytes encodeBody(const Body& body)
    {
        Bytes out;
        cmatrix::wire::PayloadWriter writer(out);
        body.visit(writer);
        return out;
    }
    static Bytes encodeMessage(uint16_t type, uint32_t requestId, const Bytes& payload);

private:
    Wait readMessage(cmatrix::wire::Message& out, int timeoutMs);

    int fd_ = -1;
    uint32_t nextRequestId_ = 1;
    int heartbeats_ = 0;
    cmatrix::wire::WireHeader::Parse streamError_ = cmatrix::wire::WireHeader::Parse::Ok;
    cmatrix::wire::MessageStream stream_;
    std::deque<cmatrix::wire::Message> stash_; // answers that arrived while waiting for another
};

} // namespace kvmstest
