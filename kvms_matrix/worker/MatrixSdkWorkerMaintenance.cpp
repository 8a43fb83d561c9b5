// MatrixSdkWorker: decoder maintenance (firmware, factory reset, resolution, password,
// configuration import and export, logs).
#include "MatrixSdkWorker.h"

#include "SdkArray.h"
#include "SdkCallLog.h"
#include "SyncLocker.h"
#include "TaskKeys.h"
#include "UpdateContext.h"

#include <QDateTime>

#include <cstring>
#include <memory>

namespace kvms_matrix {

namespace {

// SDK text fields are fixed arrays; one that fills its array has no NUL.
QString textOf(const char* field, size_t size)
{
    return QString::fromUtf8(field, int(strnlen(field, size)));
}

QString logTypeName(int type)
{
    switch (type) {
    case LOG_TYPE_OPERATION:
        return QStringLiteral("operation");
    case LOG_TYPE_ALARM:
        return QStringLiteral("alarm");
    case LOG_TYPE_SYSTEM:
        return QStringLiteral("system");
    default:
        return QString::number(type);
    }
}

// "yyyy-MM-dd hh:mm:ss [type] user: content", the time in the client's local time.
QString logLine(const LogInfo_t& entry)
{
    const QString when
        = QDateTime::fromSecsSinceEpoch(qint64(entry.time)).toString(QStringLiteral("yyyy-MM-dd hh:mm:ss"));
    return QStringLiteral("%1 [%2] %3: %4")
        .arg(when, logTypeName(entry.type), textOf(entry.user, sizeof entry.user),
            textOf(entry.content, sizeof entry.content));
}

} // namespace

void MatrixSdkWorker::updateMatrix(const QList<QSharedPointer<CSharedHandle>>& handles, const QString& imagePath)
{
    for (int i = 0; i < handles.size(); ++i)
        updateOneMatrix(handles.at(i), imagePath, i);
}

void MatrixSdkWorker::updateOneMatrix(QSharedPointer<CSharedHandle> handle, const QString& imagePath, int index)
{
    WorkerTaskParam task = makeTask(TaskKind::UpdateMatrix, std::move(handle));
    task.taskValue = index;
    task.params.insert(TaskKeys::kUpdateMatrixPath, imagePath);
    queueTask(task);
}

void MatrixSdkWorker::factoryReset(QSharedPointer<CSharedHandle> handle)
{
    queueTask(makeTask(TaskKind::FactoryReset, std::move(handle)));
}

void MatrixSdkWorker::getMatrixResolution(QSharedPointer<CSharedHandle> handle, int outputIndex)
{
    WorkerTaskParam task = makeTask(TaskKind::GetMatrixResolution, std::move(handle));
    task.taskValue = outputIndex;
    queueTask(task);
}

void MatrixSdkWorker::setMatrixResolution(
    QSharedPointer<CSharedHandle> handle, const ScreenResolution_t& resolution, bool setAll)
{
    WorkerTaskParam task = makeTask(TaskKind::SetMatrixResolution, std::move(handle));
    task.params.insert(TaskKeys::kMatrixResolutionSetAll, setAll);
    task.userData = new ScreenResolution_t(resolution); // deleted by the handler
    queueTask(task);
}

void MatrixSdkWorker::userPasswordModify(QSharedPointer<CSharedHandle> handle, const QString& userName,
    const QString& oldPassword, const QString& newPassword)
{
    WorkerTaskParam task = makeTask(TaskKind::UserPasswordModify, std::move(handle));
    task.params.insert(TaskKeys::kUserName, userName);
    task.params.insert(TaskKeys::kOldPassword, oldPassword);
    task.params.insert(TaskKeys::kUserPassword, newPassword);
    queueTask(task);
}

void MatrixSdkWorker::importMatrixConfig(QSharedPointer<CSharedHandle> handle, const QString& path)
{
    WorkerTaskParam task = makeTask(TaskKind::ImportMatrixConfig, std::move(handle));
    task.params.insert(TaskKeys::kFilePath, path);
    queueTask(task);
}

void MatrixSdkWorker::exportMatrixConfig(QSharedPointer<CSharedHandle> handle, const QString& path)
{
    WorkerTaskParam task = makeTask(TaskKind::ExportMatrixConfig, std::move(handle));
    task.params.insert(TaskKeys::kFilePath, path);
    queueTask(task);
}

void MatrixSdkWorker::getLog(
    QSharedPointer<CSharedHandle> handle, int type, const QDateTime& begin, const QDateTime& end)
{
    WorkerTaskParam task = makeTask(TaskKind::GetLog, std::move(handle));
    task.params.insert(TaskKeys::kLogType, type);
    task.params.insert(TaskKeys::kBeginTime, uint(qBound<qint64>(0, begin.toSecsSinceEpoch(), 0xFFFFFFFFLL)));
    task.params.insert(TaskKeys::kEndTime, uint(qBound<qint64>(0, end.toSecsSinceEpoch(), 0xFFFFFFFFLL)));
    queueTask(task);
}

void MatrixSdkWorker::getRunLog(QSharedPointer<CSharedHandle> handle, const QString& path)
{
    WorkerTaskParam task = makeTask(TaskKind::GetLog, std::move(handle));
    task.params.insert(TaskKeys::kFilePath, path);
    queueTask(task);
}

void* MatrixSdkWorker::updateContext(int index)
{
    SyncLocker lock(&m_updateMutex);
    std::unique_ptr<UpdateContext>& context = m_updateContexts[index];
    if (!context) {
        context = std::make_unique<UpdateContext>();
        context->worker = this;
        context->index = index;
    }
    return context.get();
}

void MatrixSdkWorker::matrixUpdateCallback(const UpdateStatus_t* status, void* user)
{
    const auto* context = static_cast<const UpdateContext*>(user);
    if (!status || !context || !context->worker)
        return;
    MatrixSdkWorker* worker = context->worker;
    const bool finished = status->state == UPDATE_STATE_FINISHED || status->state == UPDATE_STATE_FAILED;
    SdkCallLog::line(QStringLiteral("{ funcName = matrixUpdateCallback , index = %1 , state = %2 , progress = %3 , "
                                    "ret = %4 , time = %5 }")
                         .arg(context->index)
                         .arg(status->state)
                         .arg(status->progress)
                         .arg(status->result)
                         .arg(SdkCallLog::now()));
    emit worker->signalUpdateMatrixProgress(status->state, status->progress, status->result, context->index, finished);
    if (!finished)
        return;
    int result = status->result;
    if (status->state == UPDATE_STATE_FAILED && result == CMATRIX_OK)
        result = CMATRIX_ERR_FAILED; // a failure must never read as success
    emit worker->signalUpdateMatrixResult(result);
}

void MatrixSdkWorker::doUpdateOneMatrix(const WorkerTaskParam& task)
{
    const int index = task.taskValue;
    int ret = CMATRIX_ERR_FAILED;
    if (task.handle) {
        const QByteArray path = task.params.value(TaskKeys::kUpdateMatrixPath).toString().toUtf8();
        ret = CMatrix_FirmwareUpdate(
            task.handle->handle(), path.constData(), &MatrixSdkWorker::matrixUpdateCallback, updateContext(index));
        SdkCallLog::call("CMatrix_FirmwareUpdate", ret);
        if (ret == CMATRIX_OK)
            return; // progress and result come through the callback
    }
    emit signalUpdateMatrixProgress(UPDATE_STATE_FAILED, 0, ret, index, true);
    emit signalUpdateMatrixResult(ret);
}

void MatrixSdkWorker::doFactoryReset(const WorkerTaskParam& task)
{
    if (!task.handle) {
        emit signalMatrixFactoryResetResult(CMATRIX_ERR_FAILED, QString());
        return;
    }
    const int ret = CMatrix_FactoryReset(task.handle->handle());
    SdkCallLog::call("CMatrix_FactoryReset", ret);
    emit signalMatrixFactoryResetResult(ret, task.handle->ip());
}

void MatrixSdkWorker::doMatrixGetResolution(const WorkerTaskParam& task)
{
    ScreenResolution_t resolution;
    std::memset(&resolution, 0, sizeof resolution);
    if (task.handle) {
        resolution.outputIndex = task.taskValue; // which output is asked for travels in the record
        const int ret = CMatrix_GetResolution(task.handle->handle(), &resolution);
        SdkCallLog::call("CMatrix_GetResolution", ret);
        if (ret != CMATRIX_OK)
            std::memset(&resolution, 0, sizeof resolution); // all zero tells the form it failed
    }
    emit signalMatrixGetResolutionResult(resolution);
}

void MatrixSdkWorker::doMatrixSetResolutuon(const WorkerTaskParam& task)
{
    const std::unique_ptr<ScreenResolution_t> resolution(static_cast<ScreenResolution_t*>(task.userData));
    if (!task.handle || !resolution) {
        emit signalMatrixSetResolutionResult(CMATRIX_ERR_FAILED);
        return;
    }
    const CMHANDLE handle = task.handle->handle();
    const bool setAll = task.params.value(TaskKeys::kMatrixResolutionSetAll).toBool();

    // The wall the resolution applies to goes into the log beside the change.
    int cols = 0;
    int rows = 0;
    char name[64];
    std::memset(name, 0, sizeof name);
    SdkCallLog::Timer timer;
    const int matrixRet = CMatrix_GetMatrix(handle, &cols, &rows, name, sizeof name);
    SdkCallLog::line(QStringLiteral("{ funcName = %1 , params{ mHandle = %2 , layoutCol = %3 , layoutRow = %4 } , "
                                    "ret = %5 , time = %6 ,  Elapsed = %7 }")
                         .arg(QStringLiteral("CMatrix_GetMatrix"), SdkCallLog::pointer(handle))
                         .arg(cols)
                         .arg(rows)
                         .arg(matrixRet)
                         .arg(SdkCallLog::now(), timer.elapsed()));

    const int ret = CMatrix_SetResolution(handle, resolution.get(), setAll ? 1 : 0);
    SdkCallLog::call("CMatrix_SetResolution", ret);
    emit signalMatrixSetResolutionResult(ret);
}

void MatrixSdkWorker::doUserPasswordModify(const WorkerTaskParam& task)
{
    const QString newPassword = task.params.value(TaskKeys::kUserPassword).toString();
    if (!task.handle) {
        emit signalUserPasswordModifyResult(CMATRIX_ERR_FAILED, QString(), newPassword);
        return;
    }
    const QByteArray user = task.params.value(TaskKeys::kUserName).toString().toUtf8();
    const QByteArray oldPassword = task.params.value(TaskKeys::kOldPassword).toString().toUtf8();
    const int ret = CMatrix_AccountPasswdModify(
        task.handle->handle(), user.constData(), oldPassword.constData(), newPassword.toUtf8().constData());
    SdkCallLog::call("CMatrix_AccountPasswdModify", ret);
    emit signalUserPasswordModifyResult(ret, task.handle->ip(), newPassword);
}

void MatrixSdkWorker::doImportMatrixConfig(const WorkerTaskParam& task)
{
    int ret = CMATRIX_ERR_FAILED;
    if (task.handle) {
        const QByteArray path = task.params.value(TaskKeys::kFilePath).toString().toUtf8();
        ret = CMatrix_ImportConfig(task.handle->handle(), path.constData());
        SdkCallLog::call("CMatrix_ImportConfig", ret);
    }
    emit signalImportConfigResult(ret);
}

void MatrixSdkWorker::doExportMatrixConfig(const WorkerTaskParam& task)
{
    int ret = CMATRIX_ERR_FAILED;
    if (task.handle) {
        const QByteArray path = task.params.value(TaskKeys::kFilePath).toString().toUtf8();
        ret = CMatrix_ExportConfig(task.handle->handle(), path.constData());
        SdkCallLog::call("CMatrix_ExportConfig", ret);
    }
    emit signalExportConfigResult(ret);
}

void MatrixSdkWorker::doGetLog(const WorkerTaskParam& task)
{
    // A path asks for the run log as a file; otherwise the operation log comes back as lines.
    if (task.params.contains(TaskKeys::kFilePath)) {
        int ret = CMATRIX_ERR_FAILED;
        if (task.handle) {
            const QByteArray path = task.params.value(TaskKeys::kFilePath).toString().toUtf8();
            ret = CMatrix_GetRunLog(task.handle->handle(), path.constData());
            SdkCallLog::call("CMatrix_GetRunLog", ret);
        }
        emit signalGetRunLogResult(ret);
        return;
    }

    QStringList lines;
    if (task.handle) {
        const CMHANDLE handle = task.handle->handle();
        const int type = task.params.value(TaskKeys::kLogType).toInt();
        const uint32_t begin = task.params.value(TaskKeys::kBeginTime).toUInt();
        const uint32_t end = task.params.value(TaskKeys::kEndTime).toUInt();
        SdkArray<LogInfo_t> logs(handle);
        const int count = CMatrix_GetLog(handle, type, begin, end, logs.out());
        SdkCallLog::call("CMatrix_GetLog", count);
        for (int i = 0; i < count && logs.get(); ++i)
            lines.append(logLine(logs[i]));
    }
    emit signalGetLogsResult(lines);
}

} // namespace kvms_matrix
