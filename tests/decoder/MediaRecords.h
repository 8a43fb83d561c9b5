#pragma once

#include "FrameSamples.h"
#include "WireBuilders.h"

#include "CMatrixSDK.h"

#include <vector>

// Media through the real SDK into virtual decoders: the grid laid out, a frame shown.
namespace mediarecords {

using kvmstest::window;

// Grid, windows and their divisions, set through the SDK.
bool layOut(
    CMHANDLE handle, int cols, int rows, const std::vector<MatrixWindow_t>& windows, const std::vector<int>& divisions);
int display(CMHANDLE handle, int windowId, int sub, const FrameSamples::Bytes& frame);

} // namespace mediarecords
