#pragma once

#include "LoopRun.h"
#include "Window.h"

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace vdec {

// A stored picture of the whole wall: every window as it was, and the loops that
// were turning in them.
struct Scene {
    uint32_t id = 0;
    std::string name; // UTF-8
    std::vector<Window> windows; // in creation order
    std::map<int32_t, LoopRun> loops; // by window id
};

} // namespace vdec
