// The wall as one picture: what the canvas lays over its panels as a live mimic of the wall.
#include "MatrixSdkWorker.h"

#include "SdkArray.h"
#include "SdkCallLog.h"
#include "WallHandle.h"

namespace kvms_matrix {

namespace {

const QString kSnapshotWidth = QStringLiteral("snapshot_width");
const QString kSnapshotHeight = QStringLiteral("snapshot_height");

} // namespace

void MatrixSdkWorker::getWallSnapshot(QSharedPointer<CSharedHandle> handle, int width, int height)
{
    WorkerTaskParam task = makeTask(TaskKind::GetWallSnapshot, std::move(handle));
    task.params.insert(kSnapshotWidth, width);
    task.params.insert(kSnapshotHeight, height);
    queueTask(task);
}

void MatrixSdkWorker::doGetWallSnapshot(const WorkerTaskParam& task)
{
    if (!WallHandle::usable(*this, task.handle)) {
        emit signalGetWallSnapshotResult(-1, task.handle, QByteArray(), QImage());
        return;
    }
    SdkArray<unsigned char> jpeg(task.handle->handle());
    const int size = CMatrix_GetWallSnapshot(task.handle->handle(), task.params.value(kSnapshotWidth).toInt(),
        task.params.value(kSnapshotHeight).toInt(), jpeg.out());
    SdkCallLog::call("CMatrix_GetWallSnapshot", size < 0 ? size : 0);
    if (size < 0 || !jpeg.get()) {
        emit signalGetWallSnapshotResult(size < 0 ? size : CMATRIX_ERR_FAILED, task.handle, QByteArray(), QImage());
        return;
    }
    const QByteArray bytes(reinterpret_cast<const char*>(jpeg.get()), size);
    // Read here, on the worker thread, so the page only draws it.
    emit signalGetWallSnapshotResult(0, task.handle, bytes, QImage::fromData(bytes, "JPEG"));
}

} // namespace kvms_matrix
