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
#include "MediaDistributeEntry.h"
#include "SdkMetaTypes.h"
#include "TvWallManagement.h"
#include "UserData.h"
#include "VideoStreamInfo.h"
#include "WorkerTaskParam.h"

#include "KThread.h"

#include <QColor>
#include <QDateTime>
#include <QImage>
#include <QList>
#include <QMap>
#include <QMutex>
#include <QSharedPointer>
#include <QString>
#include <QStringList>

#include <atomic>
#include <map>
#include <memory>
#include <utility>
#include <vector>

namespace kvms_matrix {

struct UpdateContext;
class KovCapThread;

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

    // ---- discovery and network settings (MatrixSdkWorkerDeviceOperations.cpp) ---------------
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
    // The whole wall as the decoder shows it, one JPEG of width x height pixels
    // (MatrixSdkWorkerSnapshot.cpp); answered by signalGetWallSnapshotResult.
    void getWallSnapshot(QSharedPointer<CSharedHandle> handle, int width, int height);

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

    // ---- TV wall, SDK-level routines (tvwall/); run on the worker thread by the handlers --------
    // Windows and layout (tvwall/MatrixSdkWorkerWindows.cpp, MatrixSdkWorkerLayout.cpp).
    QList<MatrixWindowInfo> getMatrixWindowInfo(QSharedPointer<CSharedHandle> handle, int& rows, int& cols);
    int addMatrixWindows(QSharedPointer<CSharedHandle> handle, int rows, int cols);
    int addMatrixWindowInfo(QSharedPointer<CSharedHandle> handle, MatrixWindowInfo* window);
    int removeMatrixWindow(QSharedPointer<CSharedHandle> handle, MatrixWindowInfo* window);
    int setMatrixWindowSplit(QSharedPointer<CSharedHandle> handle, int windowId, int split);
    // Sources (tvwall/MatrixSdkWorkerSources.cpp, MatrixSdkWorkerConversions.cpp).
    QList<MatrixDeviceInfo> getDeviceInfo(QSharedPointer<CSharedHandle> handle, int windowId);
    static QList<MatrixDeviceInfo> addEmptyDevice(QList<MatrixDeviceInfo> list, int count);
    DeviceInfo_t convertRealDevice(MatrixDeviceInfo* device);
    DeviceInfo_t convertEmptyDevice(int windowId, int subWindowId);
    DeviceInfo_t convertDisplayDevice(
        QSharedPointer<CSharedHandle> handle, MatrixDeviceInfo* device, int windowId, int subWindowId, int windowType);
    DeviceInfo_t convertDisplayPicDevice(QSharedPointer<CSharedHandle> handle, MatrixDeviceInfo* device, int windowId);
    DeviceInfo_t convertHdmiDevice(int input);
    DeviceInfo_t convertUsbDevice(QString path);
    DeviceInfo_t convertRtspDevice(MatrixDeviceInfo* device);
    int getOnlyChannelId(QSharedPointer<CSharedHandle> handle);
    bool hasThisRecordDev(QSharedPointer<CSharedHandle> handle, const QString& deviceId);
    static QString xmlStringProcess(QByteArray text);
    // Scenes (tvwall/MatrixSdkWorkerScenes.cpp).
    QList<MatrixSceneInfo> getMatrixScenes(QSharedPointer<CSharedHandle> handle);
    int saveMatrixScene(QSharedPointer<CSharedHandle> handle, int& sceneId, const QString& name);
    int restoreMatrixScene(QSharedPointer<CSharedHandle> handle, int sceneId);
    int removeMatrixScene(QSharedPointer<CSharedHandle> handle, int sceneId);
    // Loops (tvwall/MatrixSdkWorkerLoops.cpp).
    QList<MatrixLoopInfo> getMatrixLoops(QSharedPointer<CSharedHandle> handle);
    int setMatrixLoopInfo(QSharedPointer<CSharedHandle> handle, MatrixLoopInfo* loop);
    int removeMatrixLoopInfo(QSharedPointer<CSharedHandle> handle, int loopId);
    int restoreMatrixLoop(QSharedPointer<CSharedHandle> handle, int windowId, MatrixLoopInfo* loop, int startIndex = 0);
    int stopMatrixLoop(QSharedPointer<CSharedHandle> handle, int windowId);
    // Banners (tvwall/MatrixSdkWorkerBanners.cpp). getBanner reads the "bannerinfo" mirror, not
    // the decoder; mirrorDecoderBanner rewrites the mirror from a record the decoder gave;
    // hideMatrixBanner sends the all-zero record and zeroes the mirrored rectangle on success.
    MatrixBannerInfo getBanner(QSharedPointer<CSharedHandle> handle);
    static quint32 transColorToUint(const QColor& color);
    static QColor transUintToColor(quint32 word);
    static void mirrorDecoderBanner(const BannerInfo_t& record);
    int hideMatrixBanner(QSharedPointer<CSharedHandle> handle);
    // HDMI input, device files, colour, audio (tvwall/MatrixSdkWorkerDeviceFiles.cpp ...).
    // Synchronous, on the caller's thread.
    bool getAudioStatusGet(const int& windowId, const int& subWindowId, QSharedPointer<CSharedHandle> handle);

