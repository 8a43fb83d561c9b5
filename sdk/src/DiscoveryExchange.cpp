#include "DiscoveryExchange.h"

#include "DiscoveryTargets.h"

#include <algorithm>
#include <atomic>
#include <random>

namespace cmatrix::sdk {

using wire::WireHeader;

std::vector<UdpEndpoint> currentDiscoveryTargets()
{
    return DiscoveryTargets::instance().current();
}

DiscoveryExchange::DiscoveryExchange(wire::MessageType type, std::vector<UdpEndpoint> targets)
    : type_(type)
    , targets_(std::move(targets))
    , requestId_(newRequestId())
{
}

uint32_t DiscoveryExchange::newRequestId()
{
    // Started at a random point, so an answer meant for another process that used the
    // same port before is not taken for ours.
    static std::atomic<uint32_t> last { std::random_device {}() };
    uint32_t id = ++last;
    while (id == 0)
        id = ++last;
    return id;
}

int DiscoveryExchange::sendFrame(const std::vector<uint8_t>& frame)
{
    int sent = 0;
    for (const UdpEndpoint& target : targets_)
        sent += socket_.sendTo(target, frame) == CMATRIX_OK ? 1 : 0;
    return sent > 0 || targets_.empty() ? CMATRIX_OK : CMATRIX_ERR_FAILED;
}

bool DiscoveryExchange::acceptable(
    const std::vector<uint8_t>& datagram, const UdpEndpoint& from, wire::Message& out) const
{
    if (std::find(targets_.begin(), targets_.end(), from) == targets_.end())
        return false;
    WireHeader header;
    if (WireHeader::decode(datagram.data(), datagram.size(), header) != WireHeader::Parse::Ok)
        return false;
    if (header.length != datagram.size() - WireHeader::kSize || header.type != wire::responseOf(type_)
        || header.requestId != requestId_)
        return false;
    out.header = header;
    out.payload.assign(datagram.begin() + WireHeader::kSize, datagram.end());
    return true;
}

bool DiscoveryExchange::next(wire::Message& answer, Clock::time_point deadline)
{
    for (;;) {
        const int waitMs = millisecondsUntil(deadline);
        if (waitMs == 0)
            return false;
        UdpEndpoint from;
        switch (socket_.receive(buffer_, kMaxDatagram, from, waitMs)) {
        case UdpSocket::Read::Datagram:
            if (acceptable(buffer_, from, answer))
                return true;
            break;
        case UdpSocket::Read::Oversized:
        case UdpSocket::Read::Timeout:
            break;
        case UdpSocket::Read::Failed:
            return false;
        }
    }
}

} // namespace cmatrix::sdk
