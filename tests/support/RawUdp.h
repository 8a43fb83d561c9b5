#pragma once

#include "Message.h"

#include <QString>

#include <cstdint>
#include <vector>

// A UDP socket on a loopback address for tests that send exactly the bytes they mean:
// bad requests to a decoder, or answers to the SDK's probes from a fake decoder.
class RawUdp {
public:
    using Bytes = std::vector<uint8_t>;
    struct Peer {
        QString address;
        quint16 port = 0;
    };

    explicit RawUdp(const QString& address = QStringLiteral("127.0.0.1"));
    ~RawUdp();
    RawUdp(const RawUdp&) = delete;
    RawUdp& operator=(const RawUdp&) = delete;

    bool isValid() const { return fd_ >= 0; }
    quint16 port() const { return port_; }

    bool sendTo(const Peer& to, const Bytes& datagram) const;
    // The next datagram within timeoutMs, if it decodes as a message header with a length
    // matching its size.
    bool receiveMessage(cmatrix::wire::Message& message, Peer& from, int timeoutMs) const;

    // A whole message: header with these fields, then the payload.
    static Bytes message(uint16_t type, uint32_t requestId, int32_t status, const Bytes& payload);
    template <class Body> static Bytes body(const Body& b)
    {
        Bytes out;
        cmatrix::wire::PayloadWriter writer(out);
        b.visit(writer);
        return out;
    }

private:
    int fd_ = -1;
    quint16 port_ = 0;
};
