#pragma once

#include "Message.h"
#include "Socket.h"
#include "UdpSocket.h"

#include "CMatrixSDK.h"

#include <cstdint>
#include <vector>

namespace cmatrix::sdk {

// One request over UDP to every discovery target, and the answers to it. An answer
// counts only when it is whole (exact length, known header), answers this request
// (type and request id) and comes from one of the targets; anything else is dropped
// without a word, as a stray datagram should be.
class DiscoveryExchange {
public:
    // Larger than any answer the protocol has (a discovery answer is some 2.4 KB).
    static constexpr size_t kMaxDatagram = 8192;

    DiscoveryExchange(wire::MessageType type, std::vector<UdpEndpoint> targets);

    bool isOpen() const { return socket_.isValid(); }
    const std::vector<UdpEndpoint>& targets() const { return targets_; }

    // Sends the request to every target; CMATRIX_OK when at least one took it.
    template <class Body> int send(const Body& body)
    {
        return sendFrame(wire::Message::encode(uint16_t(type_), requestId_, 0, body));
    }
    // The next acceptable answer before the deadline; false once it passed.
    bool next(wire::Message& answer, Clock::time_point deadline);

    // Sends one request and waits for the first answer that decodes as Answer and
    // passes `wanted`; a refusal (non-zero status) is the result at once. Without
    // any such answer before the timeout: CMATRIX_ERR_DEVICE_NOT_FOUND.
    template <class Request, class Answer, class Wanted>
    static int call(wire::MessageType type, const Request& request, Answer& answer, int timeoutMs, Wanted&& wanted);

private:
    int sendFrame(const std::vector<uint8_t>& frame);
    bool acceptable(const std::vector<uint8_t>& datagram, const UdpEndpoint& from, wire::Message& out) const;
    static uint32_t newRequestId();

    const wire::MessageType type_;
    const std::vector<UdpEndpoint> targets_;
    const uint32_t requestId_;
    UdpSocket socket_;
    std::vector<uint8_t> buffer_;
};

std::vector<UdpEndpoint> currentDiscoveryTargets();

template <class Request, class Answer, class Wanted>
int DiscoveryExchange::call(
    wire::MessageType type, const Request& request, Answer& answer, int timeoutMs, Wanted&& wanted)
{
    const Clock::time_point deadline = Clock::now() + std::chrono::milliseconds(timeoutMs);
    DiscoveryExchange exchange(type, currentDiscoveryTargets());
    if (!exchange.isOpen())
        return CMATRIX_ERR_FAILED;
    if (exchange.targets().empty())
        return CMATRIX_ERR_DEVICE_NOT_FOUND;
    if (const int rc = exchange.send(request); rc != CMATRIX_OK)
        return rc;
    wire::Message reply;
    while (exchange.next(reply, deadline)) {
        if (reply.header.status != CMATRIX_OK)
            return reply.header.status < 0 ? reply.header.status : CMATRIX_ERR_PROTOCOL;
        Answer decoded;
        if (reply.decode(decoded) && wanted(decoded)) {
            answer = decoded;
            return CMATRIX_OK;
        }
    }
    return CMATRIX_ERR_DEVICE_NOT_FOUND;
}

} // namespace cmatrix::sdk
