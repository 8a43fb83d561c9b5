#pragma once

#include "CMatrixSDK.h"
#include "CSharedHandle.h"
#include "ConnectErrorMsgInfo.h"
#include "ImageDataInfo.h"
#include "MatrixBannerInfo.h"
#include "MatrixInfo.h"
#include "MatrixLoopInfo.h"
#include "MatrixSceneInfo.h"
#include "MatrixSubWindowInfo.h"
#include "MatrixType.h"
#include "MatrixWindowInfo.h"
#include "SdkMetaTypes.h"
#include "TvWallManagement.h"
#include "UserData.h"
#include "WorkerTaskParam.h"

#include "KThread.h"

#include <QDateTime>
#include <QList>
#include <QMap>
#include <QMutex>
#include <QSharedPointer>
#include <QString>
#include <QStringList>

#include <atomic>
#include <map>
#include <memory>

namespace kvms_matrix {

struct UpdateContext;

// The one object through which the module talks to decoders. Public operations only append a
// task to the queue and return; the worker's thread runs the tasks first in, first out and
// reports each outcome by a signal. Reached through KCOMMON::KSingleton<MatrixSdkWorker>.
//
// Signal argument types are spelled as registered in init(), so that queued delivery to the
// forms on the GUI thread finds them by name.
class MatrixSdkWorker : public KCOMMON::KThread {
    Q_OBJECT

public:
    explicit MatrixSdkWorker(QObject* parent = nullptr);
    ~MatrixSdkWorker() override;

    // ---- queue ------------------------------------------------------------------------------
    // Appends a prepared task; every public operation below ends here.
    void queueTask(const WorkerTaskParam& task);
    // Tasks waiting, read without the queue lock (a hint, as the loop itself uses it).
    int pendingTaskCount() const { return m_pendingCount.load(std::memory_order_acquire); }
    bool isWorkerRunning() const { return m_running.load(); }
    // Clears the running flag: the thread carries out what is queued and then ends. Only a
    // later connectMatrix (or searchMatrix) starts it again.
    void finishPendingAndStop();

    // Called on the worker thread right before each dequeued task is dispatched, whatever its
    // kind; for benchmarks and tests. Pass nullptr to remove.
    using DispatchObserver = void (*)(const WorkerTaskParam& task, void* context);
    void setDispatchObserver(DispatchObserver observer, void* context);

    // ---- connections (MatrixSdkWorkerConnect.cpp) -------------------------------------------
    // Queues a login to the decoder and starts the thread if it is not running.
    void connectMatrix(const MatrixInfo& info, void* userData);
    void disconnectMatrix(QSharedPointer<CSharedHandle> handle);
    void disconnectAllMatrix();
    // Registry lookups, on the caller's thread.
    QSharedPointer<CSharedHandle> getHandleByIp(const QString& ip);
    QSharedPointer<CSharedHandle> getVmHandle(); // the connection of the latest successful login
    void removeHandle(QString ip);
    QMap<QString, QSharedPointer<CSharedHandle>> registeredHandles() const;
    // Decoders connected at least once, each with the data of its first connect.
    QMap<QString, MatrixInfo> connectedMatrixMap() const;

    // ---- error texts and login errors (MatrixSdkWorkerErrors.cpp) ---------------------------
    static QString getErrorInfo(int code);
    static void parseConnectErrorMsg(const char* text, ConnectErrorMsgInfo& info);

    // ---- configuration files (MatrixSdkWorkerFiles.cpp) -------------------------------------
    static void addAllOneMatrixToJson(const QList<MatrixInfo>& list);
    static QMap<QString, MatrixInfo> getAllOneMatrixFromJson();
    static void writeMatrixLastConnectedInfoToJson(const MatrixInfo& info);
    static MatrixInfo readMatrixLastConnectedInfoFromJson();
    static void addDecoderToJson(const QList<MatrixInfo>& list);
    static QMap<QString, MatrixInfo> getDecoderFromJson();
    static void addMatrixToJson(const QList<TvWallManagement>& list);
    static QMap<QString, TvWallManagement> getMatrixFromJson();

    // ---- discovery and network settings (MatrixSdkWorkerOperations.cpp) ---------------------
    // Starts the thread if needed, resets the round counter and the found-device map.
    void searchMatrix();
    // The descriptor built from `info` travels in the task's pointer slot.
    void getMatrixNetworkInfo(const MatrixInfo& info, int type);
    // `current` names the decoder as found (its address goes under "matrix_ip"), `target` gives
    // the descriptor's identity; `userData` is not carried (the pointer slot holds the descriptor).
    void setMatrixNetworkConfig(QSharedPointer<CSharedHandle> handle, const MatrixInfo& current,
        const MatrixInfo& target, const DeviceNetworkCfg_t& cfg, int type, void* userData);
    void activeDecoder(QString ip, QString password);