    // ---- screen capture and media distribution (media/MatrixSdkWorkerFrames.cpp) ------------
    int sendDeviceDisplayFrame(
        QSharedPointer<CSharedHandle> handle, int windowId, int channel, const QByteArray& jpeg, int width, int height);
    int sendDeviceDisplayFrame(QSharedPointer<CSharedHandle> handle, int windowId, MatrixDeviceInfo* device);
    int sendDeviceDisplayFrame(QSharedPointer<CSharedHandle> handle, int windowId, int channel, VideoStreamInfo* info,
        char* data, int size, int frameKind);
    void removeMdHandle(QSharedPointer<CSharedHandle> handle, int windowId, int subWindowId, int windowType);
    void stopCaptureThread();
    // Asks the capture loop to end after its current round and returns at once (for the GUI
    // thread); a desktop source bound meanwhile retargets the loop instead.
    void endCapture();
    // Called by the display-device conversion after a successful CMatrix_StartMediaDistribute.
    void addMdHandle(int windowId, int channel, const MediaDistributeEntry& entry);
    // Called after binding a desktop source (type 4): starts or retargets the capture thread.
    void startCaptureThread(QSharedPointer<CSharedHandle> handle, int windowId, int channel);
    KovCapThread* captureThread() const { return m_capThread.get(); }
    std::map<std::pair<int, int>, MediaDistributeEntry> mdRegistry() const;

    // ---- discovery (worker/MatrixSdkWorkerDiscovery.cpp) ------------------------------------
    // SDK discovery callback: one call per answer, one with isFinished at the end of a round.
    static void searchMatrixCallback(bool isFinished, const DeviceInfo_t* device, void* user);
    // The workstation's IPv4 addresses without "127.0." ones; false when they cannot be read.
    static bool getIpLocalAddress(QStringList& list);
    QMap<QString, MatrixInfo> foundMatrixMap() const;

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
    // ret 0 with the JPEG as the decoder sent it and the picture read from it (null when it
    // does not read); otherwise the error code, an empty JPEG and a null picture.
    void signalGetWallSnapshotResult(
        int ret, QSharedPointer<CSharedHandle> handle, QByteArray jpeg, QImage picture);

protected:
    void run() override;

private:
    using TaskHandler = void (MatrixSdkWorker::*)(const WorkerTaskParam& task);

    void init();
    void registerMetaTypes();
    void connectSignalsWithSlots();
    void startIfStopped();
    void restartAfterLeaving();
    static WorkerTaskParam makeTask(int kind, QSharedPointer<CSharedHandle> handle = {});
    // A task about one sub-window: window and sub-window ids as keys, the window as a heap copy.
    static WorkerTaskParam makeWindowTask(
        int kind, QSharedPointer<CSharedHandle> handle, const MatrixWindowInfo& window, int subWindowId);
    bool takeTask(WorkerTaskParam& task);
    void dispatch(const WorkerTaskParam& task);
    static TaskHandler handlerOf(int kind);
    void doRemoveMdHandle(const WorkerTaskParam& task);
    // The sources bound on the whole wall, read once per task on the worker thread.
    const std::vector<DeviceInfo_t>& wallSources(CMHANDLE sdk, std::vector<DeviceInfo_t>& fresh);
    // Media distributions: those of a connection that is gone, and those a failed binding started.
    void forgetDistributionsOf(void* connection);
    void forgetDistributionsSince(const std::map<std::pair<int, int>, MediaDistributeEntry>& before);
    static void stopDistributions(const std::vector<void*>& mdHandles);
    // The decoder's scenes, with the read's result in ret (0, or why the list could not be read).
    QList<MatrixSceneInfo> readMatrixScenes(QSharedPointer<CSharedHandle> handle, int& ret);

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

