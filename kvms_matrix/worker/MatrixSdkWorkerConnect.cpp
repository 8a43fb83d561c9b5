// MatrixSdkWorker: decoder connections, the connection registry and the status callback.
#include "MatrixSdkWorker.h"

#include "KovCapThread.h"

#include "SdkCallLog.h"
#include "SyncLocker.h"
#include "TaskKeys.h"

#include "KSingleton.h"

#include <QDateTime>
#include <QUuid>

#include <cstring>
#include <utility>

namespace kvms_matrix {

namespace {

constexpr int kControlCallTimeoutMs = 2000;

} // namespace

void MatrixSdkWorker::connectMatrix(const MatrixInfo& info, void* userData)
{
    WorkerTaskParam task;
    task.taskType = TaskKind::ConnectMatrix;
    task.params.insert(TaskKeys::kUserId, info.id);
    task.params.insert(TaskKeys::kMatrixIp, info.ip);
    task.params.insert(TaskKeys::kMatrixPort, info.manager_port);
    task.params.insert(TaskKeys::kUserName, info.username);
    task.params.insert(TaskKeys::kUserPassword, info.password);
    task.params.insert(TaskKeys::kMatrixType, info.type);
    task.params.insert(TaskKeys::kMatrixPortForAdd, info.port);
    task.params.insert(TaskKeys::kMatrixVersion, info.version);
    task.userData = userData;
    queueTask(task);
    startIfStopped();
}

void MatrixSdkWorker::disconnectMatrix(QSharedPointer<CSharedHandle> handle)
{
    WorkerTaskParam task;
    task.taskType = TaskKind::DisconnectMatrix;
    task.handle = std::move(handle);
    queueTask(task);
}

void MatrixSdkWorker::disconnectAllMatrix()
{
    // Queued outside the registry lock; a handle is never released under it.
    const QMap<QString, QSharedPointer<CSharedHandle>> handles = registeredHandles();
    for (const QSharedPointer<CSharedHandle>& handle : handles)
        disconnectMatrix(handle);
}

void MatrixSdkWorker::slotQuitSystem()
{
    // The desktop projection draws with the application's screens and pointer, which go away
    // with the application: its loop ends now, within one short round, and is not waited for
    // here (this is the GUI thread). The running flag stays set: the disconnects still have to run.
    endCapture();
    disconnectAllMatrix();
}

QSharedPointer<CSharedHandle> MatrixSdkWorker::getHandleByIp(const QString& ip)
{
    SyncLocker lock(&m_registryMutex);
    return m_handleMap.value(ip);
}

QSharedPointer<CSharedHandle> MatrixSdkWorker::getVmHandle()
{
    SyncLocker lock(&m_registryMutex);
    return m_vmHandle;
}

void MatrixSdkWorker::removeHandle(QString ip)
{
    QSharedPointer<CSharedHandle> removed; // may be the last pointer: released after the lock
    SyncLocker lock(&m_registryMutex);
    removed = m_handleMap.take(ip);
}

QMap<QString, QSharedPointer<CSharedHandle>> MatrixSdkWorker::registeredHandles() const
{
    SyncLocker lock(&m_registryMutex);
    return m_handleMap;
}

QMap<QString, MatrixInfo> MatrixSdkWorker::connectedMatrixMap() const
{
    SyncLocker lock(&m_registryMutex);
    return m_connectedMatrixMap;
}

void MatrixSdkWorker::doConnectMatrix(const WorkerTaskParam& task)
{
    const QString id = task.params.value(TaskKeys::kUserId).toString();
    const QString ip = task.params.value(TaskKeys::kMatrixIp).toString();
    const int port = task.params.value(TaskKeys::kMatrixPort).toInt();
    const QString userName = task.params.value(TaskKeys::kUserName).toString();
    const QString password = task.params.value(TaskKeys::kUserPassword).toString();
    const int matrixType = task.params.value(TaskKeys::kMatrixType).toInt();
    const int addPort = task.params.value(TaskKeys::kMatrixPortForAdd).toInt();
    const QString version = task.params.value(TaskKeys::kMatrixVersion).toString();

    CMHANDLE sdkHandle = CMatrix_Create();
    CMatrix_RegisterCallback(sdkHandle, &MatrixSdkWorker::matrixConnectStatusCallback, this);

    const int ret = CMatrix_Connect(sdkHandle, ip.toUtf8().constData(), static_cast<unsigned short>(port),
        userName.toUtf8().constData(), password.toUtf8().constData(), 3000);
    SdkCallLog::call("CMatrix_Connect", ret);

    ConnectErrorMsgInfo errorInfo;
    if (ret != CMATRIX_OK) {
        char buffer[256];
        std::memset(buffer, 0, sizeof buffer);
        if (CMatrix_GetLoginErrMsg(sdkHandle, buffer, sizeof buffer) == CMATRIX_OK) {
            buffer[sizeof buffer - 1] = '\0';
            parseConnectErrorMsg(buffer, errorInfo);
        }
    } else {
        // A decoder answers a control call in milliseconds; one that takes longer than this holds
        // every other decoder's work up, so the call gives up (a hung unit is dropped sooner, by
        // heartbeat silence). Files moved by maintenance calls are small enough to pass within it.
        CMatrix_SetTimeout(sdkHandle, kControlCallTimeoutMs);
        const QDateTime now = QDateTime::currentDateTime();
        const QDate date = now.date();
        const QTime time = now.time();
        const int timeRet = CMatrix_SetTime(
            sdkHandle, date.year(), date.month(), date.day(), time.hour(), time.minute(), time.second());
        SdkCallLog::call("CMatrix_SetTime", timeRet); // a clock that cannot be set is not a failed login
    }

    // A failed login is registered too: the forms look the handle up by IP either way.
    QSharedPointer<CSharedHandle> handle(new CSharedHandle(sdkHandle));
    handle->setIp(ip);
    handle->setUserName(userName);
    handle->setPassword(password);
    handle->setType(matrixType);
    handle->setManagerPort(port);
    handle->setAddPort(addPort);
    handle->setId(id);
    handle->setVersion(version);

    MatrixInfo info;
    info.id = QUuid::createUuid().toString(QUuid::WithoutBraces);
    info.ip = ip;
    info.manager_port = port;
    info.username = userName;
    info.password = password;
    info.type = matrixType;
    info.version = version;

    // Pointers displaced from the registry are released only after the lock is gone: the last
    // one destroys its SDK connection.
    QSharedPointer<CSharedHandle> replaced;
    QSharedPointer<CSharedHandle> previousVm;
    QSharedPointer<CSharedHandle> registered;
    {
        SyncLocker lock(&m_registryMutex);
        replaced = m_handleMap.value(ip);
        m_handleMap.insert(ip, handle);
        if (ret == CMATRIX_OK)
            previousVm = std::exchange(m_vmHandle, handle);
        if (!m_connectedMatrixMap.contains(ip))
            m_connectedMatrixMap.insert(ip, info);
        registered = m_handleMap.value(ip);
    }

    if (replaced && replaced != handle)
        forgetDistributionsOf(replaced->handle());
    emit signalConnectMatrixResult(registered, ret, matrixType, task.userData);
    if (ret != CMATRIX_OK)
        emit signalConnectErrorMsg(ip, errorInfo, task.userData);
}

void MatrixSdkWorker::doDisconnectMatrix(const WorkerTaskParam& task)
{
    if (!task.handle)
        return;
    forgetDistributionsOf(task.handle->handle());
    const int ret = CMatrix_Disconnect(task.handle->handle());
    SdkCallLog::call("CMatrix_Disconnect", ret);

    const QString ip = task.handle->ip();
    QSharedPointer<CSharedHandle> removed;
    QSharedPointer<CSharedHandle> previousVm;
    {
        SyncLocker lock(&m_registryMutex);
        removed = m_handleMap.take(ip);
        if (m_vmHandle == task.handle)
            previousVm = std::exchange(m_vmHandle, {});
    }
    emit signalDisconnectMatrixResult(ret, ip);
}

bool MatrixSdkWorker::findIpOfSdkHandle(void* sdkHandle, QString& ip) const
{
    SyncLocker lock(&m_registryMutex);
    for (auto it = m_handleMap.cbegin(); it != m_handleMap.cend(); ++it) {
        if (it.value() && it.value()->handle() == sdkHandle) {
            ip = it.key();
            return true;
        }
    }
    return false;
}

void MatrixSdkWorker::matrixConnectStatusCallback(void* sdkHandle, int event, void* user)
{
    if (event != CMATRIX_EVENT_DISCONNECTED)
        return;
    SdkCallLog::event("matrixConnectStatusCallback", event);

    MatrixSdkWorker* worker
        = user ? static_cast<MatrixSdkWorker*>(user) : KCOMMON::KSingleton<MatrixSdkWorker>::instance();
    QString ip;
    // The entry stays registered: the form that receives the signal decides to reconnect or not.
    if (worker->findIpOfSdkHandle(sdkHandle, ip))
        emit worker->signalDisconnectStatus(sdkHandle, ip);
}

} // namespace kvms_matrix
