#pragma once

#include "CMatrixSDK.h"
#include "Message.h"
#include "MessageStream.h"
#include "Messages.h"
#include "RawUdp.h"

#include <QString>

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
    // The same with a payload given as bytes; the whole answer lands in *reply (answers to
    // other requests are dropped).
    int32_t callRaw(uint16_t type, const Bytes& payload, cmatrix::wire::Message* reply = nullptr, int timeoutMs = 2000);

    bool sendBytes(const Bytes& bytes);
    bool sendHeartbeat();
    // The next message that is not a heartbeat.
    Wait receive(cmatrix::wire::Message& out, int timeoutMs);
    // True once the peer has closed (anything it sends meanwhile is dropped).
    bool waitClosed(int timeoutMs);
    int heartbeatsReceived() const { return heartbeats_; }

    template <class Body> static Bytes encodeBody(const Body& body) { return RawUdp::body(body); }

private:
    int fd_ = -1;
    uint32_t nextRequestId_ = 1;
    int heartbeats_ = 0;
    cmatrix::wire::MessageStream stream_;
};

} // namespace kvmstest
