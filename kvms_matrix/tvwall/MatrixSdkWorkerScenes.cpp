// MatrixSdkWorker: scenes, the decoder's stored snapshots of its whole wall.
#include "MatrixSdkWorker.h"

#include "SdkArray.h"
#include "SdkCallLog.h"
#include "SdkText.h"
#include "TaskKeys.h"
#include "WallHandle.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSet>

namespace kvms_matrix {

namespace {

// The name as the decoder will store it: cut to its 100-byte field.
QByteArray sceneNameBytes(const QString& name)
{
    char field[sizeof(SceneInfo_t::name)];
    SdkText::copy(field, sizeof field, name);
    return QByteArray(field);
}

QString scenesJson(const QList<MatrixSceneInfo>& scenes)
{
    QJsonArray list;
    for (const MatrixSceneInfo& scene : scenes)
        list.append(QJsonObject {
            { QStringLiteral("sceneId"), scene.sceneId }, { QStringLiteral("sceneName"), scene.sceneName } });
    return QString::fromUtf8(
        QJsonDocument(QJsonObject { { QStringLiteral("ret"), list } }).toJson(QJsonDocument::Compact));
}

// The smallest id from 1 upward that no scene uses; -1 when every id up to 0x7FFFFFFF is taken.
int firstFreeSceneId(const QList<MatrixSceneInfo>& scenes)
{
    if (scenes.isEmpty())
        return 1;
    QSet<int> used;
    for (const MatrixSceneInfo& scene : scenes)
        used.insert(scene.sceneId);
    for (int id = 1; id < 0x7FFFFFFF; ++id) {
        if (!used.contains(id))
            return id;
    }
    return -1;
}

} // namespace

QList<MatrixSceneInfo> MatrixSdkWorker::getMatrixScenes(QSharedPointer<CSharedHandle> handle)
{
    int ret = CMATRIX_OK;
    return readMatrixScenes(handle, ret);
}

QList<MatrixSceneInfo> MatrixSdkWorker::readMatrixScenes(QSharedPointer<CSharedHandle> handle, int& ret)
{
    QList<MatrixSceneInfo> scenes;
    ret = CMATRIX_ERR_FAILED;
    if (!WallHandle::usable(*this, handle))
        return scenes;
    const CMHANDLE sdk = handle->handle();
    SdkArray<SceneInfo_t> records(sdk);
    const int count = CMatrix_SceneGet(sdk, records.out());
    ret = count < 0 ? count : CMATRIX_OK;
    for (int i = 0; i < count && records.get(); ++i) {
        MatrixSceneInfo scene;
        scene.sceneId = int(records[i].id);
        scene.sceneName = SdkText::read(records[i].name, sizeof records[i].name);
        scenes.append(scene);
    }
    SdkCallLog::line(
        QStringLiteral("{ funcName = %1 , params { mHandle = %2 } , ret = %3  , time = %4 }")
            .arg(QStringLiteral("getMatrixScenes"), SdkCallLog::pointer(sdk), scenesJson(scenes), SdkCallLog::now()));
    return scenes;
}

int MatrixSdkWorker::saveMatrixScene(QSharedPointer<CSharedHandle> handle, int& sceneId, const QString& name)
{
    if (!WallHandle::usable(*this, handle))
        return CMATRIX_ERR_FAILED;
    const CMHANDLE sdk = handle->handle();
    int read = CMATRIX_OK;
    const QList<MatrixSceneInfo> scenes = readMatrixScenes(handle, read);
    if (uint(sceneId) > 0xFFFFFFFEu) {
        // Without the list a free id is a guess, and a wrong guess overwrites the operator's scene.
        if (read != CMATRIX_OK)
            return read;
        sceneId = firstFreeSceneId(scenes);
    }
    const QByteArray nameBytes = sceneNameBytes(name);
    SdkCallLog::Timer timer;
    const int ret = CMatrix_SceneCreate(sdk, uint32_t(sceneId), nameBytes.constData());
    SdkCallLog::line(QStringLiteral("{ funcName = %1 , params { mHandle = %2 , sceneId = %3 , sceneName = %4 } , "
                                    "ret = %5  , time = %6  , Elapsed = %7 }")
                         .arg(QStringLiteral("doSaveScene"), SdkCallLog::pointer(sdk), QString::number(sceneId),
                             QString::fromUtf8(nameBytes), QString::number(ret), SdkCallLog::now(), timer.elapsed()));
    return ret;
}

int MatrixSdkWorker::restoreMatrixScene(QSharedPointer<CSharedHandle> handle, int sceneId)
{
    if (!WallHandle::usable(*this, handle))
        return CMATRIX_ERR_FAILED;
    const CMHANDLE sdk = handle->handle();
    SdkCallLog::Timer timer;
    const int ret = CMatrix_SceneApply(sdk, uint32_t(sceneId));
    SdkCallLog::line(QStringLiteral(
        "{ funcName = %1 , params { mHandle = %2 , sceneId = %3 } , ret = %4 , time = %5 ,  Elapsed = %6 }")
                         .arg(QStringLiteral("CMatrix_SceneApply"), SdkCallLog::pointer(sdk), QString::number(sceneId),
                             QString::number(ret), SdkCallLog::now(), timer.elapsed()));
    return ret;
}

int MatrixSdkWorker::removeMatrixScene(QSharedPointer<CSharedHandle> handle, int sceneId)
{
    if (!WallHandle::usable(*this, handle))
        return CMATRIX_ERR_FAILED;
    const CMHANDLE sdk = handle->handle();
    const uint32_t id = uint32_t(sceneId);
    const int ret = CMatrix_SceneDelete(sdk, &id, 1);
    SdkCallLog::line(QStringLiteral("{funcName = %1 , params { mHandle = %2 , sceneId = %3 } , ret = %4 , time = %5 }")
                         .arg(QStringLiteral("removeMatrixScene"), SdkCallLog::pointer(sdk), QString::number(sceneId),
                             QString::number(ret), SdkCallLog::now()));
    return ret;
}

void MatrixSdkWorker::doGetScene(const WorkerTaskParam& task)
{
    emit signalGetSceneInfoResult(getMatrixScenes(task.handle));
}

void MatrixSdkWorker::doSaveScene(const WorkerTaskParam& task)
{
    int sceneId = task.params.value(TaskKeys::kSceneId, -1).toInt();
    const QString name = task.params.value(TaskKeys::kSceneName).toString();
    const int ret = saveMatrixScene(task.handle, sceneId, name);
    // The name goes back as the decoder keeps it, cut to its field.
    emit signalSaveSceneResult(ret, sceneId, QString::fromUtf8(sceneNameBytes(name)), task.userData);
}

void MatrixSdkWorker::doRemoveScene(const WorkerTaskParam& task)
{
    emit signalRemoveSceneResult(removeMatrixScene(task.handle, task.params.value(TaskKeys::kSceneId).toInt()));
}

void MatrixSdkWorker::doRestoreScene(const WorkerTaskParam& task)
{
    emit signalRestoreSceneResult(restoreMatrixScene(task.handle, task.params.value(TaskKeys::kSceneId).toInt()));
}

void MatrixSdkWorker::doModifyScene(const WorkerTaskParam& task)
{
    // No rename on the decoder: delete, then store the wall as it is now under the same id.
    int sceneId = task.params.value(TaskKeys::kSceneId).toInt();
    int ret = removeMatrixScene(task.handle, sceneId);
    if (ret == CMATRIX_OK)
        ret = saveMatrixScene(task.handle, sceneId, task.params.value(TaskKeys::kSceneName).toString());
    emit signalModifySceneResult(ret, sceneId);
}

} // namespace kvms_matrix
