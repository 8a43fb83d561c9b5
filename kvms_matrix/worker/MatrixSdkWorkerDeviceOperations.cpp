// MatrixSdkWorker: the queuing operations of discovery and network settings, and of the
// decoder's HDMI input, USB files, screen colour, audio and streams. Each builds one task and
// appends it; records a handler needs whole travel as heap copies it deletes.
#include "MatrixSdkWorker.h"

#include "SyncLocker.h"
#include "TaskKeys.h"

#include <cstring>
#include <utility>

namespace kvms_matrix {

namespace {

// Copies into a fixed SDK text field, cut to leave room for the NUL.
void copyText(char* field, size_t size, const QByteArray& text)
{
    const size_t length = qMin(size - 1, size_t(text.size()));
    std::memcpy(field, text.constData(), length);
    field[length] = '\0';
}

QString fieldText(const char* field, size_t size)
{
    return QString::fromLatin1(field, int(strnlen(field, size)));
}

// The discovery descriptor of a decoder record: identity, address and login.
DeviceInfo_t* newDescriptor(const MatrixInfo& info)
{
    auto* device = new DeviceInfo_t;
    std::memset(device, 0, sizeof *device);
    copyText(device->devId, sizeof device->devId, info.id.toLocal8Bit());
    copyText(device->ip, sizeof device->ip, info.ip.toLatin1());
    copyText(device->userName, sizeof device->userName, info.username.toUtf8());
    copyText(device->password, sizeof device->password, info.password.toUtf8());
    return device;
}

QString subWindowDeviceId(const MatrixWindowInfo& window, int subWindowId)
{
    for (const MatrixSubWindowInfo& sub : window.subWindows) {
        if (sub.subWindowId == subWindowId)
            return sub.device.deviceId;
    }
    return QString();
}

} // namespace

void MatrixSdkWorker::searchMatrix()
{
    // A search is made before any decoder is connected, so it cannot wait for a connect to
    // start the thread.
    startIfStopped();
    m_searchRound.store(0);
    {
        SyncLocker lock(&m_deviceMutex);
        m_foundMatrixMap.clear();
    }
    queueTask(makeTask(TaskKind::SearchMatrix));
}

void MatrixSdkWorker::getMatrixNetworkInfo(const MatrixInfo& info, int type)
{
    WorkerTaskParam task = makeTask(TaskKind::GetMatrixNetwork);
    task.params.insert(TaskKeys::kMatrixType, type);
    task.userData = newDescriptor(info);
    queueTask(task);
}

void MatrixSdkWorker::setMatrixNetworkConfig(QSharedPointer<CSharedHandle> handle, const MatrixInfo& current,
    const MatrixInfo& target, const DeviceNetworkCfg_t& cfg, int type, void* userData)
{
    Q_UNUSED(userData)
    WorkerTaskParam task = makeTask(TaskKind::SetMatrixNetwork, std::move(handle));
    task.params.insert(TaskKeys::kMatrixIp, current.ip);
    task.params.insert(TaskKeys::kMatrixNetworkIp, fieldText(cfg.ipv4, sizeof cfg.ipv4));
    task.params.insert(TaskKeys::kMatrixNetworkMask, fieldText(cfg.mask, sizeof cfg.mask));
    task.params.insert(TaskKeys::kMatrixNetworkGw, fieldText(cfg.gateway, sizeof cfg.gateway));
    task.params.insert(TaskKeys::kMatrixNetworkIpV6, fieldText(cfg.ipv6, sizeof cfg.ipv6));
    task.params.insert(TaskKeys::kMatrixNetworkPrefixV6, cfg.prefixV6);
    task.params.insert(TaskKeys::kMatrixNetworkGwV6, fieldText(cfg.gatewayV6, sizeof cfg.gatewayV6));
    task.params.insert(TaskKeys::kMatrixNetworkDns, fieldText(cfg.dns, sizeof cfg.dns));
    task.params.insert(TaskKeys::kMatrixType, type);
    DeviceInfo_t* device = newDescriptor(target);
    device->port = target.port;
    task.userData = device;
    queueTask(task);
}

void MatrixSdkWorker::activeDecoder(QString ip, QString password)
{
    WorkerTaskParam task = makeTask(TaskKind::ActiveDecoder);
    task.params.insert(TaskKeys::kMatrixIp, ip);
    task.params.insert(TaskKeys::kUserPassword, password);
    queueTask(task);
}

void MatrixSdkWorker::setStreamSwitch(QSharedPointer<CSharedHandle> handle, int mode)
{
    WorkerTaskParam task = makeTask(TaskKind::SetStreamSwitch, std::move(handle));
    task.params.insert(TaskKeys::kVideoStreamMode, mode);
    queueTask(task);
}

void MatrixSdkWorker::setAudioOutputEnable(
    QSharedPointer<CSharedHandle> handle, int windowId, int subWindowId, int volume, bool enable)
{
    WorkerTaskParam task = makeTask(TaskKind::SetAudioOutputEnable, std::move(handle));
    task.params.insert(TaskKeys::kWindowId, windowId);
    task.params.insert(TaskKeys::kSubWindowId, subWindowId);
    task.params.insert(TaskKeys::kVolume, volume);
    task.params.insert(TaskKeys::kEnable, enable);
    queueTask(task);
}

void MatrixSdkWorker::getAudioOutputEnable(QSharedPointer<CSharedHandle> handle)
{
    queueTask(makeTask(TaskKind::GetAudioOutputEnable, std::move(handle)));
}

void MatrixSdkWorker::refreshHDMIStatus(QSharedPointer<CSharedHandle> handle)
{
    queueTask(makeTask(TaskKind::RefreshHdmiStatus, std::move(handle)));
}

void MatrixSdkWorker::getDevPlayFileList(
    QSharedPointer<CSharedHandle> handle, int windowId, int subWindowId, int windowType)
{
    WorkerTaskParam task = makeTask(TaskKind::GetDevPlayFileList, std::move(handle));
    task.params.insert(TaskKeys::kWindowId, windowId);
    task.params.insert(TaskKeys::kSubWindowId, subWindowId);
    task.params.insert(TaskKeys::kWindowType, windowType);
    queueTask(task);
}

void MatrixSdkWorker::startPlayDevFile(
    QSharedPointer<CSharedHandle> handle, const MatrixWindowInfo& window, int subWindowId, const QString& path)
{
    WorkerTaskParam task = makeWindowTask(TaskKind::StartPlayDevFile, std::move(handle), window, subWindowId);
    task.params.insert(TaskKeys::kFilePath, path);
    queueTask(task);
}

void MatrixSdkWorker::stopPlayDevFile(
    QSharedPointer<CSharedHandle> handle, const MatrixWindowInfo& window, int subWindowId)
{
    WorkerTaskParam task = makeWindowTask(TaskKind::StopPlayDevFile, std::move(handle), window, subWindowId);
    task.params.insert(TaskKeys::kDevId, subWindowDeviceId(window, subWindowId));
    queueTask(task);
}

void MatrixSdkWorker::startPlayHdmiVideo(
    QSharedPointer<CSharedHandle> handle, const MatrixWindowInfo& window, int subWindowId, int input)
{
    WorkerTaskParam task = makeWindowTask(TaskKind::StartPlayHdmiVideo, std::move(handle), window, subWindowId);
    task.taskValue = input;
    queueTask(task);
}

void MatrixSdkWorker::startPlayVideoStream(
    QSharedPointer<CSharedHandle> handle, const MatrixWindowInfo& window, int subWindowId, const QString& url)
{
    WorkerTaskParam task = makeWindowTask(TaskKind::StartPlayVideoStream, std::move(handle), window, subWindowId);
    task.params.insert(TaskKeys::kFilePath, url);
    queueTask(task);
}

void MatrixSdkWorker::getMatrixScreenColor(QSharedPointer<CSharedHandle> handle, int col, int row)
{
    WorkerTaskParam task = makeTask(TaskKind::GetMatrixScreenColor, std::move(handle));
    task.params.insert(TaskKeys::kLayoutCol, col);
    task.params.insert(TaskKeys::kLayoutRow, row);
    queueTask(task);
}

void MatrixSdkWorker::setMatrixScreenColor(
    QSharedPointer<CSharedHandle> handle, int col, int row, const ScreenColor& color)
{
    WorkerTaskParam task = makeTask(TaskKind::SetMatrixScreenColor, std::move(handle));
    task.params.insert(TaskKeys::kLayoutCol, col);
    task.params.insert(TaskKeys::kLayoutRow, row);
    task.userData = new ScreenColor(color);
    queueTask(task);
}

} // namespace kvms_matrix
