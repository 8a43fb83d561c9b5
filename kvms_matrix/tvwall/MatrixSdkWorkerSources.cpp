// MatrixSdkWorker: the sources bound to a window's sub-windows: reading them back, binding new
// ones, and the decoder queries the display-device conversion relies on.
#include "MatrixSdkWorker.h"

#include "SdkArray.h"
#include "SdkCallLog.h"
#include "SourceConverter.h"
#include "SourceRecords.h"
#include "TaskKeys.h"
#include "WallHandle.h"

#include <QThread>

#include <algorithm>
#include <cstring>
#include <memory>
#include <set>
#include <vector>

namespace kvms_matrix {

namespace {

// The descriptors bound to one window as the decoder gives them; an error or an unknown window
// gives none. Logged with the device list.
std::vector<DeviceInfo_t> readSources(CMHANDLE sdk, int windowId)
{
    SdkArray<DeviceInfo_t> list(sdk);
    SdkCallLog::Timer timer;
    const int count = CMatrix_WindowDeviceGet(sdk, windowId, list.out());
    const QString elapsed = timer.elapsed();
    std::vector<DeviceInfo_t> sources;
    if (count > 0 && list.get())
        sources.assign(list.get(), list.get() + count);
    QList<MatrixDeviceInfo> devices;
    for (const DeviceInfo_t& d : sources)
        devices.append(SourceRecords::deviceOf(d));
    // Placeholders 3 and 4 are not in this template; the device list follows on its own line.
    SdkCallLog::write(SdkCallLog::kDeviceGet,
        { QStringLiteral("CMatrix_WindowDeviceGet"), SdkCallLog::pointer(sdk), QString(), QString(),
            QString::number(count), SdkCallLog::now(), elapsed, QString::number(windowId) });
    SdkCallLog::line(SourceRecords::listJson(windowId, devices));
    return sources;
}

// Every source bound anywhere on the wall: CMatrix_WindowGet, then each window's sources.
std::vector<DeviceInfo_t> readWallSources(CMHANDLE sdk)
{
    std::vector<int> ids;
    {
        SdkArray<MatrixWindowStatus_t> windows(sdk);
        SdkCallLog::Timer timer;
        const int count = CMatrix_WindowGet(sdk, windows.out());
        SdkCallLog::timed("CMatrix_WindowGet", sdk, count, timer.elapsedMs());
        for (int i = 0; i < count && windows.get(); ++i)
            ids.push_back(int(windows[i].window.id));
    }
    std::vector<DeviceInfo_t> all;
    for (int id : ids) {
        const std::vector<DeviceInfo_t> sources = readSources(sdk, id);
        all.insert(all.end(), sources.begin(), sources.end());
    }
    return all;
}

} // namespace

// A task that converts several display devices asks the same of the wall for each: the wall is
// read once per task (on the worker thread) and the answer kept until the task ends, as nothing
// a conversion does changes what it reads (new distributions are in the registry, read afresh).
// Other threads read the wall into `fresh` every time.
const std::vector<DeviceInfo_t>& MatrixSdkWorker::wallSources(CMHANDLE sdk, std::vector<DeviceInfo_t>& fresh)
{
    if (QThread::currentThread() != this) {
        fresh = readWallSources(sdk);
        return fresh;
    }
    if (m_wallSourcesOf != sdk) {
        m_wallSources = readWallSources(sdk);
        m_wallSourcesOf = sdk;
    }
    return m_wallSources;
}

QList<MatrixDeviceInfo> MatrixSdkWorker::getDeviceInfo(QSharedPointer<CSharedHandle> handle, int windowId)
{
    QList<MatrixDeviceInfo> devices;
    if (!WallHandle::usable(*this, handle))
        return devices;
    for (const DeviceInfo_t& d : readSources(handle->handle(), windowId))
        devices.append(SourceRecords::deviceOf(d));
    return devices;
}

QList<MatrixDeviceInfo> MatrixSdkWorker::addEmptyDevice(QList<MatrixDeviceInfo> list, int count)
{
    QList<MatrixDeviceInfo> padded;
    for (int n = 1; n <= count; ++n) {
        auto found = std::find_if(
            list.cbegin(), list.cend(), [n](const MatrixDeviceInfo& d) { return d.subWindowNumber == n; });
        if (found != list.cend()) {
            padded.append(*found);
            continue;
        }
        MatrixDeviceInfo empty;
        empty.deviceType = 0;
        empty.subWindowNumber = n;
        padded.append(empty);
    }
    return padded;
}

// The channels in use are those of the local sources bound on the wall (pictures, display
// devices, protocols 6 and 7) and those of the distributions this worker started; the answer
// is the smallest channel from 1 that none of them uses.
int MatrixSdkWorker::getOnlyChannelId(QSharedPointer<CSharedHandle> handle)
{
    std::set<int> used;
    for (const auto& entry : mdRegistry())
        used.insert(entry.first.second);
    if (WallHandle::usable(*this, handle)) {
        std::vector<DeviceInfo_t> fresh;
        for (const DeviceInfo_t& d : wallSources(handle->handle(), fresh)) {
            if (d.protocol == SourceRecords::Local || d.protocol == SourceRecords::Distributed)
                used.insert(d.channel);
        }
    }
    int channel = 1;
    while (used.count(channel))
        ++channel;
    return channel;
}

// The decoder holds the source when some sub-window of its wall is bound to that device id
// through a distribution (protocol 7): only then is its stream address still good.
bool MatrixSdkWorker::hasThisRecordDev(QSharedPointer<CSharedHandle> handle, const QString& deviceId)
{
    if (deviceId.isEmpty() || !WallHandle::usable(*this, handle))
        return false;
    const QByteArray id = SourceRecords::deviceIdBytes(deviceId);
    std::vector<DeviceInfo_t> fresh;
    for (const DeviceInfo_t& d : wallSources(handle->handle(), fresh)) {
        if (d.protocol == SourceRecords::Distributed && strncmp(d.devId, id.constData(), sizeof d.devId) == 0)
            return true;
    }
    return false;
}

QString MatrixSdkWorker::xmlStringProcess(QByteArray text)
{
    QString body = QString::fromUtf8(text).mid(16);
    body.remove(QLatin1Char('\n'));
    QString tidy;
    tidy.reserve(body.size());
    bool afterSpace = false;
    // The last character is never copied.
    for (int i = 0; i + 1 < body.size(); ++i) {
        const QChar c = body.at(i);
        const bool space = c == QLatin1Char(' ');
        if (!(space && afterSpace))
            tidy.append(c);
        afterSpace = space;
    }
    return tidy;
}

void MatrixSdkWorker::doSetWindowSignalSource(const WorkerTaskParam& task)
{
    std::unique_ptr<MatrixWindowInfo> owned(static_cast<MatrixWindowInfo*>(task.userData));
    MatrixWindowInfo window = owned ? *owned : MatrixWindowInfo();
    const int subWindowId = task.params.value(TaskKeys::kSubWindowId, -1).toInt();
    const bool addingPicture = task.params.value(TaskKeys::kMatrixAddingPicture).toBool();
    int ret = -1;
    if (owned && WallHandle::usable(*this, task.handle)) {
        const CMHANDLE sdk = task.handle->handle();
        const QString usbPath = task.params.value(TaskKeys::kFilePath).toString();
        const int count = window.subWindows.size();
        const auto distributedBefore = mdRegistry();
        std::vector<DeviceInfo_t> descriptors(static_cast<size_t>(count));
        for (int i = 0; i < count; ++i) {
            auto sub = std::find_if(window.subWindows.begin(), window.subWindows.end(),
                [i](const MatrixSubWindowInfo& s) { return s.subWindowIndex == i; });
            const SourceConverter::Target target { window.windowId, i + 1, window.windowType };
            if (sub == window.subWindows.end()) {
                descriptors[size_t(i)] = convertEmptyDevice(window.windowId, i + 1);
            } else {
                MatrixDeviceInfo& device = sub->device;
                descriptors[size_t(i)] = SourceConverter::convert(
                    *this, task.handle, device, target, usbPath.isEmpty() ? device.mainUrl : usbPath);
            }
            descriptors[size_t(i)].subWindow = i + 1;
        }
        SdkCallLog::Timer timer;
        ret = CMatrix_WindowDeviceAdd(sdk, window.windowId, descriptors.data(), count, true);
        SdkCallLog::timed("CMatrix_WindowDeviceAdd", sdk, ret, timer.elapsedMs());
        if (ret != CMATRIX_OK)
            forgetDistributionsSince(distributedBefore); // nothing will pull them

        auto target = std::find_if(window.subWindows.begin(), window.subWindows.end(),
            [subWindowId](const MatrixSubWindowInfo& s) { return s.subWindowId == subWindowId; });
        if (target != window.subWindows.end()) {
            MatrixDeviceInfo& device = target->device;
            // The picture goes whether or not the binding was taken: the sub-window may hold it
            // from before, and a late picture does no harm.
            if (device.deviceType == 3) {
                SdkCallLog::Timer frameTimer;
                const int sent = sendDeviceDisplayFrame(task.handle, window.windowId, &device);
                SdkCallLog::write(SdkCallLog::kDisplayFrame,
                    { QStringLiteral("sendDeviceDisplayFrame"), QString::number(window.windowId), device.mainUrl,
                        QString::number(sent), SdkCallLog::now(), frameTimer.elapsed() });
            } else if (device.deviceType == 4 && ret == CMATRIX_OK) {
                startCaptureThread(task.handle, window.windowId, device.channel);
            }
        }
    }
    emit signalSetWindowSignalSourceResult(ret, window, subWindowId, addingPicture);
}

} // namespace kvms_matrix
