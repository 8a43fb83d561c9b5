// MatrixSdkWorker: display-in-turn schemes (loops): listing, saving, removing, starting in a
// window and stopping.
#include "MatrixSdkWorker.h"

#include "SchemeDeviceRecord.h"
#include "SdkArray.h"
#include "SdkCallLog.h"
#include "SdkText.h"
#include "TaskKeys.h"
#include "WallHandle.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSet>

#include <cstring>
#include <memory>
#include <vector>

namespace kvms_matrix {

namespace {

constexpr int32_t kSchemeKind = 4; // the kind every loop of this module is stored with
constexpr int kMaxDivision = 25;

QString loopsJson(const QList<MatrixLoopInfo>& loops)
{
    QJsonArray list;
    for (const MatrixLoopInfo& loop : loops) {
        QJsonArray devices;
        for (const MatrixDeviceInfo& device : loop.devices)
            devices.append(QJsonObject { { QStringLiteral("id"), device.deviceId } });
        list.append(
            QJsonObject { { QStringLiteral("loopId"), loop.loopId }, { QStringLiteral("loopName"), loop.loopName },
                { QStringLiteral("loopInterval"), loop.loopInterval }, { QStringLiteral("SchemesDevList"), devices } });
    }
    return QString::fromUtf8(QJsonDocument(list).toJson(QJsonDocument::Compact));
}

// Sources of one scheme with a device id; the decoder's empty slots are left out.
QList<MatrixDeviceInfo> schemeDevices(CMHANDLE sdk, uint32_t schemeId)
{
    QList<MatrixDeviceInfo> devices;
    SdkArray<SchemeDevice_t> records(sdk);
    const int count = CMatrix_SchemeGetDevices(sdk, schemeId, records.out());
    SdkCallLog::call("CMatrix_SchemeGetDevices", count);
    for (int i = 0; i < count && records.get(); ++i) {
        const QString id = SdkText::read(records[i].devId, sizeof records[i].devId);
        if (id.isEmpty())
            continue;
        MatrixDeviceInfo device;
        device.deviceId = id;
        device.channel = records[i].channel;
        devices.append(device);
    }
    return devices;
}

// The smallest id from 1 upward that no scheme uses; -1 when the decoder cannot be asked or
// every id up to 0x7FFFFFFF is taken.
int firstFreeSchemeId(CMHANDLE sdk)
{
    SdkArray<SchemeInfo_t> schemes(sdk);
    const int count = CMatrix_SchemeGet(sdk, schemes.out());
    SdkCallLog::call("CMatrix_SchemeGet", count);
    if (count < 0)
        return -1;
    QSet<uint32_t> used;
    for (int i = 0; i < count && schemes.get(); ++i)
        used.insert(schemes[i].id);
    for (uint32_t id = 1; id < 0x7FFFFFFFu; ++id) {
        if (!used.contains(id))
            return int(id);
    }
    return -1;
}

} // namespace

QList<MatrixLoopInfo> MatrixSdkWorker::getMatrixLoops(QSharedPointer<CSharedHandle> handle)
{
    QList<MatrixLoopInfo> loops;
    if (!WallHandle::usable(*this, handle))
        return loops;
    const CMHANDLE sdk = handle->handle();
    {
        SdkArray<SchemeInfo_t> schemes(sdk);
        const int count = CMatrix_SchemeGet(sdk, schemes.out());
        for (int i = 0; i < count && schemes.get(); ++i) {
            MatrixLoopInfo loop;
            loop.loopId = int(schemes[i].id);
            loop.loopName = SdkText::read(schemes[i].name, sizeof schemes[i].name);
            loop.loopInterval = int(schemes[i].interval);
            loop.devices = schemeDevices(sdk, schemes[i].id);
            loops.append(loop);
        }
    }
    SdkCallLog::line(
        QStringLiteral("{ funcName = %1 , params { mHandle = %2 } , ret = %3  , time = %4 }")
            .arg(QStringLiteral("getMatrixLoops"), SdkCallLog::pointer(sdk), loopsJson(loops), SdkCallLog::now()));
    return loops;
}

int MatrixSdkWorker::setMatrixLoopInfo(QSharedPointer<CSharedHandle> handle, MatrixLoopInfo* loop)
{
    if (!loop || !WallHandle::usable(*this, handle))
        return CMATRIX_ERR_FAILED;
    const CMHANDLE sdk = handle->handle();
    if (loop->loopId < 1) {
        loop->loopId = firstFreeSchemeId(sdk);
    } else {
        // An edit replaces the loop whole; if the old one cannot go, nothing is written.
        const int ret = removeMatrixLoopInfo(handle, loop->loopId);
        if (ret != CMATRIX_OK)
            return ret;
    }

    SchemeInfo_t scheme;
    std::memset(&scheme, 0, sizeof scheme);
    scheme.id = uint32_t(loop->loopId);
    SdkText::copy(scheme.name, sizeof scheme.name, loop->loopName);
    scheme.kind = kSchemeKind;
    scheme.interval = uint32_t(loop->loopInterval);
    int ret = CMatrix_SchemeSet(sdk, &scheme);
    SdkCallLog::call("CMatrix_SchemeSet", ret);
    if (ret != CMATRIX_OK)
        return ret;

    std::vector<SchemeDevice_t> records;
    records.reserve(size_t(loop->devices.size()));
    for (MatrixDeviceInfo& device : loop->devices)
        records.push_back(SchemeDeviceRecord::fromDescriptor(convertRealDevice(&device)));
    const int count = int(records.size());
    ret = CMatrix_SchemeAddDevices(sdk, scheme.id, records.data(), count, true);
    SdkCallLog::line(QStringLiteral("{ funcName = %1 , params { mHandle = %2 } , cnt = %3  , reset = %4 , ret = %6, "
                                    "time = %7 }")
                         .arg(QStringLiteral("CMatrix_SchemeAddDevices"), SdkCallLog::pointer(sdk),
                             QString::number(count), QStringLiteral("true"), QString::number(ret), SdkCallLog::now()));
    return ret;
}

int MatrixSdkWorker::removeMatrixLoopInfo(QSharedPointer<CSharedHandle> handle, int loopId)
{
    if (!WallHandle::usable(*this, handle))
        return CMATRIX_ERR_FAILED;
    const CMHANDLE sdk = handle->handle();
    const uint32_t id = uint32_t(loopId);
    const int ret = CMatrix_SchemeDel(sdk, &id, 1);
    SdkCallLog::line(QStringLiteral("{ funcName = %1 , params { mHandle = %2 , loopId = %3 } , ret = %4 , time = %5 }")
                         .arg(QStringLiteral("removeMatrixLoopInfo"), SdkCallLog::pointer(sdk), QString::number(loopId),
                             QString::number(ret), SdkCallLog::now()));
    return ret;
}

int MatrixSdkWorker::restoreMatrixLoop(
    QSharedPointer<CSharedHandle> handle, int windowId, MatrixLoopInfo* loop, int startIndex)
{
    if (!loop || !WallHandle::usable(*this, handle))
        return CMATRIX_ERR_FAILED;
    const CMHANDLE sdk = handle->handle();
    // A negative start (the task's spare integer unset) starts from the first source.
    const int ret = CMatrix_SchemeSelect(sdk, windowId, uint32_t(loop->loopId), qMax(0, startIndex));
    // The line is logged under the removal's name and prints one value where both the window id
    // and the time are named (the time); support staff grep for these lines as they are.
    SdkCallLog::line(QStringLiteral("{ funcName = %1 , params { mHandle = %2 , windowId = %5 , loopId = %3 } , "
                                    "ret = %4 , time = %5 }")
                         .arg(QStringLiteral("removeMatrixLoopInfo"), SdkCallLog::pointer(sdk),
                             QString::number(loop->loopId), QString::number(ret), SdkCallLog::now()));
    return ret;
}

int MatrixSdkWorker::stopMatrixLoop(QSharedPointer<CSharedHandle> handle, int windowId)
{
    if (!WallHandle::usable(*this, handle))
        return CMATRIX_ERR_FAILED;
    const CMHANDLE sdk = handle->handle();
    const int ret = CMatrix_WindowSetDisplayInTurn(sdk, windowId, 0);
    // Logged under the removal's name, as support staff know it.
    SdkCallLog::line(
        QStringLiteral("{ funcName = %1 , params { mHandle = %2 , windowId = %3 } , ret = %4 , time = %5 }")
            .arg(QStringLiteral("removeMatrixLoopInfo"), SdkCallLog::pointer(sdk), QString::number(windowId),
                QString::number(ret), SdkCallLog::now()));
    return ret;
}

void MatrixSdkWorker::doGetLoopInfo(const WorkerTaskParam& task)
{
    emit signalGetLoopInfoResult(getMatrixLoops(task.handle));
}

void MatrixSdkWorker::doSetLoopInfo(const WorkerTaskParam& task)
{
    const std::unique_ptr<MatrixLoopInfo> loop(static_cast<MatrixLoopInfo*>(task.userData));
    const int ret = setMatrixLoopInfo(task.handle, loop.get());
    emit signalSetLoopInfoResult(ret, loop ? *loop : MatrixLoopInfo());
}

void MatrixSdkWorker::doRemoveLoopInfo(const WorkerTaskParam& task)
{
    const int loopId = task.params.value(TaskKeys::kLoopId).toInt();
    emit signalRemoveLoopInfoResult(removeMatrixLoopInfo(task.handle, loopId), loopId);
}

void MatrixSdkWorker::doRestoreLoopInfo(const WorkerTaskParam& task)
{
    std::unique_ptr<MatrixLoopInfo> loop(static_cast<MatrixLoopInfo*>(task.userData));
    // Without a usable connection there are no divisions to report: no signal, as for a null one.
    if (!WallHandle::usable(*this, task.handle))
        return;
    const CMHANDLE sdk = task.handle->handle();
    const int windowId = task.params.value(TaskKeys::kWindowId).toInt();
    const int loopId = loop ? loop->loopId : task.params.value(TaskKeys::kLoopId).toInt();
    const int ret = restoreMatrixLoop(task.handle, windowId, loop.get(), task.taskValue);
    loop.reset();

    SdkArray<WindowDivision_t> divisions(sdk);
    const int count = CMatrix_WindowGetDivision(sdk, divisions.out());
    SdkCallLog::call("CMatrix_WindowGetDivision", count);
    if (count <= 0 || !divisions.get())
        return;
    QList<MatrixSubWindowInfo> subWindows;
    for (int i = 0; i < count; ++i) {
        if (divisions[i].windowId != windowId)
            continue;
        // Never more than a decoder offers, whatever a faulty one reports.
        const int division = qBound(0, divisions[i].division, kMaxDivision);
        for (int k = 0; k < division; ++k) {
            MatrixSubWindowInfo sub;
            sub.subWindowId = k + 1;
            sub.subWindowIndex = k;
            subWindows.append(sub);
        }
        break;
    }
    divisions.reset();
    emit signalRestoreLoopInfoResult(ret, loopId, windowId, subWindows);
}

} // namespace kvms_matrix
