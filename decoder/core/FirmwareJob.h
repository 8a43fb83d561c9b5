#pragma once

#include "CMatrixSDK.h"

#include <chrono>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <thread>

namespace vdec {

class Outbox;

// A firmware upgrade under way, on a thread of its own: reports progress 0, 10, ...,
// 100 to the connection that uploaded the image, one step every stepMs, then installs
// the version (through `install`) and reports it finished. The progress goes nowhere
// once that connection has closed; the upgrade itself still completes.
class FirmwareJob {
public:
    using Install = std::function<void(const std::string& version)>;

    FirmwareJob() = default;
    ~FirmwareJob(); // stops
    FirmwareJob(const FirmwareJob&) = delete;
    FirmwareJob& operator=(const FirmwareJob&) = delete;

    // False when an upgrade is already under way.
    bool start(const std::string& version, std::shared_ptr<Outbox> outbox, int stepMs, Install install);
    bool running() const;
    // Abandons an upgrade under way (the unit is switched off) and waits for the thread.
    void stop();

    // The pushed message that carries one progress report.
    static std::vector<uint8_t> progressMessage(const UpdateStatus_t& status);

private:
    void run(std::string version, std::shared_ptr<Outbox> outbox, std::chrono::milliseconds step, Install install);
    bool pause(std::chrono::milliseconds step);

    mutable std::mutex mutex_;
    std::condition_variable wake_;
    bool running_ = false;
    bool stopping_ = false;
    std::thread thread_;
};

} // namespace vdec
