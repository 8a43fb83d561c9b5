#pragma once

#include "CMatrixSDK.h"
#include "RawUdp.h"

#include <QByteArray>
#include <QString>

#include <atomic>
#include <functional>
#include <memory>
#include <thread>
#include <vector>

// A stand-in unit on a loopback address that answers each discovery probe with datagrams the
// test makes, so the worker meets what no real decoder would send. A datagram may go out from
// a second socket on another address, which is not a discovery target.
class FakeAnswerer {
public:
    struct Datagram {
        RawUdp::Bytes bytes;
        bool fromStranger = false;
    };
    // The datagrams sent back to one probe, given its request id.
    using Replies = std::function<std::vector<Datagram>(uint32_t requestId)>;

    FakeAnswerer(const QString& address, const QString& strangerAddress, Replies replies);
    ~FakeAnswerer();
    FakeAnswerer(const FakeAnswerer&) = delete;
    FakeAnswerer& operator=(const FakeAnswerer&) = delete;

    bool isValid() const { return socket_.isValid() && stranger_.isValid(); }
    QByteArray target() const; // "address:port", for Discovery_SetTargets
    int probes() const { return probes_.load(); }

    // A well-formed answer to the probe `requestId` carrying `device`.
    static RawUdp::Bytes answer(uint32_t requestId, const DeviceInfo_t& device, int32_t status = 0);
    // The payload of such an answer, for tests that spoil it before sending.
    static RawUdp::Bytes answerBody(const DeviceInfo_t& device);
    // A descriptor as a decoder fills it.
    static DeviceInfo_t descriptor(const char* devId, const char* ip, int32_t devType = 9);

private:
    void serve();

    QString address_;
    RawUdp socket_;
    RawUdp stranger_;
    Replies replies_;
    std::atomic<bool> stop_ { false };
    std::atomic<int> probes_ { 0 };
    std::thread thread_;
};
