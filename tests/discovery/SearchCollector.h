#pragma once

#include "CMatrixSDK.h"

#include <QString>

#include <mutex>
#include <vector>

// Collects what discovery rounds report through the SDK's callback, which comes on
// an SDK thread. With restarts > 0, the finished callback starts the next round
// itself, as the module does, until that many more rounds have run.
class SearchCollector {
public:
    // Starts a round with this collector as the callback's user data.
    int start(int waitCentis = 20, int probes = 3);
    void restartFromCallback(int rounds, int waitCentis, int probes);

    int finished() const;
    std::vector<DeviceInfo_t> answers() const;
    // Answers from one device id.
    std::vector<DeviceInfo_t> answersFrom(const QString& devId) const;
    // Results of the Discovery_Start calls made from inside the callback.
    std::vector<int> restartResults() const;
    // Calls that came with finished = true and a device, or without either.
    int oddCalls() const;

private:
    static void callback(bool finished, const DeviceInfo_t* device, void* user);

    mutable std::mutex mutex_;
    std::vector<DeviceInfo_t> answers_;
    int finished_ = 0;
    int odd_ = 0;
    int restartsLeft_ = 0;
    int waitCentis_ = 20, probes_ = 3;
    std::vector<int> restartResults_;
};
