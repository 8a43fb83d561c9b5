#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace cmatrix::sdk {

// An IPv4 address and port, both in host order.
struct UdpEndpoint {
    uint32_t address = 0;
    uint16_t port = 0;

    bool operator==(const UdpEndpoint& other) const { return address == other.address && port == other.port; }
    bool operator!=(const UdpEndpoint& other) const { return !(*this == other); }
    std::string text() const;
};

// A datagram socket bound to an ephemeral port on 127.0.0.1: discovery only ever talks
// to loopback targets, so nothing it sends can leave the machine, and nothing from
// outside can reach it.
class UdpSocket {
public:
    UdpSocket();
    ~UdpSocket();
    UdpSocket(const UdpSocket&) = delete;
    UdpSocket& operator=(const UdpSocket&) = delete;

    bool isValid() const { return fd_ >= 0; }
    UdpEndpoint local() const;

    // A CMATRIX code; a datagram the kernel would not take is CMATRIX_ERR_FAILED.
    int sendTo(const UdpEndpoint& to, const std::vector<uint8_t>& datagram) const;

    enum class Read { Datagram, Oversized, Timeout, Failed };
    // Waits up to timeoutMs for one datagram. One longer than `limit` bytes is read
    // and thrown away (Oversized), so a flood of large ones costs no memory.
    Read receive(std::vector<uint8_t>& datagram, size_t limit, UdpEndpoint& from, int timeoutMs) const;

private:
    int fd_ = -1;
};

} // namespace cmatrix::sdk
