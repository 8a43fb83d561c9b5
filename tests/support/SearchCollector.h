#pragma once

#include "CMatrixSDK.h"

#include <QString>

#include <mutex>
#include <vector>

namespace kvmstest {

// Collects what discovery rounds report through the SDK's callback, which comes on
// an SDK thread.
class SearchCollector {
public:
    // Starts a round with this collector as the callback's user data.
    int start(int waitCentis = 20, int probes = 3);

    int finished() const;
    std::vector<DeviceInfo_t> answers() const;
    // Answers from one device id.
    std::vector<DeviceInfo_t> answersFrom(const QString& devId) const;
    // Calls that came with finished = true and a device, or without either.
    int oddCalls() const;

private:
    static void callback(bool finished, const DeviceInfo_t* device, void* user);

    mutable std::mutex mutex_;
    std::vector<DeviceInfo_t> answers_;
    int finished_ = 0;
    int odd_ = 0;
};

} // namespace kvmstest
