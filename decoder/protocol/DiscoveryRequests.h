#pragma once

#include "RequestRouter.h"

#include <optional>

namespace vdec {

class DeviceUnit;

// Requests that arrive over UDP: discovery probes, network settings, activation and
// screen identification. There is no session: each request carries the credentials
// it needs. A unit stays silent on requests meant for another one (another device id
// or address), so the first answer a client gets comes from the unit it named.
class DiscoveryRequests {
public:
    struct Result {
        std::optional<Outcome> answer; // none: not for this unit
        bool changed = false; // saved state changed
    };
    static Result handle(RequestContext& context, DeviceUnit& unit, const cmatrix::wire::Message& message);
};

} // namespace vdec
