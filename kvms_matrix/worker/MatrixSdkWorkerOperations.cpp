// MatrixSdkWorker: the queuing operations of the TV wall (windows, layout, sources, scenes,
// loops, banners). Each builds one task and appends it; the handlers live in tvwall/.
// Records that a handler needs whole travel as heap copies in the pointer slot; the handler
// deletes them.
#include "MatrixSdkWorker.h"

#include "SyncLocker.h"
#include "TaskKeys.h"

#include <utility>

namespace kvms_matrix {

void MatrixSdkWorker::getWindowInfo(QSharedPointer<CSharedHandle> handle)
{
    queueTask(makeTask(TaskKind::GetWindowInfo, std::move(handle)));
}

void MatrixSdkWorker::addWindowInfo(QSharedPointer<CSharedHandle> handle, const MatrixWindowInfo& window)
{
    WorkerTaskParam task = makeTask(TaskKind::AddWindowInfo, std::move(handle));
    task.userData = new MatrixWindowInfo(window);
    queueTask(task);
}

void MatrixSdkWorker::removeWindow(QSharedPointer<CSharedHandle> handle, const MatrixWindowInfo& window)
{
    WorkerTaskParam task = makeTask(TaskKind::RemoveWindow, std::move(handle));
    task.userData = new MatrixWindowInfo(window);
    queueTask(task);
}

void MatrixSdkWorker::getLayout(QSharedPointer<CSharedHandle> handle, void* userData)
{
    WorkerTaskParam task = makeTask(TaskKind::GetLayout, std::move(handle));
    task.userData = userData;
    queueTask(task);
}

void MatrixSdkWorker::setLayout(
    const QString& name, MatrixType type, int rows, int cols, const QList<MatrixInfo>& screens, const QString& mainIp)
{
    {
        SyncLocker lock(&m_deviceMutex);
        m_layoutScreens = screens;
    }
    WorkerTaskParam task = makeTask(TaskKind::SetLayout, getHandleByIp(mainIp));
    task.params.insert(TaskKeys::kLayoutRow, rows);
    task.params.insert(TaskKeys::kLayoutCol, cols);
    task.params.insert(TaskKeys::kMatrixName, name);
    task.params.insert(TaskKeys::kMatrixType, type);
    task.params.insert(TaskKeys::kMatrixIp, mainIp);
    queueTask(task);
}

QList<MatrixInfo> MatrixSdkWorker::layoutScreens() const
{
    SyncLocker lock(&m_deviceMutex);
    return m_layoutScreens;
}

void MatrixSdkWorker::checkScreen(QSharedPointer<CSharedHandle> handle, int location, bool open)
{
    WorkerTaskParam task = makeTask(TaskKind::CheckScreen, handle);
    task.params.insert(TaskKeys::kOpenCheckScreen, open);
    task.params.insert(TaskKeys::kMatrixWindowLocation, location);
    if (handle) {
        task.params.insert(TaskKeys::kMatrixIp, handle->ip());
        task.params.insert(TaskKeys::kUserName, handle->userName());
        task.params.insert(TaskKeys::kUserPassword, handle->password());
    }
    queueTask(task);
}

void MatrixSdkWorker::setWindowSplit(QSharedPointer<CSharedHandle> handle, int windowId, int split)
{
    WorkerTaskParam task = makeTask(TaskKind::SetWindowSplit, std::move(handle));
    task.params.insert(TaskKeys::kWindowId, windowId);
    task.params.insert(TaskKeys::kWindowSplit, split);
    queueTask(task);
}

void MatrixSdkWorker::clearWindow(QSharedPointer<CSharedHandle> handle, int windowId, int subWindowId, int windowType)
{
    WorkerTaskParam task = makeTask(TaskKind::ClearWindow, std::move(handle));
    task.params.insert(TaskKeys::kWindowId, windowId);
    task.params.insert(TaskKeys::kSubWindowId, subWindowId);
    task.params.insert(TaskKeys::kWindowType, windowType);
    queueTask(task);
}

void MatrixSdkWorker::setFullWindow(QSharedPointer<CSharedHandle> handle, int windowId, int subWindowId, bool full)
{
    WorkerTaskParam task = makeTask(TaskKind::SetFullWindow, std::move(handle));
    task.params.insert(TaskKeys::kWindowId, windowId);
    task.params.insert(TaskKeys::kSubWindowId, subWindowId);
    task.params.insert(TaskKeys::kIsFullWindow, full ? 1 : 0);
    queueTask(task);
}

void MatrixSdkWorker::moveFloatingWindow(QSharedPointer<CSharedHandle> handle, const MatrixWindowInfo& window)
{
    WorkerTaskParam task = makeTask(TaskKind::MoveFloatingWindow, std::move(handle));
    task.userData = new MatrixWindowInfo(window);
    queueTask(task);
}

void MatrixSdkWorker::setWindowSignalSource(
    QSharedPointer<CSharedHandle> handle, const MatrixWindowInfo& window, int subWindowId, bool addingPicture)
{
    WorkerTaskParam task = makeTask(TaskKind::SetWindowSignalSource, std::move(handle));
    task.params.insert(TaskKeys::kSubWindowId, subWindowId);
    task.params.insert(TaskKeys::kMatrixAddingPicture, addingPicture);
    task.userData = new MatrixWindowInfo(window);
    queueTask(task);
}

void MatrixSdkWorker::getScene(QSharedPointer<CSharedHandle> handle)
{
    queueTask(makeTask(TaskKind::GetScene, std::move(handle)));
}

void MatrixSdkWorker::saveScene(QSharedPointer<CSharedHandle> handle, int sceneId, QString name, void* userData)
{
    WorkerTaskParam task = makeTask(TaskKind::SaveScene, std::move(handle));
    task.params.insert(TaskKeys::kSceneId, sceneId);
    task.params.insert(TaskKeys::kSceneName, name);
    task.userData = userData;
    queueTask(task);
}

void MatrixSdkWorker::removeScene(QSharedPointer<CSharedHandle> handle, int sceneId)
{
    WorkerTaskParam task = makeTask(TaskKind::RemoveScene, std::move(handle));
    task.params.insert(TaskKeys::kSceneId, sceneId);
    queueTask(task);
}

void MatrixSdkWorker::restoreScene(QSharedPointer<CSharedHandle> handle, int sceneId)
{
    WorkerTaskParam task = makeTask(TaskKind::RestoreScene, std::move(handle));
    task.params.insert(TaskKeys::kSceneId, sceneId);
    queueTask(task);
}

void MatrixSdkWorker::modifyScene(QSharedPointer<CSharedHandle> handle, int sceneId, QString name)
{
    WorkerTaskParam task = makeTask(TaskKind::ModifyScene, std::move(handle));
    task.params.insert(TaskKeys::kSceneId, sceneId);
    task.params.insert(TaskKeys::kSceneName, name);
    queueTask(task);
}

void MatrixSdkWorker::getLoopInfo(QSharedPointer<CSharedHandle> handle)
{
    queueTask(makeTask(TaskKind::GetLoopInfo, std::move(handle)));
}

void MatrixSdkWorker::setLoopInfo(QSharedPointer<CSharedHandle> handle, const MatrixLoopInfo& loop)
{
    WorkerTaskParam task = makeTask(TaskKind::SetLoopInfo, std::move(handle));
    task.params.insert(TaskKeys::kLoopId, loop.loopId);
    task.userData = new MatrixLoopInfo(loop);
    queueTask(task);
}

void MatrixSdkWorker::removeLoopInfo(QSharedPointer<CSharedHandle> handle, int loopId)
{
    WorkerTaskParam task = makeTask(TaskKind::RemoveLoopInfo, std::move(handle));
    task.params.insert(TaskKeys::kLoopId, loopId);
    queueTask(task);
}

void MatrixSdkWorker::restoreLoopInfo(
    QSharedPointer<CSharedHandle> handle, int startIndex, int windowId, const MatrixLoopInfo& loop)
{
    WorkerTaskParam task = makeTask(TaskKind::RestoreLoopInfo, std::move(handle));
    task.taskValue = startIndex;
    task.params.insert(TaskKeys::kWindowId, windowId);
    task.params.insert(TaskKeys::kLoopId, loop.loopId);
    task.userData = new MatrixLoopInfo(loop);
    queueTask(task);
}

void MatrixSdkWorker::setBanner(QSharedPointer<CSharedHandle> handle, const MatrixBannerInfo& banner)
{
    WorkerTaskParam task = makeTask(TaskKind::SetBanner, std::move(handle));
    task.userData = new MatrixBannerInfo(banner);
    queueTask(task);
}

void MatrixSdkWorker::removeBanner(QSharedPointer<CSharedHandle> handle)
{
    queueTask(makeTask(TaskKind::RemoveBanner, std::move(handle)));
}

} // namespace kvms_matrix
