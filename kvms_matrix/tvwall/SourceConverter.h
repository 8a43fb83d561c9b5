#pragma once

#include "CSharedHandle.h"
#include "MatrixDeviceInfo.h"

#include "CMatrixSDK.h"

#include <QSharedPointer>
#include <QString>

namespace kvms_matrix {

class MatrixSdkWorker;

// Picks the worker's conversion for a source by its device type, as binding sources and
// clearing one sub-window both need: 1, 5, 8 cameras; 2 display device; 3, 4 pictures; 6 HDMI
// input; 7 USB file (`usbPath`); 9 RTSP; anything else an empty sub-window.
class SourceConverter {
public:
    struct Target {
        int windowId = -1;
        int subWindowId = -1;
        int windowType = 0;
    };

    static DeviceInfo_t convert(MatrixSdkWorker& worker, const QSharedPointer<CSharedHandle>& handle,
        MatrixDeviceInfo& device, const Target& target, const QString& usbPath);
};

} // namespace kvms_matrix
