#pragma once

#include "CSharedHandle.h"
#include "MatrixBannerInfo.h"
#include "MatrixInfo.h"
#include "MatrixLoopInfo.h"
#include "MatrixPageState.h"
#include "MatrixSceneInfo.h"
#include "MatrixWindowInfo.h"

#include "KWidget.h"

#include <QMap>
#include <QPair>
#include <QSharedPointer>
#include <QStringList>

class QLabel;
class QListWidget;
class QPushButton;
class QTimer;

namespace kvms_matrix {

class ControlMatrixWt;
class DecoderStatusStrip;
class MatrixSdkWorker;
class SourcePane;
class CanvasMimic;
class WallPlayback;

// The TV wall page: sources on the left, the wall in the middle, scenes and loops on the right,
// the decoders' link states at the bottom. The one place that turns the operator's intent into
// worker calls and the worker's results into what the page shows.
class MatrixForm : public KCOMMON::KWidget {
    Q_OBJECT

public:
    explicit MatrixForm(QWidget* parent = nullptr);
    ~MatrixForm() override;

    // Logins the operator asked for carry this tag, so that their errors reach the operator.
    void setErrorReporter(void* tag) { m_errorReporter = tag; }
    // The configured decoders and the one whose wall is shown; logs in to those not linked yet.
    void setDecoderList(const QList<MatrixInfo>& decoders, const QString& currentIp);
    void disconnectAll();
    void stopReconnecting();

    const MatrixPageState& state() const { return m_state; }
    ControlMatrixWt* canvas() const { return m_canvas; }
    SourcePane* sourcePane() const { return m_sources; }
    DecoderStatusStrip* statusStrip() const { return m_strip; }
    QListWidget* sceneList() const { return m_sceneList; }
    QListWidget* loopList() const { return m_loopList; }
    QString tipText() const;
    QPushButton* roamingButton() const { return m_roamingBtn; }
    QPushButton* configButton() const { return m_configBtn; }
    QPushButton* loginButton() const { return m_loginBtn; }
    QPushButton* sceneAddButton() const { return m_sceneAddBtn; }
    QPushButton* loopAddButton() const { return m_loopAddBtn; }
    QPushButton* hideSideButton() const { return m_hideSideBtn; }
    QPushButton* bannerButton() const { return m_bannerBtn; }
    QPushButton* devFileButton() const { return m_devFileBtn; }
    QPushButton* hdmiButton() const { return m_hdmiBtn; }
    QPushButton* colourButton() const { return m_colourBtn; }
    QPushButton* captureButton() const { return m_captureBtn; }
    QWidget* sidePane() const { return m_side; }
    QList<MatrixLoopInfo> loops() const { return m_loops; }
    CanvasMimic* mimic() const { return m_mimic; }
    WallPlayback* playback() const { return m_playback; }

public slots:
    void slotConnectMatrixResult(QSharedPointer<CSharedHandle> mHandle, int result, int type, void* pUser);
    void slotDisconnectStatus(void* sdkHandle, QString ip);
    void slotReconnect();
    void slotRefreshTvWall();
    void slotGetWindowInfoResult(QList<MatrixWindowInfo> windowInfoList, int row, int col);
    void slotGetSceneInfoResult(QList<MatrixSceneInfo> sceneInfoList);
    void slotGetLoopInfoResult(QList<MatrixLoopInfo> loopInfoList);
    void slotAddWindowInfoResult(int result, MatrixWindowInfo windowInfo);
    void slotRemoveWindowResult(int result, int windowId, int windowType);
    void slotSetWindowSplitResult(int result, int windowId, QList<MatrixSubWindowInfo> subWindowInfoList);
    void slotClearWindowResult(int result, int windowId, int subWindowId, int windowType);
    void slotSetFullWindowResult(int result, int windowId, int subWindowId);
    void slotSetWindowSignalSourceResult(int result, MatrixWindowInfo windowInfo, int subWindowId, bool addedPic);
    void slotSetLayoutResult(int result);
    void slotCreateFloatingWindow(MatrixWindowInfo windowInfo);
    void slotMoveFloatingWindow(MatrixWindowInfo windowInfo);
    void slotVideoPanelDropEvent(int windowId, int subWindowId, int windowType);
    void slotRightMemuClicked(int windowId, int subWindowId, int windowType, int operatetype, int type);
    void slotSetAudioOutputEnableResult(int result);
    // Context actions and drops (MatrixFormActions.cpp).
    void slotLoopListDropEvent(int windowId, int subWindowId, int windowType, int id);
    void slotJoinWindows(MatrixWindowInfo windowInfo);
    // Binds a background picture after the file choice; refuses long names, non-JPEG files and
    // a picture sent while the previous one is not confirmed.
    void setBackgroundPicture(int windowId, int subWindowId, int windowType, const QString& path);
    // Scene and loop lists (MatrixFormLists.cpp).
    void slotSceneItemClicked(QWidget* item);
    void slotSceneItemDoubleClicked(QWidget* item);
    void slotSceneEditItemName(QWidget* item, QString oldName, QString newName);
    void slotSceneDeleteItem(QWidget* item);
    void slotSceneNameEmpty(QWidget* item);
    void slotLoopItemClicked(QWidget* item);
    void slotLoopItemDoubleClicked(QWidget* item);
    void slotLoopEditItemClicked(QWidget* item, QStringList idList);
    void slotLoopDeleteItem(QWidget* item);
    void slotLoopNameEmpty(QWidget* item);
    void slotSceneAddBtnClicked();
    void slotLoopAddBtnClicked();
    void slotSceneArrowBtnClicked(bool checked);
    void slotLoopArrowBtnClicked(bool checked);
    void slotHideWtBtClicked(bool checked);
    void slotSaveSceneResult(int result, int sceneId, QString sceneName, void* item);
    void slotRestoreSceneResult(int result);
    void slotRemoveSceneResult(int result);
    void slotModifySceneResult(int result, int sceneId);
    void slotSetLoopInfoResult(int result, MatrixLoopInfo loop);
    void slotRestoreLoopInfoResult(int result, int loopId, int windowId, int subWindowId);
    void slotRestoreLoopInfoResult(int result, int loopId, int windowId, QList<MatrixSubWindowInfo> subWindowInfoList);
    void slotRemoveLoopInfoResult(int result, int loopId);
    // Banner and decoder files (MatrixFormBanner.cpp).
    void slotBannerBtnClicked();
    void slotSetBanner(int x, int y, int width, int height);
    void slotDelBanner();
    void slotSetBannerResult(int result, MatrixBannerInfo banner);
    void slotRemoveBannerResult(int result);
    void slotDevFileBtnClicked();
    void slotGetDevPlayFileResult(QList<DevPlayFile_t> files, int windowId, int subWindowId, int windowType);
    // The HDMI inputs the decoder declares (bit i of inputConnected: a cable in input i).
    void slotDevStatusResult(int inputCount, int inputConnected, int outputCount, int outputConnected);
    void slotHdmiInputChosen(int input); // plays an HDMI input (0-based) in the selected window
    void slotScreenColourBtnClicked();
    void slotCaptureBtnClicked(); // the capture settings, saved without projecting
    void slotRoamingBtnClicked();
    void slotConfigBtnClicked();
    void slotLoginBtnClicked();

signals:
    // The decoder configuration was saved: the page choice must be made again.
    void signalConfigurationChanged();

private:
    void buildLayout();
    void connectWorker();
    void connectDecoder(const QString& ip, void* tag);
    void onWallConnected(const QSharedPointer<CSharedHandle>& handle);
    void scheduleReconnect(const QString& ip, int delayMs);
    void showLink(const QString& ip);
    void setTip(const QString& text);
    bool ownsResult(void* pUser) const;
    // A wall with nothing on it (no windows, scenes or loops) takes the configured grid.
    bool layOutEmptyWall(const QList<MatrixWindowInfo>& windows);
    // The shown wall's connection; tells the operator and returns null when there is none.
    QSharedPointer<CSharedHandle> requireHandle();
    void connectActions(); // MatrixFormActions.cpp
    void buildLists(QWidget* side); // MatrixFormLists.cpp: the side pane's lists and buttons
    void bindSource(int windowId, int subWindowId, int windowType, const MatrixDeviceInfo& source, bool picture);
    void chooseBackground(int windowId, int subWindowId, int windowType);
    // "grab screen": the capture settings first when the operator wants them asked (MatrixFormCapture.cpp).
    void grabScreen(int windowId, int subWindowId, int windowType);
    // The desktop projection follows the sub-window it was put in: it stops when that one is
    // cleared or given another source (subWindowId -1: the whole window).
    void followProjection(int windowId, int subWindowId, bool projecting);
    void setStreamOf(int windowId, int subWindowId, int windowType, int stream);
    void startLoop(const MatrixLoopInfo& loop, int windowId, int windowType);
    void openLoopDialog(const MatrixLoopInfo& loop, bool editing);
    void addSceneItem(int sceneId, const QString& name, bool renameNow);
    void addLoopItem(const MatrixLoopInfo& loop);
    bool sceneNameTaken(const QString& name, QWidget* except) const;
    void renameSelectedScene();
    void buildExtras(); // MatrixFormBanner.cpp: the banner and file buttons

