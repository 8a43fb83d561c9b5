#pragma once

#include "Message.h"
#include "MessageStream.h"
#include "Messages.h"

#include <atomic>
#include <cstdint>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

// A scripted decoder on 127.0.0.1 with an ephemeral port, one client at a time, for
// driving the SDK into the corners a well-behaved decoder never reaches. Requests
// go to a handler on the server's thread; the handler answers (or not) as the test
// wants. By default it sends heartbeats, accepts every login and answers every other
// request with status 0 and no payload.
class FakeDecoder {
public:
    using Handler = std::function<void(const cmatrix::wire::Message& request, FakeDecoder& decoder)>;

    FakeDecoder();
    ~FakeDecoder();
    FakeDecoder(const FakeDecoder&) = delete;
    FakeDecoder& operator=(const FakeDecoder&) = delete;

    uint16_t port() const { return port_; }

    void setHandler(Handler handler);
    // What a well-behaved decoder with an empty wall answers; the default handler.
    void answerPlainly(const cmatrix::wire::Message& request);
    // Answers produced while handling one read go out in reverse order.
    void setReverseBatches(bool on) { reverse_ = on; }

    // Answers a request with a status and a payload.
    template <class Body> void reply(const cmatrix::wire::Message& request, int32_t status, const Body& body)
    {
        sendRaw(cmatrix::wire::Message::encode(
            uint16_t(request.header.type | cmatrix::wire::kResponseFlag), request.header.requestId, status, body));
    }
    void reply(const cmatrix::wire::Message& request, int32_t status = 0)
    {
        reply(request, status, cmatrix::wire::Empty {});
    }
    // Bytes as they are, on the current client (queued while a batch is reversed).
    void sendRaw(std::vector<uint8_t> bytes);
    void dropClient();

    std::vector<cmatrix::wire::Message> requests() const; // everything but heartbeats
    int heartbeatsReceived() const { return heartbeatsReceived_; }
    int connectionsAccepted() const { return accepted_; }

private:
    void run();
    void serveClient();
    void closeClient();
    void writeLocked(const std::vector<uint8_t>& bytes);

    int listenFd_ = -1;
    uint16_t port_ = 0;
    std::thread thread_;
    std::atomic<bool> stop_ { false };
    std::atomic<bool> reverse_ { false };
    std::atomic<int> heartbeatsReceived_ { 0 };
    std::atomic<int> accepted_ { 0 };
    cmatrix::wire::MessageStream stream_; // server thread only

    mutable std::mutex mutex_; // guards everything below
    int clientFd_ = -1;
    bool batching_ = false;
    std::vector<std::vector<uint8_t>> outbox_;
    Handler handler_;
    std::vector<cmatrix::wire::Message> requests_;
};