    // ---- windows and layout -----------------------------------------------------------------
    void getWindowInfo(QSharedPointer<CSharedHandle> handle);
    void addWindowInfo(QSharedPointer<CSharedHandle> handle, const MatrixWindowInfo& window);
    void removeWindow(QSharedPointer<CSharedHandle> handle, const MatrixWindowInfo& window);
    void getLayout(QSharedPointer<CSharedHandle> handle, void* userData);
    // The task goes to the connection of `mainIp`; `screens` becomes the stored screen list.
    void setLayout(const QString& name, MatrixType type, int rows, int cols, const QList<MatrixInfo>& screens,
        const QString& mainIp);
    void checkScreen(QSharedPointer<CSharedHandle> handle, int location, bool open);
    void setWindowSplit(QSharedPointer<CSharedHandle> handle, int windowId, int split);
    void clearWindow(QSharedPointer<CSharedHandle> handle, int windowId, int subWindowId, int windowType);
    void setFullWindow(QSharedPointer<CSharedHandle> handle, int windowId, int subWindowId, bool full);
    void moveFloatingWindow(QSharedPointer<CSharedHandle> handle, const MatrixWindowInfo& window);
    QList<MatrixInfo> layoutScreens() const;

    // ---- signal sources, scenes, loops, banners ---------------------------------------------
    void setWindowSignalSource(
        QSharedPointer<CSharedHandle> handle, const MatrixWindowInfo& window, int subWindowId, bool addingPicture);
    void getScene(QSharedPointer<CSharedHandle> handle);
    void saveScene(QSharedPointer<CSharedHandle> handle, int sceneId, QString name, void* userData);
    void removeScene(QSharedPointer<CSharedHandle> handle, int sceneId);
    void restoreScene(QSharedPointer<CSharedHandle> handle, int sceneId);
    void modifyScene(QSharedPointer<CSharedHandle> handle, int sceneId, QString name);
    void getLoopInfo(QSharedPointer<CSharedHandle> handle);
    void setLoopInfo(QSharedPointer<CSharedHandle> handle, const MatrixLoopInfo& loop);
    void removeLoopInfo(QSharedPointer<CSharedHandle> handle, int loopId);
    // `startIndex` travels as the task's spare integer.
    void restoreLoopInfo(
        QSharedPointer<CSharedHandle> handle, int startIndex, int windowId, const MatrixLoopInfo& loop);
    void setBanner(QSharedPointer<CSharedHandle> handle, const MatrixBannerInfo& banner);
    void removeBanner(QSharedPointer<CSharedHandle> handle);

    // ---- HDMI input, device files, screen colour, audio, streams ----------------------------
    void setStreamSwitch(QSharedPointer<CSharedHandle> handle, int mode);
    void setAudioOutputEnable(
        QSharedPointer<CSharedHandle> handle, int windowId, int subWindowId, int volume, bool enable);
    void getAudioOutputEnable(QSharedPointer<CSharedHandle> handle);
    void refreshHDMIStatus(QSharedPointer<CSharedHandle> handle);
    void getDevPlayFileList(QSharedPointer<CSharedHandle> handle, int windowId, int subWindowId, int windowType);
    void startPlayDevFile(
        QSharedPointer<CSharedHandle> handle, const MatrixWindowInfo& window, int subWindowId, const QString& path);
    void stopPlayDevFile(QSharedPointer<CSharedHandle> handle, const MatrixWindowInfo& window, int subWindowId);
    // `input` travels as the task's spare integer.
    void startPlayHdmiVideo(
        QSharedPointer<CSharedHandle> handle, const MatrixWindowInfo& window, int subWindowId, int input);
    void startPlayVideoStream(
        QSharedPointer<CSharedHandle> handle, const MatrixWindowInfo& window, int subWindowId, const QString& url);
    void getMatrixScreenColor(QSharedPointer<CSharedHandle> handle, int col, int row);
    void setMatrixScreenColor(QSharedPointer<CSharedHandle> handle, int col, int row, const ScreenColor& color);

