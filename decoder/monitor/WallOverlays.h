#pragma once

#include "CMatrixSDK.h"

#include <optional>

namespace vdec {

// What the wall lays over its windows, as the monitor draws it.
struct WallOverlays {
    std::optional<BannerInfo_t> banner; // set while a banner is shown
    bool identify = false; // screen numbers shown, as while identifying screens
};

} // namespace vdec
