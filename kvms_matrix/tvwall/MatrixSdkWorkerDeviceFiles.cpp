// MatrixSdkWorker: the decoder's own inputs and outputs: HDMI input and USB files played in a
// window, RTSP streams by URL, the file list, screen colour, audio output and HDMI status.
#include "MatrixSdkWorker.h"

#include "SdkArray.h"
#include "SdkCallLog.h"
#include "SdkText.h"
#include "SourceRecords.h"
#include "TaskKeys.h"
#include "WallHandle.h"

#include <QFileInfo>

#include <cstring>
#include <memory>

namespace kvms_matrix {

namespace {

// The ids the decoder gives the sources it plays by itself.
const QString kHdmiDeviceId = QStringLiteral("hdmiinput");
const QString kUsbDeviceId = QStringLiteral("usbfileplay");
const QString kStreamDeviceId = QStringLiteral("rtspstream");

// A formatted USB stick carries this folder; it is never something to play.
const QString kSystemFolder = QStringLiteral("System Volume Information");

const char kAudioOpen[] = "open";
const char kAudioClose[] = "close";

struct Target {
    MatrixWindowInfo window;
    int windowId = -1;
    int subWindowId = -1;
};

// The window a task names: its heap record (deleted here) or, without one, just the ids.
Target targetOf(const WorkerTaskParam& task)
{
    const std::unique_ptr<MatrixWindowInfo> record(static_cast<MatrixWindowInfo*>(task.userData));
    Target target;
    if (record)
        target.window = *record;
    target.windowId = task.params.value(TaskKeys::kWindowId, target.window.windowId).toInt();
    target.subWindowId = task.params.value(TaskKeys::kSubWindowId, -1).toInt();
    if (!record)
        target.window.windowId = target.windowId;
    return target;
}

WindowSlot_t slotOf(const Target& target)
{
    return WindowSlot_t { target.windowId, target.subWindowId };
}

// After the decoder took a source, the window handed back shows it in that sub-window.
void showSource(Target& target, const MatrixDeviceInfo& device)
{
    for (MatrixSubWindowInfo& sub : target.window.subWindows) {
        if (sub.subWindowId == target.subWindowId) {
            sub.device = device;
            sub.sourceState = SourceRecords::sourceStateOf(device.deviceType);
            return;
        }
    }
}

// Takes the source with `deviceId` out of the target's window. The descriptor carries the device
// id alone (sub-window 0): the decoder finds the sub-window that shows it.
int removeSource(CMHANDLE sdk, const Target& target, const QString& deviceId)
{
    DeviceInfo_t descriptor;
    std::memset(&descriptor, 0, sizeof descriptor);
    SdkText::copy(descriptor.devId, sizeof descriptor.devId, deviceId);
    const int ret = CMatrix_WindowDeviceDel(sdk, target.windowId, &descriptor, 1);
    SdkCallLog::call("CMatrix_WindowDeviceDel", ret);
    return ret;
}

// The connectors with a cable in, as a bit mask (bit i for connector i).
int connectedMask(const int32_t* connected, int count, int capacity)
{
    int mask = 0;
    for (int i = 0; i < qBound(0, count, capacity); ++i) {
        if (connected[i])
            mask |= 1 << i;
    }
    return mask;
}

} // namespace

bool MatrixSdkWorker::getAudioStatusGet(
    const int& windowId, const int& subWindowId, QSharedPointer<CSharedHandle> handle)
{
    if (!WallHandle::usable(*this, handle))
        return false;
    DeviceAudioInfo_t audio;
    std::memset(&audio, 0, sizeof audio);
    const int ret = CMatrix_GetAudioStatus(handle->handle(), &audio);
    SdkCallLog::call("CMatrix_GetAudioStatus", ret);
    if (ret != CMATRIX_OK)
        return false;
    if (SdkText::read(audio.state, sizeof audio.state) == QLatin1String(kAudioClose))
        return false;
    // The decoder plays the audio of one sub-window at a time.
    return audio.windowId == windowId && audio.subWindowId == subWindowId;
}

void MatrixSdkWorker::doSetAudioOutputEnable(const WorkerTaskParam& task)
{
    if (!WallHandle::usable(*this, task.handle)) {
        emit signalSetAudioOutputEnableResult(CMATRIX_ERR_FAILED);
        return;
    }
    DeviceAudioInfo_t audio;
    std::memset(&audio, 0, sizeof audio);
    const bool enable = task.params.value(TaskKeys::kEnable).toBool();
    SdkText::copy(audio.state, sizeof audio.state, QLatin1String(enable ? kAudioOpen : kAudioClose));
    audio.windowId = task.params.value(TaskKeys::kWindowId).toInt();
    audio.subWindowId = task.params.value(TaskKeys::kSubWindowId).toInt();
    audio.volume = task.params.value(TaskKeys::kVolume).toInt();
    const int ret = CMatrix_SetAudioStatus(task.handle->handle(), &audio);
    SdkCallLog::call("CMatrix_SetAudioStatus", ret);
    emit signalSetAudioOutputEnableResult(ret);
}

void MatrixSdkWorker::doGetAudioOutputEnable(const WorkerTaskParam& task)
{
    DeviceAudioInfo_t audio;
    std::memset(&audio, 0, sizeof audio);
    int ret = CMATRIX_ERR_FAILED;
    if (WallHandle::usable(*this, task.handle)) {
        ret = CMatrix_GetAudioStatus(task.handle->handle(), &audio);
        SdkCallLog::call("CMatrix_GetAudioStatus", ret);
    }
    if (ret != CMATRIX_OK) {
        // Nothing known reads as closed, so no form shows audio playing.
        std::memset(&audio, 0, sizeof audio);
        SdkText::copy(audio.state, sizeof audio.state, QLatin1String(kAudioClose));
    }
    emit signalGetAudioOutputEnableResult(audio);
}

void MatrixSdkWorker::doRefreshHdmiDevStatus(const WorkerTaskParam& task)
{
    HdmiStatus_t status;
    std::memset(&status, 0, sizeof status);
    int ret = CMATRIX_ERR_FAILED;
    if (WallHandle::usable(*this, task.handle)) {
        ret = CMatrix_GetHdmiIn_OutStatus(task.handle->handle(), &status);
        SdkCallLog::call("CMatrix_GetHdmiIn_OutStatus", ret);
    }
    if (ret != CMATRIX_OK) {
        // Both counts carry the failure; no connector is reported connected.
        emit signalDevStatusResult(ret, 0, ret, 0);
        return;
    }
    emit signalDevStatusResult(status.inputCount, connectedMask(status.inputConnected, status.inputCount, 4),
        status.outputCount, connectedMask(status.outputConnected, status.outputCount, 16));
}

void MatrixSdkWorker::doGetDevPlayFileList(const WorkerTaskParam& task)
{
    QList<DevPlayFile_t> files;
    if (WallHandle::usable(*this, task.handle)) {
        const CMHANDLE sdk = task.handle->handle();
        SdkArray<DevPlayFile_t> records(sdk);
        const int count = CMatrix_GetFileList(sdk, records.out());
        SdkCallLog::call("CMatrix_GetFileList", count);
        for (int i = 0; i < count && records.get(); ++i) {
            if (SdkText::read(records[i].fileName, sizeof records[i].fileName) == kSystemFolder)
                continue;
            files.append(records[i]);
        }
    }
    emit signalGetDevPlayFileResult(files, task.params.value(TaskKeys::kWindowId).toInt(),
        task.params.value(TaskKeys::kSubWindowId).toInt(), task.params.value(TaskKeys::kWindowType).toInt());
}

void MatrixSdkWorker::doStartPlayDevFile(const WorkerTaskParam& task)
{
    Target target = targetOf(task);
    int ret = CMATRIX_ERR_FAILED;
    if (WallHandle::usable(*this, task.handle)) {
        // Cut as the decoder's source record keeps it.
        char path[sizeof(DeviceInfo_t::mainUrl)];
        SdkText::copy(path, sizeof path, task.params.value(TaskKeys::kFilePath).toString());
        const WindowSlot_t slot = slotOf(target);
        ret = CMatrix_WindowPlayFile(task.handle->handle(), &slot, path);
        SdkCallLog::call("CMatrix_WindowPlayFile", ret);
        if (ret == CMATRIX_OK) {
            MatrixDeviceInfo device;
            device.deviceType = 7;
            device.deviceId = kUsbDeviceId;
            device.mainUrl = SdkText::read(path, sizeof path);
            device.deviceName = QFileInfo(device.mainUrl).fileName();
            device.subWindowNumber = target.subWindowId;
            showSource(target, device);
        }
    }
    emit signalSetWindowSignalSourceResult(ret, target.window, target.subWindowId, false);
}

void MatrixSdkWorker::doStopPlayDevFile(const WorkerTaskParam& task)
{
    const Target target = targetOf(task);
    int ret = CMATRIX_ERR_FAILED;
    if (WallHandle::usable(*this, task.handle)) {
        const QString deviceId = task.params.value(TaskKeys::kDevId).toString();
        ret = removeSource(task.handle->handle(), target, deviceId.isEmpty() ? kUsbDeviceId : deviceId);
    }
    emit signalClearWindowResult(ret, target.windowId, target.subWindowId, target.window.windowType);
}

void MatrixSdkWorker::doStopPlayHdmiVideo(const WorkerTaskParam& task)
{
    const Target target = targetOf(task);
    int ret = CMATRIX_ERR_FAILED;
    if (WallHandle::usable(*this, task.handle)) {
        const QString deviceId = task.params.value(TaskKeys::kDevId).toString();
        ret = removeSource(task.handle->handle(), target, deviceId.isEmpty() ? kHdmiDeviceId : deviceId);
    }
    emit signalClearWindowResult(ret, target.windowId, target.subWindowId, target.window.windowType);
}

void MatrixSdkWorker::doStartPlayHdmiVideo(const WorkerTaskParam& task)
{
    Target target = targetOf(task);
    // Always the unit's first input, whatever the caller names: that is the input operators wire
    // the workstation to.
    const int input = 0;
    int ret = CMATRIX_ERR_FAILED;
    if (WallHandle::usable(*this, task.handle)) {
        const WindowSlot_t slot = slotOf(target);
        ret = CMatrix_WindowPlayHdmiIn(task.handle->handle(), &slot, input);
        SdkCallLog::call("CMatrix_WindowPlayHdmiIn", ret);
        if (ret == CMATRIX_OK) {
            MatrixDeviceInfo device;
            device.deviceType = 6;
            device.deviceId = kHdmiDeviceId;
            device.streamIndex = input;
            device.subWindowNumber = target.subWindowId;
            showSource(target, device);
        }
    }
    emit signalSetWindowSignalSourceResult(ret, target.window, target.subWindowId, false);
}

void MatrixSdkWorker::doStartPlayStreamVideo(const WorkerTaskParam& task)
{
    Target target = targetOf(task);
    int ret = CMATRIX_ERR_FAILED;
    if (WallHandle::usable(*this, task.handle)) {
        MatrixDeviceInfo device;
        device.deviceType = 9;
        device.deviceId = kStreamDeviceId;
        device.mainUrl = task.params.value(TaskKeys::kFilePath).toString();
        device.subUrl = device.mainUrl;
        device.deviceName = device.mainUrl;
        device.streamIndex = 0;
        device.subWindowNumber = target.subWindowId;
        DeviceInfo_t descriptor = convertRtspDevice(&device);
        descriptor.subWindow = target.subWindowId;
        ret = CMatrix_WindowDeviceAdd(task.handle->handle(), target.windowId, &descriptor, 1, false);
        SdkCallLog::call("CMatrix_WindowDeviceAdd", ret);
        if (ret == CMATRIX_OK)
            showSource(target, device);
    }
    emit signalSetWindowSignalSourceResult(ret, target.window, target.subWindowId, false);
}

void MatrixSdkWorker::doMatrixGetScreenColor(const WorkerTaskParam& task)
{
    ScreenColor color;
    std::memset(&color, 0, sizeof color);
    if (WallHandle::usable(*this, task.handle)) {
        const int col = task.params.value(TaskKeys::kLayoutCol).toInt();
        const int row = task.params.value(TaskKeys::kLayoutRow).toInt();
        const int ret = CMatrix_GetScreenColor(task.handle->handle(), col, row, &color);
        SdkCallLog::call("CMatrix_GetScreenColor", ret);
        if (ret != CMATRIX_OK)
            std::memset(&color, 0, sizeof color); // all zero tells the form it failed
    }
    emit signalMatrixGetScreenColorResult(color);
}

void MatrixSdkWorker::doMatrixSetScreenColor(const WorkerTaskParam& task)
{
    const std::unique_ptr<ScreenColor> color(static_cast<ScreenColor*>(task.userData));
    int ret = CMATRIX_ERR_FAILED;
    if (color && WallHandle::usable(*this, task.handle)) {
        const int col = task.params.value(TaskKeys::kLayoutCol).toInt();
        const int row = task.params.value(TaskKeys::kLayoutRow).toInt();
        ret = CMatrix_SetScreenColor(task.handle->handle(), col, row, color.get());
        SdkCallLog::call("CMatrix_SetScreenColor", ret);
    }
    emit signalMatrixSetScreenColorResult(ret);
}

} // namespace kvms_matrix