    // ---- maintenance (MatrixSdkWorkerMaintenance.cpp) ---------------------------------------
    // One update task per connection; the position in the list is the index reported in the
    // progress signal.
    void updateMatrix(const QList<QSharedPointer<CSharedHandle>>& handles, const QString& imagePath);
    void updateOneMatrix(QSharedPointer<CSharedHandle> handle, const QString& imagePath, int index = 0);
    void factoryReset(QSharedPointer<CSharedHandle> handle);
    // The mode of one output, or the one all outputs share (-1).
    void getMatrixResolution(QSharedPointer<CSharedHandle> handle, int outputIndex = -1);
    void setMatrixResolution(QSharedPointer<CSharedHandle> handle, const ScreenResolution_t& resolution, bool setAll);
    void userPasswordModify(QSharedPointer<CSharedHandle> handle, const QString& userName, const QString& oldPassword,
        const QString& newPassword);
    void importMatrixConfig(QSharedPointer<CSharedHandle> handle, const QString& path);
    void exportMatrixConfig(QSharedPointer<CSharedHandle> handle, const QString& path);
    // The operation log between two times; `type` is one of LOG_TYPE_*.
    void getLog(QSharedPointer<CSharedHandle> handle, int type, const QDateTime& begin, const QDateTime& end);
    // The decoder's run log saved as a text file (same task kind as getLog, told apart by the path).
    void getRunLog(QSharedPointer<CSharedHandle> handle, const QString& path);

    // SDK status callback: reports a lost connection through signalDisconnectStatus.
    static void matrixConnectStatusCallback(void* sdkHandle, int event, void* user);
    // SDK firmware-update callback: progress and, at the end, the result.
    static void matrixUpdateCallback(const UpdateStatus_t* status, void* user);

public slots:
    // The client is closing: one disconnect task per registered connection, behind pending work.
    void slotQuitSystem();

signals:
    void signalSearchMatrixResult(const QMap<QString, MatrixInfo>& matrices);
    void signalConnectMatrixResult(QSharedPointer<CSharedHandle> handle, int ret, int matrixType, void* userData);
    void signalConnectErrorMsg(QString ip, ConnectErrorMsgInfo info, void* userData);
    void signalDisconnectStatus(void* sdkHandle, QString ip);
    void signalDisconnectMatrixResult(int ret, QString ip);
    void signalWriteTvwallInfoToFile();
    void signalGetWindowInfoResult(const QList<MatrixWindowInfo>& windows, int rows, int cols);
    void signalAddWindowInfoResult(int ret, const MatrixWindowInfo& window);
    void signalRemoveWindowResult(int ret, int windowId, int windowType);
    void signalClearWindowResult(int ret, int windowId, int subWindowId, int windowType);
    void signalGetSceneInfoResult(const QList<MatrixSceneInfo>& scenes);
    void signalSaveSceneResult(int ret, int sceneId, const QString& name, void* userData);
    void signalRemoveSceneResult(int ret);
    void signalRestoreSceneResult(int ret);
    void signalModifySceneResult(int ret, int sceneId);
    void signalGetLoopInfoResult(const QList<MatrixLoopInfo>& loops);
    void signalSetLoopInfoResult(int ret, MatrixLoopInfo loop);
    void signalRemoveLoopInfoResult(int ret, int loopId);
    void signalRestoreLoopInfoResult(int ret, int loopId, int windowId, int division);
    void signalRestoreLoopInfoResult(int ret, int loopId, int windowId, const QList<MatrixSubWindowInfo>& subWindows);
    void signalGetLayoutInfoResult(
        QString name, int type, QList<MatrixInfo> screens, int rows, int cols, QString mainIp, void* userData);
    void signalSetLayoutResult(int ret);
    void signalSetWindowSplitResult(int ret, int windowId, const QList<MatrixSubWindowInfo>& subWindows);
    void signalSetFullWindowResult(int ret, int windowId, int subWindowId);
    void signalSetWindowSignalSourceResult(
        int ret, const MatrixWindowInfo& window, int subWindowId, bool addingPicture);
    void signalGetPictureInfoResult(const ImageDataInfo& image);
    void signalCheckScreenResult(int ret);
    void signalSetBannerResult(int ret, const MatrixBannerInfo& banner);
    void signalRemoveBannerResult(int ret);
    void signalGetMatrixNetworkResult(DeviceNetworkCfg_t networkCfg, QString formerIp, int type);
    void signalSetMatrixNetworkResult(int ret, QString mainIp, QString formerIp);
    // state (UPDATE_STATE_*), progress 0..100, result (0 or an error code), index of the decoder in
    // its update batch, finished (true once with FINISHED or FAILED).
    void signalUpdateMatrixProgress(int state, int progress, int result, int index, bool finished);
    void signalUpdateMatrixResult(int ret);
    void signalMatrixFactoryResetResult(int ret, QString ip);
    void signalMatrixSetResolutionResult(int ret);
    void signalMatrixGetResolutionResult(ScreenResolution_t resolution);
    void signalScreenMapping(QString ip, bool mapped);
    void signalSetVideoStreamModeResult(int ret);
    void signalUserAccountLoginResult(int ret, void* userData);
    // ret, the decoder's address, and the new password (to be stored by the form on success).
    void signalUserPasswordModifyResult(int ret, QString ip, QString newPassword);
    void signalSetAudioOutputEnableResult(int ret);
    void signalGetAudioOutputEnableResult(DeviceAudioInfo_t audio);
    void signalImportConfigResult(int ret);
    void signalExportConfigResult(int ret);
    void signalGetLogsResult(QStringList logs);
    void signalDevStatusResult(int inputCount, int inputConnected, int outputCount, int outputConnected);
    void signalGetDevPlayFileResult(QList<DevPlayFile_t> files, int windowId, int subWindowId, int windowType);
    void signalSetDevPlayFileResult(int ret);
    void signalGetRunLogResult(int ret);
    void signalAddNetworkSource(int ret, bool added);
    void signalActiveDecoderFinished(int ret, QString text);
    void signalMatrixGetScreenColorResult(ScreenColor color);
    void signalMatrixSetScreenColorResult(int ret);

protected:
    void run() override;

private:
    using TaskHandler = void (MatrixSdkWorker::*)(const WorkerTaskParam& task);

