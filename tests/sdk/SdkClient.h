#pragma once

#include "CMatrixSDK.h"

#include <atomic>
#include <functional>
#include <mutex>

class FakeDecoder;

// One SDK handle for a test: created with a status callback that counts losses,
// destroyed when the test ends.
class SdkClient {
public:
    SdkClient();
    ~SdkClient();
    SdkClient(const SdkClient&) = delete;
    SdkClient& operator=(const SdkClient&) = delete;

    CMHANDLE handle() const { return handle_; }
    int connectTo(const FakeDecoder& decoder, int timeoutMs = 3000);
    int connectTo(const char* ip, unsigned short port, int timeoutMs = 3000);
    void setHeartbeat(int intervalMs, int silenceMs);
    int destroy();

    // Status callbacks that reported a loss of this handle, and any that did not.
    int losses() const { return losses_; }
    int strayCallbacks() const { return stray_; }
    // Runs inside the status callback, on the SDK's thread.
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
