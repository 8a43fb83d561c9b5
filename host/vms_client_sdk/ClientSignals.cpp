#include "ClientSignals.h"

namespace vms_sdk {

ClientSignals::ClientSignals() = default;

ClientSignals* ClientSignals::instance()
{
    // Never destroyed: streams may still report while the process exits.
    static ClientSignals* const hub = new ClientSignals;
    return hub;
}

} // namespace vms_sdk
