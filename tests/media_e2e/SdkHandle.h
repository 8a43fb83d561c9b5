#pragma once

#include "CMatrixSDK.h"

#include <atomic>

namespace vdec {
class VirtualDecoder;
}

// One SDK handle for a test, logged in to a virtual decoder; counts the losses its
// status callback reports. Destroyed with the test.
class SdkHandle {
public:
    SdkHandle();
    ~SdkHandle();
    SdkHandle(const SdkHandle&) = delete;
    SdkHandle& operator=(const SdkHandle&) = delete;

    CMHANDLE get() const { return handle_; }
    operator CMHANDLE() const { return handle_; }
    int connect(const vdec::VirtualDecoder* decoder);
    int losses() const { return losses_; }
    void destroy();

private:
    static void statusCallback(CMHANDLE handle, int event, void* user);

    CMHANDLE handle_ = nullptr;
    std::atomic<int> losses_ { 0 };
};