    // discovery and activation (worker/MatrixSdkWorkerDiscovery.cpp)
    void doSearchMatrix(const WorkerTaskParam& task);
    void doGetMatrixNetwork(const WorkerTaskParam& task);
    void doSetMatrixNetwork(const WorkerTaskParam& task);
    void doActiveDecoder(const WorkerTaskParam& task);

    // windows, layout and sources (tvwall/)
    void doGetWindowInfo(const WorkerTaskParam& task);
    void doAddWindowInfo(const WorkerTaskParam& task);
    void doRemoveWindow(const WorkerTaskParam& task);
    void doGetLayout(const WorkerTaskParam& task);
    void doSetLayout(const WorkerTaskParam& task);
    void doCheckScreen(const WorkerTaskParam& task);
    void doSetWindowSplit(const WorkerTaskParam& task);
    void doClearWindow(const WorkerTaskParam& task);
    void doSetFullWindow(const WorkerTaskParam& task);
    void doSetWindowSignalSource(const WorkerTaskParam& task);
    void doMoveFloatingWindow(const WorkerTaskParam& task);

    // scenes, loops, banners, HDMI input, device files, colour, audio (tvwall/)
    void doGetScene(const WorkerTaskParam& task);
    void doSaveScene(const WorkerTaskParam& task);
    void doRemoveScene(const WorkerTaskParam& task);
    void doRestoreScene(const WorkerTaskParam& task);
    void doModifyScene(const WorkerTaskParam& task);
    void doGetLoopInfo(const WorkerTaskParam& task);
    void doSetLoopInfo(const WorkerTaskParam& task);
    void doRemoveLoopInfo(const WorkerTaskParam& task);
    void doRestoreLoopInfo(const WorkerTaskParam& task);
    void doSetBanner(const WorkerTaskParam& task);
    void doRemoveBanner(const WorkerTaskParam& task);
    void doSetAudioOutputEnable(const WorkerTaskParam& task);
    void doGetAudioOutputEnable(const WorkerTaskParam& task);
    void doRefreshHdmiDevStatus(const WorkerTaskParam& task);
    void doStopPlayHdmiVideo(const WorkerTaskParam& task); // no task kind reaches it
    void doGetDevPlayFileList(const WorkerTaskParam& task);
    void doStartPlayDevFile(const WorkerTaskParam& task);
    void doStopPlayDevFile(const WorkerTaskParam& task);
    void doStartPlayHdmiVideo(const WorkerTaskParam& task);
    void doStartPlayStreamVideo(const WorkerTaskParam& task);
    void doMatrixGetScreenColor(const WorkerTaskParam& task);
    void doMatrixSetScreenColor(const WorkerTaskParam& task);
    void doGetWallSnapshot(const WorkerTaskParam& task);

    std::atomic<bool> m_running { false };
    QList<WorkerTaskParam> m_taskList; // oldest first; guarded by m_taskMutex
    QMutex m_taskMutex; // the queue only, held just to append or remove one task
    std::atomic<int> m_pendingCount { 0 }; // size of m_taskList, for the unlocked emptiness test
    // What wallSources() read during the current task, and for which connection (null: nothing).
    std::vector<DeviceInfo_t> m_wallSources;
    CMHANDLE m_wallSourcesOf = nullptr;
    bool m_leaving = false; // the loop has decided to end; guarded by m_taskMutex
    bool m_restartWhenFinished = false; // a start came while it was ending; guarded by m_taskMutex
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

    // desktop projection: the one capture thread, and the media-distribution registry keyed by
    // (window id, channel), under its own lock
    std::unique_ptr<KovCapThread> m_capThread;
    mutable QMutex m_mdMutex;
    std::map<std::pair<int, int>, MediaDistributeEntry> m_mdRegistry;

    QMutex m_observerMutex;
    DispatchObserver m_observer = nullptr;
    void* m_observerContext = nullptr;
};

} // namespace kvms_matrix
