// MatrixForm: the page's layout and its decoder links (login, loss, reconnect with back-off).
#include "MatrixForm.h"

#include "CanvasMimic.h"
#include "ConnectErrorText.h"
#include "ControlMatrixWt.h"
#include "DecoderConfigDlg.h"
#include "DecoderStatusStrip.h"
#include "LoginDlg.h"
#include "MatrixSdkWorker.h"
#include "MatrixSignals.h"
#include "SourcePane.h"
#include "TvWallIni.h"
#include "WallConfigStore.h"
#include "PlaybackBarWt.h"
#include "WallPlayback.h"

#include "KSingleton.h"
#include "SystemAssistant.h"

#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QSplitter>
#include <QTimer>
#include <QVBoxLayout>

namespace kvms_matrix {

namespace {

// Login errors that a retry with the same account would only make worse (a locked account).
bool retryWouldNotHelp(int result)
{
    return result == CMATRIX_ERR_PASSWORD || result == CMATRIX_ERR_USER_LOCKED || result == CMATRIX_ERR_NOT_ACTIVATED;
}

QPushButton* toolButton(const QString& icon, const QString& text, QWidget* parent)
{
    auto* button = new QPushButton(QIcon(QStringLiteral(":/page_icons/%1.png").arg(icon)), text, parent);
    button->setIconSize(QSize(18, 18));
    return button;
}

} // namespace

MatrixForm::MatrixForm(QWidget* parent)
    : KCOMMON::KWidget(parent)
    , m_worker(KCOMMON::KSingleton<MatrixSdkWorker>::instance())
{
    setObjectName(QStringLiteral("matrixTvWallWt"));
    buildLayout();
    connectWorker();
    m_mimic = new CanvasMimic(
        m_worker, m_canvas, [this] { return m_state.currentHandle(); }, this);
}

MatrixForm::~MatrixForm()
{
    // Before the canvas it watches goes.
    delete m_mimic;
    delete m_playback; // its players stop while the page's state is still there
}

void MatrixForm::buildLayout()
{
    m_roamingBtn = toolButton(QStringLiteral("roaming"), tr("Roaming window"), this);
    m_refreshBtn = toolButton(QStringLiteral("refresh"), tr("Refresh"), this);
    m_loginBtn = toolButton(QStringLiteral("login"), tr("Login"), this);
    m_configBtn = toolButton(QStringLiteral("configure"), tr("Decoder configuration"), this);
    m_wallTitle = new QLabel(this);
    m_wallTitle->setObjectName(QStringLiteral("matrixWallTitle"));
    auto* tools = new QHBoxLayout;
    tools->addWidget(m_wallTitle);
    tools->addStretch(1);
    for (QPushButton* b : { m_roamingBtn, m_refreshBtn, m_loginBtn, m_configBtn })
        tools->addWidget(b);

    m_sources = new SourcePane(this);
    m_canvas = new ControlMatrixWt(this);
    m_canvas->setMinimumSize(480, 300);
    m_tip = new QLabel(this);
    m_tip->setObjectName(QStringLiteral("matrixTip"));
    m_tip->setStyleSheet(QStringLiteral("QLabel{color:#f0c060;padding:2px 4px;}"));
    m_tip->setMinimumHeight(m_tip->fontMetrics().height() + 6);
    auto* centre = new QWidget(this);
    auto* centreLayout = new QVBoxLayout(centre);
    centreLayout->setContentsMargins(0, 0, 0, 0);
    centreLayout->addWidget(m_tip);
    centreLayout->addWidget(m_canvas, 1);
    m_playback = new WallPlayback(
        m_worker, m_canvas, m_sources, [this] { return m_state.currentHandle(); },
        [this](const QString& t) { setTip(t); }, this);
    centreLayout->addWidget(m_playback->bar());

    auto* side = new QWidget(this);
    buildLists(side);

    auto* split = new QSplitter(Qt::Horizontal, this);
    split->addWidget(m_sources);
    split->addWidget(centre);
    split->addWidget(side);
    split->setStretchFactor(1, 1);
    split->setSizes({ 240, 900, 200 });

    m_strip = new DecoderStatusStrip(this);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(6, 6, 6, 4);
    layout->addLayout(tools);
    layout->addWidget(split, 1);
    layout->addWidget(m_strip);

    connect(m_roamingBtn, &QPushButton::clicked, this, &MatrixForm::slotRoamingBtnClicked);
    connect(m_refreshBtn, &QPushButton::clicked, this, [this] {
        emit signalConfigurationChanged();
        slotRefreshTvWall();
    });
    connect(m_loginBtn, &QPushButton::clicked, this, &MatrixForm::slotLoginBtnClicked);
    connect(m_configBtn, &QPushButton::clicked, this, &MatrixForm::slotConfigBtnClicked);
    connect(m_canvas, &ControlMatrixWt::signalCreateFloatingWindow, this, &MatrixForm::slotCreateFloatingWindow);
    connect(m_canvas, &ControlMatrixWt::signalMoveFloatingWindow, this, &MatrixForm::slotMoveFloatingWindow);
    connect(m_canvas, &ControlMatrixWt::signalVideoPanelDropEvent, this, &MatrixForm::slotVideoPanelDropEvent);
    MatrixSignals* hub = KCOMMON::KSingleton<MatrixSignals>::instance();
    connect(hub, &MatrixSignals::signalRefreshTvWall, this, &MatrixForm::slotRefreshTvWall);
    connect(hub, &MatrixSignals::signalRightMemuClicked, this, &MatrixForm::slotRightMemuClicked);
    connectActions();
}

void MatrixForm::connectWorker()
{
    const auto queued = Qt::QueuedConnection;
    MatrixSdkWorker* w = m_worker;
    connect(w, &MatrixSdkWorker::signalConnectMatrixResult, this, &MatrixForm::slotConnectMatrixResult, queued);
    connect(w, &MatrixSdkWorker::signalDisconnectStatus, this, &MatrixForm::slotDisconnectStatus, queued);
    connect(w, &MatrixSdkWorker::signalGetWindowInfoResult, this, &MatrixForm::slotGetWindowInfoResult, queued);
    connect(w, &MatrixSdkWorker::signalGetSceneInfoResult, this, &MatrixForm::slotGetSceneInfoResult, queued);
    connect(w, &MatrixSdkWorker::signalGetLoopInfoResult, this, &MatrixForm::slotGetLoopInfoResult, queued);
    connect(w, &MatrixSdkWorker::signalAddWindowInfoResult, this, &MatrixForm::slotAddWindowInfoResult, queued);
    connect(w, &MatrixSdkWorker::signalRemoveWindowResult, this, &MatrixForm::slotRemoveWindowResult, queued);
    connect(w, &MatrixSdkWorker::signalSetWindowSplitResult, this, &MatrixForm::slotSetWindowSplitResult, queued);
    connect(w, &MatrixSdkWorker::signalClearWindowResult, this, &MatrixForm::slotClearWindowResult, queued);
    connect(w, &MatrixSdkWorker::signalSetFullWindowResult, this, &MatrixForm::slotSetFullWindowResult, queued);
    connect(w, &MatrixSdkWorker::signalSetLayoutResult, this, &MatrixForm::slotSetLayoutResult, queued);
    connect(w, &MatrixSdkWorker::signalSetAudioOutputEnableResult, this, &MatrixForm::slotSetAudioOutputEnableResult,
        queued);
    connect(w, &MatrixSdkWorker::signalSetWindowSignalSourceResult, this, &MatrixForm::slotSetWindowSignalSourceResult,
        queued);
}

QString MatrixForm::tipText() const
{
    return m_tip->text();
}

void MatrixForm::setTip(const QString& text)
{
    m_tip->setText(text);
}

void MatrixForm::setDecoderList(const QList<MatrixInfo>& decoders, const QString& currentIp)
{
    const QString previousIp = m_state.currentIp();
    const bool changed = m_state.setDecoders(decoders, currentIp);
    m_strip->setDecoders(decoders);
    for (const MatrixInfo& d : decoders)
        showLink(d.ip);
    if (decoders.isEmpty()) {
        m_canvas->setWindowInfoList({}, 1, 1);
        m_sceneList->clear();
        m_loopList->clear();
        m_wallTitle->clear();
        setTip(QString());
        return;
    }
    m_wallTitle->setText(tr("Decoder %1").arg(currentIp));
    m_stopped = false;
    for (const MatrixInfo& d : decoders) {
        const bool shown = d.ip == currentIp;
        if (m_state.link(d.ip) == MatrixPageState::Link::Idle)
            connectDecoder(d.ip, shown ? m_errorReporter : this);
        else if (shown && changed && m_state.link(d.ip) == MatrixPageState::Link::Connected) {
            // Another decoder's wall, or the same decoder under a new login.
            if (previousIp == currentIp)
                connectDecoder(d.ip, m_errorReporter);
            else
                onWallConnected(m_state.currentHandle());
        }
    }
}

void MatrixForm::connectDecoder(const QString& ip, void* tag)
{
    if (!m_state.hasDecoder(ip))
        return;
    if (ip == m_state.currentIp())
        setTip(tr("tvwall login..."));
    if (m_state.link(ip) == MatrixPageState::Link::Lost || m_state.link(ip) == MatrixPageState::Link::Failed)
        m_state.markReconnecting(ip);
    else
        m_state.markConnecting(ip);
    showLink(ip);
    m_worker->connectMatrix(m_state.decoder(ip), tag ? tag : this);
}

bool MatrixForm::ownsResult(void* pUser) const
{
    return pUser == this || pUser == &m_loginTag || (m_errorReporter && pUser == m_errorReporter);
}

void MatrixForm::slotConnectMatrixResult(QSharedPointer<CSharedHandle> mHandle, int result, int, void* pUser)
{
    if (!ownsResult(pUser))
        return;
    const QString ip = mHandle ? mHandle->ip() : QString();
    const bool shown = !ip.isEmpty() && ip == m_state.currentIp();
    if (mHandle && result == 0 && m_state.hasDecoder(ip)) {
        m_state.markConnected(ip, mHandle);
        showLink(ip);
        // A login the operator changed in the dialog is kept once it works.
        if (pUser == &m_loginTag)
            MatrixSdkWorker::addDecoderToJson(m_state.decoders());
        if (shown) {
            WallConfigStore::saveLogin(m_state.current());
            onWallConnected(mHandle);
        }
        return;
    }
    if (pUser == &m_loginTag)
        SystemAssistant::messageAlert(tr("Decoder login failed!"), this);
    if (shown || !mHandle)
        setTip(mHandle ? ConnectErrorText::connectFailed(result, MatrixSdkWorker::getErrorInfo(result))
                       : ConnectErrorText::connectFailed(-1, QString()));
    if (!m_state.hasDecoder(ip))
        return;
    // A refused account waits for the operator; a decoder out of reach is tried again.
    if (retryWouldNotHelp(result)) {
        m_state.markFailed(ip);
        showLink(ip);
        return;
    }
    const int delay = m_state.markLost(ip);
    showLink(ip);
    scheduleReconnect(ip, delay);
}

void MatrixForm::onWallConnected(const QSharedPointer<CSharedHandle>& handle)
{
    if (!handle)
        return;
    setTip(tr("Geting tv wall info..."));
    m_worker->getScene(handle);
    m_worker->getLoopInfo(handle);
    m_worker->getWindowInfo(handle);
    m_worker->refreshHDMIStatus(handle); // the HDMI menu offers the inputs this unit has
    // The banner mirror is refreshed again when the wall has been read.
    m_canvas->setBannerInfo(m_worker->getBanner(handle));
    m_mimic->sync();
}

void MatrixForm::slotDisconnectStatus(void*, QString ip)
{
    if (!m_state.hasDecoder(ip) || m_state.link(ip) != MatrixPageState::Link::Connected)
        return;
    const int delay = m_state.markLost(ip);
    showLink(ip);
    if (ip == m_state.currentIp())
        setTip(tr("The connection to decoder %1 was lost.").arg(ip));
    m_mimic->sync();
    scheduleReconnect(ip, delay);
}

void MatrixForm::scheduleReconnect(const QString& ip, int delayMs)
{
    if (m_stopped)
        return;
    QTimer*& timer = m_retryTimers[ip];
    if (!timer) {
        timer = new QTimer(this);
        timer->setSingleShot(true);
        connect(timer, &QTimer::timeout, this, [this, ip] {
            const MatrixPageState::Link link = m_state.link(ip);
            if (m_stopped || (link != MatrixPageState::Link::Lost && link != MatrixPageState::Link::Failed))
                return;
            if (ip == m_state.currentIp())
                slotReconnect();
            else
                connectDecoder(ip, this);
        });
    }
    timer->start(delayMs);
}

void MatrixForm::slotReconnect()
{
    connectDecoder(m_state.currentIp(), this);
}

void MatrixForm::stopReconnecting()
{
    m_stopped = true;
    for (QTimer* timer : qAsConst(m_retryTimers))
        timer->stop();
}

void MatrixForm::disconnectAll()
{
    stopReconnecting();
    m_playback->stopAll(); // before the links the replays send over go
    for (const MatrixInfo& d : m_state.decoders()) {
        if (m_state.link(d.ip) == MatrixPageState::Link::Connected)
            m_worker->disconnectMatrix(m_worker->getHandleByIp(d.ip));
    }
    m_state.setDecoders({}, QString());
    setDecoderList({}, QString());
}

void MatrixForm::slotRefreshTvWall()
{
    const TvWallIni::Login login = TvWallIni::readLogin();
    if (!login.ip.isEmpty() && m_state.hasDecoder(login.ip) && login.ip == m_state.currentIp()) {
        MatrixInfo info = m_state.decoder(login.ip);
        info.type = login.type;
        if (login.port > 0)
            info.manager_port = login.port;
        info.username = login.username;
        info.password = login.password;
        m_state.updateDecoder(info);
    }
    if (m_state.hasDecoder(m_state.currentIp())) {
        m_stopped = false;
        connectDecoder(m_state.currentIp(), m_errorReporter);
    }
}

void MatrixForm::showLink(const QString& ip)
{
    m_strip->setLink(ip, m_state.link(ip), m_state.attempts(ip));
}

QSharedPointer<CSharedHandle> MatrixForm::requireHandle()
{
    const QSharedPointer<CSharedHandle> handle = m_state.currentHandle();
    if (!handle)
        SystemAssistant::messageAlert(tr("The TV wall is not connected, please connect the TV wall first."), this);
    return handle;
}

void MatrixForm::slotConfigBtnClicked()
{
    auto* dialog = new DecoderConfigDlg(this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &DecoderConfigDlg::signalConfigurationSaved, this, &MatrixForm::signalConfigurationChanged);
    dialog->open();
}

void MatrixForm::slotLoginBtnClicked()
{
    if (!m_state.hasDecoder(m_state.currentIp()))
        return;
    auto* dialog = new LoginDlg(m_state.current(), LoginDlg::Mode::Login, this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &LoginDlg::accepted, this, [this, dialog] {
        m_state.updateDecoder(dialog->decoder());
        m_stopped = false;
        connectDecoder(dialog->decoder().ip, &m_loginTag);
    });
    dialog->open();
}

} // namespace kvms_matrix