    MatrixSdkWorker* m_worker = nullptr;
    MatrixPageState m_state;
    void* m_errorReporter = nullptr;
    int m_loginTag = 0; // address of this member tags logins from the login dialog
    bool m_stopped = false;
    bool m_layingOut = false;
    QString m_laidOutIp; // an empty wall is laid out once per session
    QMap<QString, QTimer*> m_retryTimers;

    ControlMatrixWt* m_canvas = nullptr;
    SourcePane* m_sources = nullptr;
    DecoderStatusStrip* m_strip = nullptr;
    QListWidget* m_sceneList = nullptr;
    QListWidget* m_loopList = nullptr;
    QLabel* m_tip = nullptr;
    QLabel* m_wallTitle = nullptr;
    QPushButton* m_roamingBtn = nullptr;
    QPushButton* m_refreshBtn = nullptr;
    QPushButton* m_configBtn = nullptr;
    QPushButton* m_loginBtn = nullptr;
    QPushButton* m_sceneAddBtn = nullptr;
    QPushButton* m_loopAddBtn = nullptr;
    QPushButton* m_hideSideBtn = nullptr;
    QWidget* m_side = nullptr;
    QPushButton* m_bannerBtn = nullptr;
    QPushButton* m_devFileBtn = nullptr;
    QPushButton* m_hdmiBtn = nullptr;
    QPushButton* m_colourBtn = nullptr;
    QPushButton* m_captureBtn = nullptr;
    QList<MatrixLoopInfo> m_loops; // the wall's loops as last read, in the decoder's order
    bool m_picturePending = false; // a background picture sent and not yet confirmed
    CanvasMimic* m_mimic = nullptr;
    WallPlayback* m_playback = nullptr; // recordings replayed on the wall
    QPair<int, int> m_projection { -1, -1 }; // window and sub-window showing this desktop
};

} // namespace kvms_matrix
