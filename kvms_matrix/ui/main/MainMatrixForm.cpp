#include "MainMatrixForm.h"

#include "ConnectErrorText.h"
#include "MatrixDefaultForm.h"
#include "MatrixForm.h"
#include "MatrixSdkWorker.h"
#include "MatrixSignals.h"
#include "WallConfigStore.h"

#include "KSingleton.h"
#include "SystemAssistant.h"
#include "SystemMsg.h"

#include <QStackedWidget>
#include <QVBoxLayout>

namespace kvms_matrix {

MainMatrixForm::MainMatrixForm(QWidget* parent)
    : kvms_base::BaseForm(parent)
{
    setObjectName(QStringLiteral("matrixMainForm"));
    m_stack = new QStackedWidget(this);
    matrixDefaultWt = new MatrixDefaultForm(m_stack);
    matrixTvWallWt = new MatrixForm(m_stack);
    // Logins the operator asked for report their errors here; the page's own retries do not.
    matrixTvWallWt->setErrorReporter(this);
    m_stack->addWidget(matrixDefaultWt);
    m_stack->addWidget(matrixTvWallWt);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_stack);

    MatrixSdkWorker* worker = KCOMMON::KSingleton<MatrixSdkWorker>::instance();
    connect(worker, &MatrixSdkWorker::signalConnectMatrixResult, this, &MainMatrixForm::slotConnectMatrixResult,
        Qt::QueuedConnection);
    connect(worker, &MatrixSdkWorker::signalConnectErrorMsg, this, &MainMatrixForm::slot_connectErrorMsg,
        Qt::QueuedConnection);
    connect(KCOMMON::KSingleton<SystemMsg>::instance(), &SystemMsg::signalQuitSystem, this,
        &MainMatrixForm::slotQuitSystem);
    MatrixSignals* hub = KCOMMON::KSingleton<MatrixSignals>::instance();
    connect(hub, &MatrixSignals::signalSetWindowTitle, this, &MainMatrixForm::signalFormNameChanged);
    connect(matrixDefaultWt, &MatrixDefaultForm::signalConfigurationChanged, this, &MainMatrixForm::slotUpdateScreen);
    connect(matrixTvWallWt, &MatrixForm::signalConfigurationChanged, this, &MainMatrixForm::slotUpdateScreen);
}

MainMatrixForm::~MainMatrixForm() = default;

int MainMatrixForm::currentPage() const
{
    return m_stack->currentIndex();
}

void MainMatrixForm::recoveryToInitialState()
{
    matrixTvWallWt->disconnectAll();
    chooseStackPage();
}

void MainMatrixForm::setRestoreWidget(QWidget* widget, const void* uniqueId)
{
    m_restoreWidget = widget;
    m_restoreId = uniqueId;
}

void MainMatrixForm::showEvent(QShowEvent* event)
{
    kvms_base::BaseForm::showEvent(event);
    chooseStackPage();
    if (!m_restoreWidget)
        return;
    if (!m_restoreId) {
        m_restoreId = m_restoreWidget.data();
        m_restoreWidget->show();
        m_restoreWidget->raise();
    } else {
        m_restoreWidget->deleteLater();
        m_restoreWidget.clear();
        m_restoreId = nullptr;
    }
}

void MainMatrixForm::slotUpdateScreen()
{
    chooseStackPage();
}

void MainMatrixForm::chooseStackPage()
{
    m_decoders = WallConfigStore::decoders();
    m_decoderNames.clear();
    for (const MatrixInfo& d : m_decoders) {
        const bool named = !d.id.isEmpty() && d.id != QString(QChar(0xFFFF));
        m_decoderNames.insert(d.ip, named ? d.id : d.ip);
    }
    if (m_decoders.isEmpty()) {
        matrixTvWallWt->setDecoderList({}, QString());
        m_stack->setCurrentIndex(0);
        emit KCOMMON::KSingleton<MatrixSignals>::instance()->signalSetWindowTitle(tr("TV wall"));
        return;
    }
    m_currentIp = WallConfigStore::mainDecoderIp(m_decoders);
    m_stack->setCurrentIndex(1);
    matrixTvWallWt->setDecoderList(m_decoders, m_currentIp);
    const QString wallName = WallConfigStore::wall().name;
    emit KCOMMON::KSingleton<MatrixSignals>::instance()->signalSetWindowTitle(
        wallName.isEmpty() ? tr("TV wall") : wallName);
}

void MainMatrixForm::slotQuitSystem()
{
    // The worker disconnects every decoder on the same notice; the page only stops retrying.
    matrixTvWallWt->stopReconnecting();
}

void MainMatrixForm::slotConnectMatrixResult(QSharedPointer<CSharedHandle> mHandle, int result, int, void* pUser)
{
    if (pUser != this || result != 0 || !mHandle)
        return;
    // A decoder the operator logged in to is remembered as the last one.
    for (const MatrixInfo& d : m_decoders)
        if (d.ip == mHandle->ip())
            MatrixSdkWorker::writeMatrixLastConnectedInfoToJson(d);
}

QString MainMatrixForm::decoderName(const QString& ip) const
{
    return m_decoderNames.value(ip, ip);
}

void MainMatrixForm::slot_connectErrorMsg(QString ip, ConnectErrorMsgInfo errorMsg, void* pUser)
{
    if (pUser != this)
        return;
    SystemAssistant::messageAlert(ConnectErrorText::loginError(decoderName(ip), errorMsg), this);
}

} // namespace kvms_matrix
