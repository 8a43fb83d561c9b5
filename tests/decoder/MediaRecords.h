#pragma once

#include "FrameSamples.h"
#include "WireBuilders.h"

#include "CMatrixSDK.h"

// Media through the real SDK into virtual decoders: the grid laid out, a frame shown.
namespace mediarecords {

using kvmstest::window;

// A 1 x 1 grid under window 1 of `division` sub-windows, set through the SDK.
bool layOut(CMHANDLE handle, int division);
int display(CMHANDLE handle, int windowId, int sub, const FrameSamples::Bytes& frame);

} // namespace mediarecords
