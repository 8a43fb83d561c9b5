#pragma once

#include "CMatrixSDK.h"

#include <atomic>
#include <functional>
#include <mutex>

namespace vdec {
class VirtualDecoder;
}

namespace kvmstest {

// One SDK handle for a test, destroyed with it. Its status callback counts the losses
// reported for this handle (and any callback that is not one), and may run an action.
class SdkSession {
public:
    SdkSession();
    ~SdkSession();
    SdkSession(const SdkSession&) = delete;
    SdkSession& operator=(const SdkSession&) = delete;

    CMHANDLE handle() const { return handle_; }
    operator CMHANDLE() const { return handle_; }

    // Logs in as the decoder's admin (with its password unless one is given); once in,
    // calls may take scaled(5000).
    int connect(const vdec::VirtualDecoder* decoder, const char* password = nullptr);
    int connect(const char* ip, unsigned short port, const char* user, const char* password, int timeoutMs);
    int destroy();

    int losses() const { return losses_; }
    int strayCallbacks() const { return stray_; }
    // Runs inside the status callback, on the SDK's thread, after a loss is counted.
    void onLoss(std::function<void()> action);

private:
    static void statusCallback(CMHANDLE handle, int event, void* user);

    CMHANDLE handle_ = nullptr;
    const CMHANDLE created_;
    std::atomic<int> losses_ { 0 };
    std::atomic<int> stray_ { 0 };
    std::mutex mutex_;
    std::function<void()> onLoss_;
};

} // namespace kvmstest
