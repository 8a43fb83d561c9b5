#pragma once

#include "CMatrixSDK.h"

namespace vdec {
class VirtualDecoder;
}

// One SDK handle logged in to a virtual decoder, destroyed with the test.
class WallSdk {
public:
    WallSdk();
    ~WallSdk();
    WallSdk(const WallSdk&) = delete;
    WallSdk& operator=(const WallSdk&) = delete;

    // Connects (again) as the decoder's admin; the SDK result.
    int connect(const vdec::VirtualDecoder* decoder);
    CMHANDLE handle() const { return handle_; }

private:
    CMHANDLE handle_;
};
