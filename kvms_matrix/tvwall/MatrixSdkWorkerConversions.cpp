// MatrixSdkWorker: each kind of source turned into the SDK's device descriptor. Descriptors start
// zeroed; every text is cut to its field, never past it.
#include "MatrixSdkWorker.h"

#include "SdkCallLog.h"
#include "SdkText.h"
#include "SourceRecords.h"

namespace kvms_matrix {

namespace {

constexpr int kUrlBufferSize = 512;

void copyLogin(DeviceInfo_t& d, const MatrixDeviceInfo& device)
{
    SdkText::copy(d.userName, sizeof d.userName, device.userName);
    SdkText::copy(d.password, sizeof d.password, device.password);
}

void copyUrls(DeviceInfo_t& d, const QString& mainUrl, const QString& subUrl)
{
    SdkText::copy(d.mainUrl, sizeof d.mainUrl, mainUrl);
    SdkText::copy(d.subUrl, sizeof d.subUrl, subUrl);
}

} // namespace

DeviceInfo_t MatrixSdkWorker::convertRealDevice(MatrixDeviceInfo* device)
{
    DeviceInfo_t d {};
    if (!device)
        return d;
    SourceRecords::copyDeviceId(d, device->deviceId);
    SdkText::copy(d.name, sizeof d.name, device->deviceName);
    switch (device->deviceType) {
    case 8: {
        const QString service
            = QStringLiteral("%1/onvif/device_service")
                  .arg(QStringLiteral("http://") + device->ip + QLatin1Char(':') + QString::number(device->port));
        d.protocol = SourceRecords::Onvif;
        copyUrls(d, service, service);
        d.port = device->port;
        break;
    }
    case 1:
        d.protocol = SourceRecords::hasLetterPrefix(device->deviceId) ? SourceRecords::LetterCamera
                                                                      : SourceRecords::OtherCamera;
        d.port = device->port;
        break;
    case 5:
        d.protocol = SourceRecords::Rtsp;
        copyUrls(d, QStringLiteral("rtsp://") + device->ip + QStringLiteral("/0"),
            QStringLiteral("rtsp://") + device->ip + QStringLiteral("/1"));
        break;
    default:
        break;
    }
    SdkText::copy(d.ip, sizeof d.ip, device->ip);
    copyLogin(d, *device);
    d.channel = device->channel;
    d.mode = 2;
    d.stream = SourceRecords::cameraStream(device->streamIndex);
    return d;
}

DeviceInfo_t MatrixSdkWorker::convertEmptyDevice(int windowId, int subWindowId)
{
    DeviceInfo_t d {};
    SourceRecords::copyDeviceId(d, QStringLiteral("emp_") + QString::number(windowId));
    d.protocol = SourceRecords::Empty;
    d.channel = subWindowId;
    d.stream = -1;
    return d;
}

DeviceInfo_t MatrixSdkWorker::convertDisplayDevice(
    QSharedPointer<CSharedHandle> handle, MatrixDeviceInfo* device, int windowId, int subWindowId, int windowType)
{
    if (!device)
        return convertEmptyDevice(windowId, subWindowId);
    DeviceInfo_t d {};
    SourceRecords::copyDeviceId(d, device->deviceId);
    SdkText::copy(d.name, sizeof d.name, device->displayName);
    d.mode = 2;
    if (device->channel >= 1 && hasThisRecordDev(handle, device->deviceId)) {
        // The decoder already pulls this source's stream: point at it again.
        d.protocol = SourceRecords::Distributed;
        copyUrls(d, device->mainUrl, device->subUrl);
        copyLogin(d, *device);
        d.stream = 0;
        d.channel = device->channel;
        return d;
    }

    const int channel = getOnlyChannelId(handle);
    char url[kUrlBufferSize] = {};
    CMMDHANDLE media = nullptr;
    const CMHANDLE sdk = handle ? handle->handle() : nullptr;
    if (sdk) {
        const QByteArray source = SourceRecords::deviceIdBytes(device->deviceId);
        SdkCallLog::Timer timer;
        media = CMatrix_StartMediaDistribute(sdk, source.constData(), channel, url, kUrlBufferSize);
        SdkCallLog::write(SdkCallLog::kTimed,
            { QStringLiteral("CMatrix_StartMediaDistribute"), SdkCallLog::pointer(sdk),
                media ? QStringLiteral("0") : QStringLiteral("-1"), SdkCallLog::now(), timer.elapsed() });
    }
    if (media) {
        addMdHandle(windowId, channel, MediaDistributeEntry { media, windowId, subWindowId, windowType, sdk });
        const QString address = SdkText::read(url, sizeof url);
        copyUrls(d, address, address);
        SdkText::copy(d.userName, sizeof d.userName, QStringLiteral("admin"));
        d.protocol = SourceRecords::Distributed;
        d.stream = 0;
        device->mainUrl = address;
        device->subUrl = address;
    } else {
        d.protocol = SourceRecords::Local;
        d.stream = device->streamIndex;
    }
    d.channel = channel;
    device->channel = channel;
    return d;
}

DeviceInfo_t MatrixSdkWorker::convertDisplayPicDevice(
    QSharedPointer<CSharedHandle> handle, MatrixDeviceInfo* device, int windowId)
{
    if (!device)
        return convertEmptyDevice(windowId, 0);
    DeviceInfo_t d {};
    d.protocol = SourceRecords::Local;
    SourceRecords::copyDeviceId(d, device->deviceId);
    if (device->channel < 1)
        device->channel = getOnlyChannelId(handle);
    d.channel = device->channel;
    SdkText::copy(d.name, sizeof d.name, device->displayName);
    d.mode = 2;
    d.stream = 0;
    return d;
}

DeviceInfo_t MatrixSdkWorker::convertHdmiDevice(int input)
{
    DeviceInfo_t d {};
    SourceRecords::copyDeviceId(d, QStringLiteral("hdmiinput"));
    d.protocol = SourceRecords::LetterCamera;
    d.channel = 0;
    d.stream = input;
    return d;
}

DeviceInfo_t MatrixSdkWorker::convertUsbDevice(QString path)
{
    DeviceInfo_t d {};
    SourceRecords::copyDeviceId(d, QStringLiteral("usbfileplay"));
    d.protocol = SourceRecords::LetterCamera;
    d.channel = 0;
    SdkText::copy(d.mainUrl, sizeof d.mainUrl, path);
    return d;
}

DeviceInfo_t MatrixSdkWorker::convertRtspDevice(MatrixDeviceInfo* device)
{
    DeviceInfo_t d {};
    if (!device)
        return d;
    d.protocol = SourceRecords::Rtsp;
    SourceRecords::copyDeviceId(d, device->deviceId);
    SdkText::copy(d.name, sizeof d.name, device->deviceName);
    d.stream = device->streamIndex;
    copyUrls(d, device->mainUrl, device->subUrl);
    copyLogin(d, *device);
    return d;
}

} // namespace kvms_matrix
