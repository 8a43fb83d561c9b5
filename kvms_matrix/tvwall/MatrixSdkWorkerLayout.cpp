// MatrixSdkWorker: the layout of a wall (grid, name, screens of its decoders) and the screen
// identification overlay. A new layout starts clean: no scenes, no loops, no banner, one
// window per cell.
#include "MatrixSdkWorker.h"

#include "ScreenRecords.h"
#include "SdkCallLog.h"
#include "SdkText.h"
#include "TaskKeys.h"
#include "WallCallLog.h"
#include "WallGeometry.h"
#include "WallHandle.h"
#include "WallSdkList.h"

#include <vector>

namespace kvms_matrix {

namespace {

// The ids of every record of an SDK list (scenes, schemes), each list's id coming first.
template <typename Record, typename GetList>
std::vector<uint32_t> idsOf(CMHANDLE sdk, const char* funcName, GetList getList)
{
    WallSdkList<Record> list(sdk);
    WallCallTimer timer;
    const int count = getList(sdk, list.out());
    WallCallLog::timed(funcName, sdk, count, timer.elapsedMs());
    std::vector<uint32_t> ids;
    for (int i = 0; i < count && list.get(); ++i)
        ids.push_back(list[i].id);
    return ids;
}

template <typename DeleteList>
void deleteAll(CMHANDLE sdk, const char* funcName, const std::vector<uint32_t>& ids, DeleteList del)
{
    if (ids.empty())
        return;
    WallCallTimer timer;
    const int ret = del(sdk, ids.data(), int(ids.size()));
    WallCallLog::timed(funcName, sdk, ret, timer.elapsedMs());
}

} // namespace

int MatrixSdkWorker::addMatrixWindows(QSharedPointer<CSharedHandle> handle, int rows, int cols)
{
    if (!handle || !handle->handle())
        return -1;
    const std::vector<MatrixWindow_t> records = WallGeometry(rows, cols).grid();
    WallCallTimer timer;
    const int ret = CMatrix_WindowAdd(handle->handle(), records.data(), int(records.size()), true);
    WallCallLog::timed("CMatrix_WindowAdd", handle->handle(), ret, timer.elapsedMs());
    return ret;
}

// The layout as the decoder holds it: grid and name from CMatrix_GetMatrix, its screens from
// CMatrix_GetScreens grouped back into one entry per decoder, the type of the connection and
// the connection's address as the main decoder. Counts of 0 read as 1, as for the windows; a
// failed or missing connection gives an empty name, type -1, no screens and 1 x 1.
void MatrixSdkWorker::doGetLayout(const WorkerTaskParam& task)
{
    QString name;
    int type = -1;
    QList<MatrixInfo> screens;
    int rows = 1;
    int cols = 1;
    QString mainIp;
    if (WallHandle::usable(*this, task.handle)) {
        const CMHANDLE sdk = task.handle->handle();
        type = task.handle->type();
        mainIp = task.handle->ip();
        int decoderCols = 0;
        int decoderRows = 0;
        char nameBuffer[64] = {};
        WallCallTimer timer;
        const int ret = CMatrix_GetMatrix(sdk, &decoderCols, &decoderRows, nameBuffer, int(sizeof nameBuffer));
        WallCallLog::write(WallCallLog::kGetMatrix,
            { QStringLiteral("CMatrix_GetMatrix"), SdkCallLog::pointer(sdk), QString::number(decoderCols),
                QString::number(decoderRows), QString::number(ret), SdkCallLog::now(), timer.elapsed() });
        if (ret == CMATRIX_OK) {
            const WallGeometry geometry(decoderRows, decoderCols);
            rows = geometry.rows();
            cols = geometry.cols();
            name = SdkText::read(nameBuffer, sizeof nameBuffer);
            WallSdkList<ScreenInfo_t> records(sdk);
            WallCallTimer screenTimer;
            const int count = CMatrix_GetScreens(sdk, records.out());
            WallCallLog::timed("CMatrix_GetScreens", sdk, count, screenTimer.elapsedMs());
            screens = ScreenRecords::fromRecords(records.get(), count);
        }
    }
    emit signalGetLayoutInfoResult(name, type, screens, rows, cols, mainIp, task.userData);
}

void MatrixSdkWorker::doSetLayout(const WorkerTaskParam& task)
{
    const int rows = task.params.value(TaskKeys::kLayoutRow).toInt();
    const int cols = task.params.value(TaskKeys::kLayoutCol).toInt();
    const QString name = task.params.value(TaskKeys::kMatrixName).toString();
    if (!WallHandle::usable(*this, task.handle)) {
        emit signalSetLayoutResult(-1);
        return;
    }
    const CMHANDLE sdk = task.handle->handle();

    WallCallTimer timer;
    int ret = CMatrix_SetMatrix(sdk, cols, rows, name.toUtf8().constData());
    WallCallLog::timed("CMatrix_SetMatrix", sdk, ret, timer.elapsedMs());
    if (ret != CMATRIX_OK) {
        emit signalSetLayoutResult(ret);
        return;
    }

    // The other decoders of the wall become secondaries of this one.
    const QList<MatrixInfo> entries = layoutScreens();
    const QString ownAddress = task.handle->ip();
    for (const QString& address : ScreenRecords::addresses(entries)) {
        if (address == ownAddress)
            continue;
        const QSharedPointer<CSharedHandle> other = getHandleByIp(address);
        if (!other || !other->handle())
            continue;
        const int status = CMatrix_SetStatus(other->handle(), 2, address.toUtf8().constData());
        WallCallLog::write(WallCallLog::kSetStatus,
            { QStringLiteral("CMatrix_SetStatus"), address, QString::number(status), SdkCallLog::now() });
    }

    const std::vector<ScreenInfo_t> records = ScreenRecords::toRecords(entries, connectedMatrixMap());
    WallCallTimer screenTimer;
    ret = CMatrix_SetScreens(sdk, records.data(), int(records.size()), true);
    WallCallLog::write(WallCallLog::kSetScreens,
        { QStringLiteral("CMatrix_SetScreens"), SdkCallLog::pointer(sdk), ScreenRecords::logText(records),
            QString::number(records.size()), QStringLiteral("true"), QString::number(ret), SdkCallLog::now(),
            screenTimer.elapsed() });
    if (ret != CMATRIX_OK) {
        emit signalSetLayoutResult(ret);
        return;
    }

    // Scenes and loops were made for the old layout; their results are not checked.
    deleteAll(
        sdk, "CMatrix_SceneDelete", idsOf<SceneInfo_t>(sdk, "CMatrix_SceneGet", CMatrix_SceneGet), CMatrix_SceneDelete);
    deleteAll(
        sdk, "CMatrix_SchemeDel", idsOf<SchemeInfo_t>(sdk, "CMatrix_SchemeGet", CMatrix_SchemeGet), CMatrix_SchemeDel);

    ret = addMatrixWindows(task.handle, rows, cols);
    if (ret == CMATRIX_OK)
        hideMatrixBanner(task.handle);
    emit signalSetLayoutResult(ret);
}

void MatrixSdkWorker::doCheckScreen(const WorkerTaskParam& task)
{
    if (!WallHandle::usable(*this, task.handle)) {
        emit signalCheckScreenResult(-1);
        return;
    }
    const bool open = task.params.value(TaskKeys::kOpenCheckScreen).toBool();
    const QString ip = task.params.value(TaskKeys::kMatrixIp).toString();
    const int location = task.params.value(TaskKeys::kMatrixWindowLocation).toInt();
    DeviceInfo_t device {};
    SdkText::copy(device.ip, sizeof device.ip, ip);
    SdkText::copy(device.userName, sizeof device.userName, task.params.value(TaskKeys::kUserName).toString());
    SdkText::copy(device.password, sizeof device.password, task.params.value(TaskKeys::kUserPassword).toString());
    WallCallTimer timer;
    const int ret = Discovery_DisplayScreen(&device, location, open ? 60 : 0);
    WallCallLog::write(WallCallLog::kDisplayScreen,
        { QStringLiteral("Discovery_DisplayScreen"), ip, QString::number(ret), SdkCallLog::now(), timer.elapsed() });
    emit signalCheckScreenResult(ret);
}

} // namespace kvms_matrix
