#include "SourceConverter.h"

#include "MatrixSdkWorker.h"

namespace kvms_matrix {

DeviceInfo_t SourceConverter::convert(MatrixSdkWorker& worker, const QSharedPointer<CSharedHandle>& handle,
    MatrixDeviceInfo& device, const Target& target, const QString& usbPath)
{
    switch (device.deviceType) {
    case 1:
    case 5:
    case 8:
        return worker.convertRealDevice(&device);
    case 2:
        return worker.convertDisplayDevice(handle, &device, target.windowId, target.subWindowId, target.windowType);
    case 3:
    case 4:
        return worker.convertDisplayPicDevice(handle, &device, target.windowId);
    case 6:
        return worker.convertHdmiDevice(device.streamIndex);
    case 7:
        return worker.convertUsbDevice(usbPath);
    case 9:
        return worker.convertRtspDevice(&device);
    default:
        return worker.convertEmptyDevice(target.windowId, target.subWindowId);
    }
}

} // namespace kvms_matrix
