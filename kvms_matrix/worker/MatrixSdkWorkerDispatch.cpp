// The task-kind table of MatrixSdkWorker: which handler runs each kind of task.
//
// THIS IS THE ONE PLACE TO ADD A HANDLER. Kinds whose handler is written in another topic file
// (tvwall/, discovery) are still nullptr below; whoever writes the handler replaces the
// nullptr of its kind with it. Kinds 22-25, 35 (setStreamSwitch), 36 and 44 stay nullptr for
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
        nullptr, //  2 searchMatrix -> doSearchMatrix
        nullptr, //  3 getWindowInfo -> doGetWindowInfo
        nullptr, //  4 addWindowInfo -> doAddWindowInfo
        nullptr, //  5 removeWindow -> doRemoveWindow
        nullptr, //  6 getLayout -> doGetLayout
        nullptr, //  7 setLayout -> doSetLayout
        nullptr, //  8 getScene -> doGetScene
        nullptr, //  9 saveScene -> doSaveScene
        nullptr, // 10 removeScene -> doRemoveScene
        nullptr, // 11 restoreScene -> doRestoreScene
        nullptr, // 12 modifyScene -> doModifyScene
        nullptr, // 13 getLoopInfo -> doGetLoopInfo
        nullptr, // 14 setLoopInfo -> doSetLoopInfo
        nullptr, // 15 removeLoopInfo -> doRemoveLoopInfo
        nullptr, // 16 restoreLoopInfo -> doRestoreLoopInfo
        nullptr, // 17 checkScreen -> doCheckScreen
        nullptr, // 18 setWindowSplit -> doSetWindowSplit
        nullptr, // 19 clearWindow -> doClearWindow
        nullptr, // 20 setFullWindow -> doSetFullWindow
        nullptr, // 21 setWindowSignalSource -> doSetWindowSignalSource
        nullptr, // 22 (no handler)
        nullptr, // 23 (no handler)
        nullptr, // 24 (no handler)
        nullptr, // 25 (no handler)
        nullptr, // 26 moveFloatingWindow -> doMoveFloatingWindow
        nullptr, // 27 setBanner -> doSetBanner
        nullptr, // 28 removeBanner -> doRemoveBanner
        nullptr, // 29 getMatrixNetworkInfo -> doGetMatrixNetwork
        nullptr, // 30 setMatrixNetworkConfig -> doSetMatrixNetwork
        &W::doUpdateOneMatrix, // 31 updateMatrix, updateOneMatrix
        &W::doFactoryReset, // 32 factoryReset
        &W::doMatrixGetResolution, // 33 getMatrixResolution
        &W::doMatrixSetResolutuon, // 34 setMatrixResolution
        nullptr, // 35 setStreamSwitch (no handler, kept so)
        nullptr, // 36 (no handler)
        &W::doUserPasswordModify, // 37 userPasswordModify
        nullptr, // 38 setAudioOutputEnable -> doSetAudioOutputEnable
        nullptr, // 39 getAudioOutputEnable -> doGetAudioOutputEnable
        &W::doImportMatrixConfig, // 40 importMatrixConfig
        &W::doExportMatrixConfig, // 41 exportMatrixConfig
        &W::doGetLog, // 42 getLog, getRunLog
        nullptr, // 43 refreshHDMIStatus -> doRefreshHdmiDevStatus
        nullptr, // 44 (no handler; doStopPlayHdmiVideo is not reached, kept so)
        nullptr, // 45 getDevPlayFileList -> doGetDevPlayFileList
        nullptr, // 46 startPlayDevFile -> doStartPlayDevFile
        nullptr, // 47 stopPlayDevFile -> doStopPlayDevFile
        nullptr, // 48 startPlayHdmiVideo -> doStartPlayHdmiVideo
        nullptr, // 49 startPlayVideoStream -> doStartPlayStreamVideo
        nullptr, // 50 activeDecoder -> doActiveDecoder
        nullptr, // 51 getMatrixScreenColor -> doMatrixGetScreenColor
        nullptr, // 52 setMatrixScreenColor -> doMatrixSetScreenColor
    };
    if (kind < 0 || kind >= TaskKind::Count)
        return nullptr;
    return table[size_t(kind)];
}

} // namespace kvms_matrix
