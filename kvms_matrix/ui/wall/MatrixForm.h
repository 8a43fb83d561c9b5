#pragma once

#include "CSharedHandle.h"
#include "MatrixInfo.h"
#include "MatrixLoopInfo.h"
#include "MatrixPageState.h"
#include "MatrixSceneInfo.h"
#include "MatrixWindowInfo.h"

#include "KWidget.h"

#include <QMap>
#include <QSharedPointer>

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
    CanvasMimic* mimic() const { return m_mimic; }

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
    CanvasMimic* m_mimic = nullptr;
};

} // namespace kvms_matrix
