#pragma once

#include "UdpSocket.h"

#include <mutex>
#include <string>
#include <vector>

namespace cmatrix::sdk {

// Where discovery requests go. Only loopback targets are taken: this SDK talks to
// decoders on this machine, and refusing anything else keeps a typo from spraying
// probes over a real network.
class DiscoveryTargets {
public:
    static constexpr size_t kMaxTargets = 64;
    static constexpr const char* kDefault = "127.0.0.1:37020";
    static constexpr const char* kEnvironment = "CMATRIX_DISCOVERY_TARGETS";

    static DiscoveryTargets& instance();

    // Parses "host:port[,host:port...]" where host is 127.x.y.z or "localhost";
    // duplicates are dropped. CMATRIX_OK, or CMATRIX_ERR_INVALID_PARAM for the whole
    // list when any entry is unusable.
    static int parse(const std::string& text, std::vector<UdpEndpoint>& out);

    // Replaces the list; null goes back to the default. Refused lists change nothing.
    int set(const char* text);
    std::vector<UdpEndpoint> current();

private:
    DiscoveryTargets() = default;
    void loadDefault();

    std::mutex mutex_;
    bool loaded_ = false;
    std::vector<UdpEndpoint> targets_;
};

} // namespace cmatrix::sdk
