#include "FakeAnswerer.h"

#include "Messages.h"

#include <algorithm>
#include <cstring>

using namespace cmatrix::wire;

FakeAnswerer::FakeAnswerer(const QString& address, const QString& strangerAddress, Replies replies)
    : address_(address)
    , socket_(address)
    , stranger_(strangerAddress)
    , replies_(std::move(replies))
{
    if (isValid())
        thread_ = std::thread([this] { serve(); });
}

FakeAnswerer::~FakeAnswerer()
{
    stop_.store(true);
    if (thread_.joinable())
        thread_.join();
}

QByteArray FakeAnswerer::target() const
{
    return QStringLiteral("%1:%2").arg(address_).arg(socket_.port()).toLatin1();
}

void FakeAnswerer::serve()
{
    while (!stop_.load()) {
        Message probe;
        RawUdp::Peer sdk;
        if (!socket_.receiveMessage(probe, sdk, 20) || probe.header.type != uint16_t(MessageType::DiscoveryProbe))
            continue;
        ++probes_;
        for (const Datagram& d : replies_(probe.header.requestId))
            (d.fromStranger ? stranger_ : socket_).sendTo(sdk, d.bytes);
    }
}

RawUdp::Bytes FakeAnswerer::answer(uint32_t requestId, const DeviceInfo_t& device, int32_t status)
{
    return RawUdp::message(responseOf(MessageType::DiscoveryProbe), requestId, status, answerBody(device));
}

RawUdp::Bytes FakeAnswerer::answerBody(const DeviceInfo_t& device)
{
    RawUdp::Bytes body;
    body.reserve(sizeof device); // also keeps GCC from a false overflow warning on the empty vector
    PayloadWriter writer(body);
    DiscoveryAnswer { device }.visit(writer);
    return body;
}

DeviceInfo_t FakeAnswerer::descriptor(const char* devId, const char* ip, int32_t devType)
{
    DeviceInfo_t d {};
    d.devType = devType;
    std::memcpy(d.devId, devId, std::min(std::strlen(devId), sizeof d.devId - 1));
    std::memcpy(d.ip, ip, std::min(std::strlen(ip), sizeof d.ip - 1));
    d.port = 28000;
    d.modelClass = 2;
    d.modelSub = 16;
    d.flag = 1;
    std::strcpy(d.name, "V1.0.0 build 240101");
    return d;
}
