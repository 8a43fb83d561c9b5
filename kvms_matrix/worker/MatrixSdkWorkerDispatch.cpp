// The task-kind table of MatrixSdkWorker: which handler runs each kind of task.
//
// THIS IS THE ONE PLACE TO ADD A HANDLER. Every kind points at its handler here, whichever topic
// file (worker/, tvwall/) defines it. Kinds 22-25, 35 (setStreamSwitch), 36 and 44 stay nullptr for
// good: those tasks are taken off the queue and dropped, and doStopPlayHdmiVideo is not reached
// by any kind.
#include "MatrixSdkWorker.h"

#include <array>

namespace kvms_matrix {

MatrixSdkWorker::TaskHandler MatrixSdkWorker::handlerOf(int kind)
{
    using W = MatrixSdkWorker;
    static const std::array<TaskHandler, TaskKind::Count> table = {
        &W::doConnectMatrix, //  0 connectMatrix
        &W::doDisconnectMatrix, //  1 disconnectMatrix
        &W::doSearchMatrix, //  2 searchMatrix
        &W::doGetWindowInfo, //  3 getWindowInfo
        &W::doAddWindowInfo, //  4 addWindowInfo
        &W::doRemoveWindow, //  5 removeWindow
        &W::doGetLayout, //  6 getLayout
        &W::doSetLayout, //  7 setLayout
        &W::doGetScene, //  8 getScene
        &W::doSaveScene, //  9 saveScene
        &W::doRemoveScene, // 10 removeScene
        &W::doRestoreScene, // 11 restoreScene
        &W::doModifyScene, // 12 modifyScene
        &W::doGetLoopInfo, // 13 getLoopInfo
        &W::doSetLoopInfo, // 14 setLoopInfo
        &W::doRemoveLoopInfo, // 15 removeLoopInfo
        &W::doRestoreLoopInfo, // 16 restoreLoopInfo
        &W::doCheckScreen, // 17 checkScreen
        &W::doSetWindowSplit, // 18 setWindowSplit
        &W::doClearWindow, // 19 clearWindow
        &W::doSetFullWindow, // 20 setFullWindow
        &W::doSetWindowSignalSource, // 21 setWindowSignalSource
        nullptr, // 22 (no handler)
        nullptr, // 23 (no handler)
        nullptr, // 24 (no handler)
        nullptr, // 25 (no handler)
        &W::doMoveFloatingWindow, // 26 moveFloatingWindow
        &W::doSetBanner, // 27 setBanner
        &W::doRemoveBanner, // 28 removeBanner
        &W::doGetMatrixNetwork, // 29 getMatrixNetworkInfo
        &W::doSetMatrixNetwork, // 30 setMatrixNetworkConfig
        &W::doUpdateOneMatrix, // 31 updateMatrix, updateOneMatrix
        &W::doFactoryReset, // 32 factoryReset
        &W::doMatrixGetResolution, // 33 getMatrixResolution
        &W::doMatrixSetResolutuon, // 34 setMatrixResolution
        nullptr, // 35 setStreamSwitch (no handler, kept so)
        nullptr, // 36 (no handler)
        &W::doUserPasswordModify, // 37 userPasswordModify
        &W::doSetAudioOutputEnable, // 38 setAudioOutputEnable
        &W::doGetAudioOutputEnable, // 39 getAudioOutputEnable
        &W::doImportMatrixConfig, // 40 importMatrixConfig
        &W::doExportMatrixConfig, // 41 exportMatrixConfig
        &W::doGetLog, // 42 getLog, getRunLog
        &W::doRefreshHdmiDevStatus, // 43 refreshHDMIStatus
        nullptr, // 44 (no handler; doStopPlayHdmiVideo is not reached, kept so)
        &W::doGetDevPlayFileList, // 45 getDevPlayFileList
        &W::doStartPlayDevFile, // 46 startPlayDevFile
        &W::doStopPlayDevFile, // 47 stopPlayDevFile
        &W::doStartPlayHdmiVideo, // 48 startPlayHdmiVideo
        &W::doStartPlayStreamVideo, // 49 startPlayVideoStream
        &W::doActiveDecoder, // 50 activeDecoder
        &W::doMatrixGetScreenColor, // 51 getMatrixScreenColor
        &W::doMatrixSetScreenColor, // 52 setMatrixScreenColor
        &W::doGetWallSnapshot, // 53 getWallSnapshot
    };
    if (kind < 0 || kind >= TaskKind::Count)
        return nullptr;
    return table[size_t(kind)];
}

} // namespace kvms_matrix