    void init();
    void registerMetaTypes();
    void connectSignalsWithSlots();
    void startIfStopped();
    static WorkerTaskParam makeTask(int kind, QSharedPointer<CSharedHandle> handle = {});
    bool takeTask(WorkerTaskParam& task);
    void dispatch(const WorkerTaskParam& task);
    static TaskHandler handlerOf(int kind);

    // connections
    void doConnectMatrix(const WorkerTaskParam& task);
    void doDisconnectMatrix(const WorkerTaskParam& task);
    bool findIpOfSdkHandle(void* sdkHandle, QString& ip) const;

    // maintenance
    void doUpdateOneMatrix(const WorkerTaskParam& task);
    void doFactoryReset(const WorkerTaskParam& task);
    void doMatrixGetResolution(const WorkerTaskParam& task);
    void doMatrixSetResolutuon(const WorkerTaskParam& task);
    void doUserPasswordModify(const WorkerTaskParam& task);
    void doImportMatrixConfig(const WorkerTaskParam& task);
    void doExportMatrixConfig(const WorkerTaskParam& task);
    void doGetLog(const WorkerTaskParam& task);
    void* updateContext(int index);

    std::atomic<bool> m_running { false };
    QList<WorkerTaskParam> m_taskList; // oldest first; guarded by m_taskMutex
    QMutex m_taskMutex; // the queue only, held just to append or remove one task
    std::atomic<int> m_pendingCount { 0 }; // size of m_taskList, for the unlocked emptiness test
    bool m_leaving = false; // the loop has decided to end; guarded by m_taskMutex
    QSharedPointer<CSharedHandle> m_vmHandle; // latest successful login; guarded by m_registryMutex
    QMap<QString, QSharedPointer<CSharedHandle>> m_handleMap; // the registry, key the decoder IP
    QMap<QString, MatrixInfo> m_connectedMatrixMap; // first record per IP
    mutable QMutex m_registryMutex; // registry, connected map and m_vmHandle; never held across an SDK call

    // discovery: the round counter and the found-device map, under the device mutex
    std::atomic<int> m_searchRound { 0 };
    mutable QMutex m_deviceMutex;
    QMap<QString, MatrixInfo> m_foundMatrixMap;
    QList<MatrixInfo> m_layoutScreens; // the screen list of the latest setLayout; under m_deviceMutex

    // firmware update: one callback context per batch index, kept for the worker's lifetime
    // because the SDK may still call back after the task has ended
    QMutex m_updateMutex;
    std::map<int, std::unique_ptr<UpdateContext>> m_updateContexts;

    QMutex m_observerMutex;
    DispatchObserver m_observer = nullptr;
    void* m_observerContext = nullptr;
};

} // namespace kvms_matrix
