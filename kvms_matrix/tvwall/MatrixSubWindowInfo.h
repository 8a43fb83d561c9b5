#pragma once

#include "MatrixDeviceInfo.h"

#include <QMetaType>

namespace kvms_matrix {

// One division of a window and the source bound to it.
struct MatrixSubWindowInfo {
    MatrixSubWindowInfo() { device.deviceType = 0; } // a new sub-window shows nothing

    int subWindowId = -1; // 1-based inside the window
    int subWindowIndex = 0;
    int extraInt = -1;
    int sourceState = 0; // what the interface shows: 1 camera, 2 display, 7/8 picture, 9 stream
    MatrixDeviceInfo device;
};

} // namespace kvms_matrix

Q_DECLARE_METATYPE(kvms_matrix::MatrixSubWindowInfo)
