// MatrixSdkWorker: the layout of a wall (grid, name, screens of its decoders) and the screen
// identification overlay. A new layout starts clean: no scenes, no loops, no banner, one
// window per cell.
#include "MatrixSdkWorker.h"

#include "ScreenRecords.h"
#include "SdkArray.h"
#include "SdkCallLog.h"
#include "SdkText.h"
#include "TaskKeys.h"
#include "WallGeometry.h"
#include "WallHandle.h"

#include <vector>

namespace kvms_matrix {

namespace {

// The ids of every record of an SDK list (scenes, schemes), each list's id coming first.
template <typename Record, typename GetList>
std::vector<uint32_t> idsOf(CMHANDLE sdk, const char* funcName, GetList getList)
{
    SdkArray<Record> list(sdk);
    SdkCallLog::Timer timer;
    const int count = getList(sdk, list.out());
    SdkCallLog::timed(funcName, sdk, count, timer.elapsedMs());
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
    SdkCallLog::Timer timer;
    const int ret = del(sdk, ids.data(), int(ids.size()));
    SdkCallLog::timed(funcName, sdk, ret, timer.elapsedMs());
}

} // namespace

int MatrixSdkWorker::addMatrixWindows(QSharedPointer<CSharedHandle> handle, int rows, int cols)
{
    if (!WallHandle::usable(*this, handle))
        return -1;
    const std::vector<MatrixWindow_t> records = WallGeometry(rows, cols).grid();
    SdkCallLog::Timer timer;
    const int ret = CMatrix_WindowAdd(handle->handle(), records.data(), int(records.size()), true);
    SdkCallLog::timed("CMatrix_WindowAdd", handle->handle(), ret, timer.elapsedMs());
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
        SdkCallLog::Timer timer;
        const int ret = CMatrix_GetMatrix(sdk, &decoderCols, &decoderRows, nameBuffer, int(sizeof nameBuffer));
        SdkCallLog::write(SdkCallLog::kGetMatrix,
            { QStringLiteral("CMatrix_GetMatrix"), SdkCallLog::pointer(sdk), QString::number(decoderCols),
                QString::number(decoderRows), QString::number(ret), SdkCallLog::now(), timer.elapsed() });
        if (ret == CMATRIX_OK) {
            const WallGeometry geometry(decoderRows, decoderCols);
            rows = geometry.rows();
            cols = geometry.cols();
            name = SdkText::read(nameBuffer, sizeof nameBuffer);
            SdkArray<ScreenInfo_t> records(sdk);
            SdkCallLog::Timer screenTimer;
            const int count = CMatrix_GetScreens(sdk, records.out());
            SdkCallLog::timed("CMatrix_GetScreens", sdk, count, screenTimer.elapsedMs());
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

    // A layout the decoder cannot hold would fail halfway, after its scenes and loops are gone:
    // refused before anything changes.
    MatrixCapacity_t capacity {};
    if (CMatrix_GetCapacity(sdk, &capacity) == CMATRIX_OK
        && (cols > capacity.maxCols || rows > capacity.maxRows || qint64(rows) * cols > qint64(capacity.maxWindows))) {
        SdkCallLog::line(QStringLiteral("{ funcName = doSetLayout , layoutCol = %1 , layoutRow = %2 , "
                                        "more than the decoder holds ( %3 x %4 , %5 windows ) }")
                             .arg(cols)
                             .arg(rows)
                             .arg(capacity.maxCols)
                             .arg(capacity.maxRows)
                             .arg(capacity.maxWindows));
        emit signalSetLayoutResult(CMATRIX_ERR_LIMIT);
        return;
    }

    SdkCallLog::Timer timer;
    int ret = CMatrix_SetMatrix(sdk, cols, rows, name.toUtf8().constData());
    SdkCallLog::timed("CMatrix_SetMatrix", sdk, ret, timer.elapsedMs());
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
        SdkCallLog::write(SdkCallLog::kSetStatus,
            { QStringLiteral("CMatrix_SetStatus"), address, QString::number(status), SdkCallLog::now() });
    }

    const std::vector<ScreenInfo_t> records = ScreenRecords::toRecords(entries, connectedMatrixMap());
    SdkCallLog::Timer screenTimer;
    ret = CMatrix_SetScreens(sdk, records.data(), int(records.size()), true);
    SdkCallLog::write(SdkCallLog::kSetScreens,
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
    SdkCallLog::Timer timer;
    const int ret = Discovery_DisplayScreen(&device, location, open ? 60 : 0);
    SdkCallLog::write(SdkCallLog::kDisplayScreen,
        { QStringLiteral("Discovery_DisplayScreen"), ip, QString::number(ret), SdkCallLog::now(), timer.elapsed() });
    emit signalCheckScreenResult(ret);
}

} // namespace kvms_matrix
