#pragma once

#include "CMatrixSDK.h"

#include <cstdint>

namespace kvmstest {

// A window record as the SDK takes it, zeroed apart from what is given.
MatrixWindow_t window(uint32_t id, int32_t x, int32_t y, int32_t w, int32_t h, bool floating = false);

} // namespace kvmstest
