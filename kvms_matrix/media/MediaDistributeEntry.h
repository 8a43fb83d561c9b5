#pragma once

namespace kvms_matrix {

// One media distribution that feeds a window, as the worker's registry keeps it under the key
// (window id, channel).
struct MediaDistributeEntry {
    void* mdHandle = nullptr; // the SDK's distribution handle
    int windowId = -1;
    int subWindowId = -1;
    int windowType = -1;
    void* connection = nullptr; // the SDK connection it was started on: it goes with that connection
};

} // namespace kvms_matrix
