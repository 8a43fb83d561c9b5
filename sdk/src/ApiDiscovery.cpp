// Discovery and set-up of decoders over UDP, to the configured loopback targets.

#include "DiscoveryExchange.h"
#include "DiscoveryRound.h"
#include "DiscoveryTargets.h"
#include "Messages.h"

#include <cstring>
#include <new>

using namespace cmatrix::sdk;
using namespace cmatrix::wire;

namespace {

// Screen identification has no timeout argument; a decoder on loopback answers in
// well under this.
constexpr int kDisplayScreenTimeoutMs = 2000;

template <class Fn> int guarded(Fn&& fn) noexcept
{
    try {
        return fn();
    } catch (const std::bad_alloc&) {
        return CMATRIX_ERR_NO_MEMORY;
    } catch (...) {
        return CMATRIX_ERR_FAILED;
    }
}

// A fixed-size text field of a caller's record; false when it has no terminator.
template <size_t N> bool fieldText(const char (&field)[N], std::string& out)
{
    const void* end = std::memchr(field, '\0', N);
    if (!end)
        return false;
    out.assign(field, static_cast<const char*>(end));
    return true;
}

template <size_t N> void terminate(char (&field)[N])
{
    field[N - 1] = '\0';
}

// A decoder's record is read as C strings by the caller: every text ends in its field.
void terminateTexts(DeviceNetworkCfg_t& c)
{
    terminate(c.devId);
    terminate(c.mac);
    terminate(c.model);
    terminate(c.ipv4);
    terminate(c.mask);
    terminate(c.gateway);
    terminate(c.ipv6);
    terminate(c.gatewayV6);
    terminate(c.dns);
    terminate(c.dns2);
}

// A device id as the decoders use them: non-empty and fitting DeviceInfo_t.devId.
bool validDeviceId(const char* devId)
{
    return devId && *devId && std::strlen(devId) < sizeof(DeviceInfo_t::devId);
}

} // namespace

extern "C" {

int Discovery_SetTargets(const char* targets)
{
    return guarded([&] { return DiscoveryTargets::instance().set(targets); });
}

int Discovery_Start(int waitCentis, int probes, Discovery_SearchCallback callback, void* user)
{
    return guarded([&] { return DiscoveryRound::start(waitCentis, probes, callback, user); });
}

int Discovery_GetNetworkBC(const char* devId, DeviceNetworkCfg_t* cfg, int timeoutMs)
{
    return guarded([&] {
        if (!validDeviceId(devId) || !cfg || timeoutMs <= 0)
            return CMATRIX_ERR_INVALID_PARAM;
        NetworkRecord answer;
        const int rc = DiscoveryExchange::call(MessageType::GetNetwork, DeviceIdRequest { devId }, answer, timeoutMs,
            [devId](const NetworkRecord& r) { return std::strncmp(r.cfg.devId, devId, sizeof r.cfg.devId) == 0; });
        if (rc == CMATRIX_OK) {
            terminateTexts(answer.cfg);
            *cfg = answer.cfg;
        }
        return rc;
    });
}

int Discovery_SetupNetworkBC(
    const DeviceNetworkCfg_t* cfg, const char* devId, const char* user, const char* password, int timeoutMs)
{
    return guarded([&] {
        if (!cfg || !validDeviceId(devId) || !user || !password || timeoutMs <= 0)
            return CMATRIX_ERR_INVALID_PARAM;
        const SetupNetworkRequest request { devId, user, password, *cfg };
        Empty answer;
        return DiscoveryExchange::call(
            MessageType::SetupNetwork, request, answer, timeoutMs, [](const Empty&) { return true; });
    });
}

int Discovery_ActivateDevice(const DeviceInfo_t* device, int timeoutMs)
{
    return guarded([&] {
        ActivateRequest request;
        if (!device || timeoutMs <= 0 || !fieldText(device->devId, request.devId) || !fieldText(device->ip, request.ip)
            || !fieldText(device->userName, request.user) || !fieldText(device->password, request.password))
            return CMATRIX_ERR_INVALID_PARAM;
        if (request.devId.empty() && request.ip.empty())
            return CMATRIX_ERR_INVALID_PARAM;
        if (request.user.empty())
            request.user = "admin"; // the only account a factory-new unit has
        Empty answer;
        return DiscoveryExchange::call(
            MessageType::Activate, request, answer, timeoutMs, [](const Empty&) { return true; });
    });
}

int Discovery_DisplayScreen(const DeviceInfo_t* device, int location, int seconds)
{
    return guarded([&] {
        DisplayScreenRequest request;
        request.location = location;
        request.seconds = seconds;
        if (!device || seconds < 0 || !fieldText(device->ip, request.ip) || request.ip.empty()
            || !fieldText(device->userName, request.user) || !fieldText(device->password, request.password))
            return CMATRIX_ERR_INVALID_PARAM;
        Empty answer;
        return DiscoveryExchange::call(
            MessageType::DisplayScreen, request, answer, kDisplayScreenTimeoutMs, [](const Empty&) { return true; });
    });
}

} // extern "C"
