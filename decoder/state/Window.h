#pragma once

#include "CMatrixSDK.h"

#include <cstdint>
#include <map>

namespace vdec {

// One window of the wall as the decoder keeps it.
struct Window {
    uint32_t id = 0;
    bool floating = false;
    int32_t x = 0, y = 0, w = 0, h = 0;
    int32_t layer = 0; // floating windows stack from 1 upwards; others stay at 0
    int32_t division = 1;
    int32_t fullScreenSub = 0; // sub-window shown over the whole window, 0: none
    int32_t sourceKind = 0; // 1 while displaying in turn
    int32_t turnIndex = 0;
    std::map<int32_t, DeviceInfo_t> sources; // by 1-based sub-window, bytes as received

    MatrixWindow_t record() const
    {
        MatrixWindow_t r {};
        r.id = id;
        r.floating = floating ? 1 : 0;
        r.x = x;
        r.y = y;
        r.w = w;
        r.h = h;
        return r;
    }
};

} // namespace vdec
