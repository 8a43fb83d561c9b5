// MatrixSdkWorker: construction, the task queue and the worker loop.
#include "MatrixSdkWorker.h"

#include "KovCapThread.h"
#include "SdkCallLog.h"
#include "SyncLocker.h"
#include "TaskKeys.h"
#include "UpdateContext.h"

#include "KSingleton.h"
#include "SystemMsg.h"

#include <exception>

namespace kvms_matrix {

MatrixSdkWorker::MatrixSdkWorker(QObject* parent)
    : KCOMMON::KThread(parent)
    , m_capThread(new KovCapThread(this))
{
    init();
}

MatrixSdkWorker::~MatrixSdkWorker()
{
    // The loop only ends on an empty queue with the flag cleared; KThread's own stop would wait
    // forever on a loop that is still told to run.
    m_capThread->stop();
    m_capThread->wait(); // it calls back into this object
    m_running.store(false);
    wait();
}

void MatrixSdkWorker::init()
{
    registerMetaTypes();
    connectSignalsWithSlots();
}

void MatrixSdkWorker::registerMetaTypes()
{
    // The names the forms know the types by, in this order.
    qRegisterMetaType<MatrixInfoMap>("MatrixInfoMap");
    qRegisterMetaType<MatrixInfoList>("MatrixInfoList");
    qRegisterMetaType<UserData>("UserData");
    qRegisterMetaType<MatrixWindowInfo>("MatrixWindowInfo");
    qRegisterMetaType<MatrixSceneInfo>("MatrixSceneInfo");
    qRegisterMetaType<MatrixLoopInfo>("MatrixLoopInfo");
    qRegisterMetaType<MatrixSubWindowInfo>("MatrixSubWindowInfo");
    qRegisterMetaType<ImageDataInfo>("ImageDataInfo");
    qRegisterMetaType<QSharedPointer<CSharedHandle>>("CMHandle");
    qRegisterMetaType<MatrixBannerInfo>("MatrixBannerInfo");
    qRegisterMetaType<DevPlayFile_t>("DevPalyFile_t");
    qRegisterMetaType<DeviceAudioInfo_t>("DeviceAudioInfo_t");

    // The spellings of the signal signatures: queued delivery looks argument types up by the
    // text moc recorded, which is unqualified inside this namespace.
    qRegisterMetaType<MatrixInfo>("MatrixInfo");
    qRegisterMetaType<MatrixInfoMap>("QMap<QString,MatrixInfo>");
    qRegisterMetaType<MatrixInfoList>("QList<MatrixInfo>");
    qRegisterMetaType<QSharedPointer<CSharedHandle>>("QSharedPointer<CSharedHandle>");
    qRegisterMetaType<ConnectErrorMsgInfo>("ConnectErrorMsgInfo");
    qRegisterMetaType<QList<MatrixWindowInfo>>("QList<MatrixWindowInfo>");
    qRegisterMetaType<QList<MatrixSceneInfo>>("QList<MatrixSceneInfo>");
    qRegisterMetaType<QList<MatrixLoopInfo>>("QList<MatrixLoopInfo>");
    qRegisterMetaType<QList<MatrixSubWindowInfo>>("QList<MatrixSubWindowInfo>");
    qRegisterMetaType<DevPlayFile_t>("DevPlayFile_t");
    qRegisterMetaType<QList<DevPlayFile_t>>("QList<DevPlayFile_t>");
    qRegisterMetaType<DeviceNetworkCfg_t>("DeviceNetworkCfg_t");
    qRegisterMetaType<ScreenResolution_t>("ScreenResolution_t");
    qRegisterMetaType<ScreenColor>("ScreenColor");
}

void MatrixSdkWorker::connectSignalsWithSlots()
{
    connect(this, &QThread::finished, this, &MatrixSdkWorker::restartAfterLeaving, Qt::QueuedConnection);
    connect(KCOMMON::KSingleton<SystemMsg>::instance(), &SystemMsg::signalQuitSystem, this,
        &MatrixSdkWorker::slotQuitSystem);
}

WorkerTaskParam MatrixSdkWorker::makeTask(int kind, QSharedPointer<CSharedHandle> handle)
{
    WorkerTaskParam task;
    task.taskType = kind;
    task.handle = std::move(handle);
    return task;
}

WorkerTaskParam MatrixSdkWorker::makeWindowTask(
    int kind, QSharedPointer<CSharedHandle> handle, const MatrixWindowInfo& window, int subWindowId)
{
    WorkerTaskParam task = makeTask(kind, std::move(handle));
    task.params.insert(TaskKeys::kWindowId, window.windowId);
    task.params.insert(TaskKeys::kSubWindowId, subWindowId);
    task.userData = new MatrixWindowInfo(window);
    return task;
}

void MatrixSdkWorker::queueTask(const WorkerTaskParam& task)
{
    SyncLocker lock(&m_taskMutex);
    m_taskList.append(task);
    m_pendingCount.store(m_taskList.size(), std::memory_order_release);
}

bool MatrixSdkWorker::takeTask(WorkerTaskParam& task)
{
    SyncLocker lock(&m_taskMutex);
    if (m_taskList.isEmpty())
        return false;
    task = m_taskList.takeFirst();
    m_pendingCount.store(m_taskList.size(), std::memory_order_release);
    return true;
}

void MatrixSdkWorker::startIfStopped()
{
    {
        SyncLocker lock(&m_taskMutex);
        m_running.store(true);
        // The loop may have decided to end just before the flag came back. The caller does not
        // wait for it: the thread starts afresh once it has finished (restartAfterLeaving), so the
        // task queued with this call is not stranded.
        if (m_leaving && !isFinished()) {
            m_restartWhenFinished = true;
            return;
        }
        m_leaving = false;
    }
    if (!isRunning())
        start(QThread::InheritPriority);
}

void MatrixSdkWorker::restartAfterLeaving()
{
    {
        SyncLocker lock(&m_taskMutex);
        if (!m_restartWhenFinished)
            return;
        m_restartWhenFinished = false;
        m_leaving = false;
    }
    wait(); // the thread has finished its run: this only collects it
    start(QThread::InheritPriority);
}

void MatrixSdkWorker::finishPendingAndStop()
{
    m_running.store(false);
}

void MatrixSdkWorker::setDispatchObserver(DispatchObserver observer, void* context)
{
    SyncLocker lock(&m_observerMutex);
    m_observer = observer;
    m_observerContext = context;
}

void MatrixSdkWorker::run()
{
    for (;;) {
        // The emptiness test reads the counter, not the queue, and takes no lock: an idle worker
        // polls once a millisecond. Only the decision to end is confirmed under the lock.
        if (m_pendingCount.load(std::memory_order_acquire) == 0 && !m_running.load()) {
            SyncLocker lock(&m_taskMutex);
            if (m_taskList.isEmpty() && !m_running.load()) {
                m_leaving = true;
                return;
            }
        }
        WorkerTaskParam task;
        if (m_pendingCount.load(std::memory_order_acquire) > 0)
            takeTask(task);
        dispatch(task);
        QThread::msleep(1);
    }
}

void MatrixSdkWorker::dispatch(const WorkerTaskParam& task)
{
    DispatchObserver observer = nullptr;
    void* context = nullptr;
    {
        SyncLocker lock(&m_observerMutex);
        observer = m_observer;
        context = m_observerContext;
    }
    if (observer && task.taskType != TaskKind::None)
        observer(task, context);

    const TaskHandler handler
        = task.taskType == TaskKind::RemoveMdHandle ? &MatrixSdkWorker::doRemoveMdHandle : handlerOf(task.taskType);
    if (!handler)
        return;
    // A task that fails this way is lost, but the worker goes on with the next one: nothing a
    // decoder sends may end the client.
    m_wallSourcesOf = nullptr; // what the last task read of the wall may have changed since
    try {
        (this->*handler)(task);
    } catch (const std::exception& e) {
        SdkCallLog::line(
            QStringLiteral("{ taskType = %1 , failed = %2 }").arg(task.taskType).arg(QString::fromLocal8Bit(e.what())));
    } catch (...) {
        SdkCallLog::line(QStringLiteral("{ taskType = %1 , failed }").arg(task.taskType));
    }
}

} // namespace kvms_matrix
