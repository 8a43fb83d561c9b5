#include "DiscoveryTargets.h"

#include "CMatrixSDK.h"

#include <algorithm>
#include <arpa/inet.h>
#include <cctype>
#include <cstdlib>
#include <netinet/in.h>
#include <strings.h>

namespace cmatrix::sdk {

namespace {

std::string trimmed(const std::string& text)
{
    const size_t first = text.find_first_not_of(" \t");
    if (first == std::string::npos)
        return {};
    const size_t last = text.find_last_not_of(" \t");
    return text.substr(first, last - first + 1);
}

bool parsePort(const std::string& text, uint16_t& port)
{
    if (text.empty() || text.size() > 5)
        return false;
    unsigned value = 0;
    for (const char c : text) {
        if (!std::isdigit(static_cast<unsigned char>(c)))
            return false;
        value = value * 10 + unsigned(c - '0');
    }
    if (value == 0 || value > 65535)
        return false;
    port = uint16_t(value);
    return true;
}

bool parseLoopback(const std::string& host, uint32_t& address)
{
    if (::strcasecmp(host.c_str(), "localhost") == 0) {
        address = INADDR_LOOPBACK;
        return true;
    }
    in_addr a {};
    // inet_pton takes only the plain dotted quad, so "127.1" or "0x7f.0.0.1" are refused.
    if (::inet_pton(AF_INET, host.c_str(), &a) != 1)
        return false;
    address = ntohl(a.s_addr);
    return (address >> 24) == 127;
}

bool parseTarget(const std::string& entry, UdpEndpoint& out)
{
    const size_t colon = entry.rfind(':');
    if (colon == std::string::npos)
        return false;
    return parseLoopback(entry.substr(0, colon), out.address) && parsePort(entry.substr(colon + 1), out.port);
}

} // namespace

DiscoveryTargets& DiscoveryTargets::instance()
{
    static DiscoveryTargets targets;
    return targets;
}

int DiscoveryTargets::parse(const std::string& text, std::vector<UdpEndpoint>& out)
{
    std::vector<UdpEndpoint> list;
    size_t start = 0;
    for (;;) {
        const size_t comma = text.find(',', start);
        UdpEndpoint target;
        if (!parseTarget(trimmed(text.substr(start, comma - start)), target))
            return CMATRIX_ERR_INVALID_PARAM;
        if (std::find(list.begin(), list.end(), target) == list.end())
            list.push_back(target);
        if (list.size() > kMaxTargets)
            return CMATRIX_ERR_INVALID_PARAM;
        if (comma == std::string::npos)
            break;
        start = comma + 1;
    }
    out = std::move(list);
    return CMATRIX_OK;
}

void DiscoveryTargets::loadDefault()
{
    const char* configured = std::getenv(kEnvironment);
    const std::string text = configured && *configured ? configured : kDefault;
    // A bad variable leaves no targets rather than guessing: rounds still end, and
    // requests find no device.
    if (parse(text, targets_) != CMATRIX_OK)
        targets_.clear();
    loaded_ = true;
}

int DiscoveryTargets::set(const char* text)
{
    std::lock_guard<std::mutex> lock(mutex_);
    if (!text) {
        loadDefault();
        return CMATRIX_OK;
    }
    std::vector<UdpEndpoint> list;
    if (const int rc = parse(text, list); rc != CMATRIX_OK)
        return rc;
    targets_ = std::move(list);
    loaded_ = true;
    return CMATRIX_OK;
}

std::vector<UdpEndpoint> DiscoveryTargets::current()
{
    std::lock_guard<std::mutex> lock(mutex_);
    if (!loaded_)
        loadDefault();
    return targets_;
}

} // namespace cmatrix::sdk
