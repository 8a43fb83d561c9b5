#pragma once

namespace vdec {

class DeviceUnit;
class RequestRouter;

// Firmware upgrade, factory reset, output resolution, password change, configuration
// export and import, and the logs.
class MaintenanceRequests {
public:
    static void registerIn(RequestRouter& router, DeviceUnit& unit);
};

} // namespace vdec
