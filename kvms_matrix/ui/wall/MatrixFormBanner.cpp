// MatrixForm: the wall's banner and the files on the decoder's USB storage.
#include "MatrixForm.h"

#include "BannerConfigDlg.h"
#include "ControlMatrixWt.h"
#include "DevFileDlg.h"
#include "MatrixSdkWorker.h"
#include "ScreenColourDlg.h"

#include "SystemAssistant.h"

#include <QAction>
#include <QBoxLayout>
#include <QMenu>
#include <QPushButton>

namespace kvms_matrix {

void MatrixForm::buildExtras()
{
    m_bannerBtn = new QPushButton(tr("Banner"), this);
    m_bannerBtn->setToolTip(tr("Put a scrolling banner on the wall"));
    m_devFileBtn = new QPushButton(tr("USB files"), this);
    m_devFileBtn->setToolTip(tr("Play a video file of the decoder's USB storage in the selected window"));
    m_hdmiBtn = new QPushButton(tr("HDMI input"), this);
    auto* inputs = new QMenu(m_hdmiBtn);
    inputs->setObjectName(QStringLiteral("matrixHdmiMenu"));
    m_hdmiBtn->setMenu(inputs);
    slotDevStatusResult(0, 0, 0, 0); // nothing offered until the decoder says what it has
    m_colourBtn = new QPushButton(tr("Screen colour"), this);
    m_colourBtn->setToolTip(tr("Brightness, contrast, saturation and hue of the selected window's screen"));
    m_captureBtn = new QPushButton(tr("Capture"), this);
    m_captureBtn->setObjectName(QStringLiteral("matrixCaptureBtn"));
    m_captureBtn->setToolTip(tr("How \"grab screen\" puts this desktop on the wall"));
    // Beside the roaming-window button in the page's tool row.
    auto* page = qobject_cast<QBoxLayout*>(layout());
    auto* tools = page && page->count() > 0 ? qobject_cast<QBoxLayout*>(page->itemAt(0)->layout()) : nullptr;
    if (tools) {
        const int at = tools->indexOf(m_roamingBtn);
        tools->insertWidget(at + 1, m_captureBtn);
        tools->insertWidget(at + 1, m_colourBtn);
        tools->insertWidget(at + 1, m_hdmiBtn);
        tools->insertWidget(at + 1, m_devFileBtn);
        tools->insertWidget(at + 1, m_bannerBtn);
    }
    connect(m_bannerBtn, &QPushButton::clicked, this, &MatrixForm::slotBannerBtnClicked);
    connect(m_devFileBtn, &QPushButton::clicked, this, &MatrixForm::slotDevFileBtnClicked);
    connect(m_colourBtn, &QPushButton::clicked, this, &MatrixForm::slotScreenColourBtnClicked);
    connect(m_captureBtn, &QPushButton::clicked, this, &MatrixForm::slotCaptureBtnClicked);
    connect(m_canvas, &ControlMatrixWt::signalBannerConfig, this, &MatrixForm::slotBannerBtnClicked);
    connect(m_canvas, &ControlMatrixWt::signalSetBanner, this, &MatrixForm::slotSetBanner);
    connect(m_canvas, &ControlMatrixWt::signalDelBanner, this, &MatrixForm::slotDelBanner);
    const auto queued = Qt::QueuedConnection;
    connect(m_worker, &MatrixSdkWorker::signalSetBannerResult, this, &MatrixForm::slotSetBannerResult, queued);
    connect(m_worker, &MatrixSdkWorker::signalRemoveBannerResult, this, &MatrixForm::slotRemoveBannerResult, queued);
    connect(m_worker, &MatrixSdkWorker::signalDevStatusResult, this, &MatrixForm::slotDevStatusResult, queued);
    connect(inputs, &QMenu::aboutToShow, this, [this] {
        // Cables come and go: the next opening shows the news.
        if (const QSharedPointer<CSharedHandle> handle = m_state.currentHandle())
            m_worker->refreshHDMIStatus(handle);
    });
    connect(
        m_worker, &MatrixSdkWorker::signalGetDevPlayFileResult, this, &MatrixForm::slotGetDevPlayFileResult, queued);
}

void MatrixForm::slotBannerBtnClicked()
{
    if (!requireHandle())
        return;
    const MatrixBannerInfo current = m_canvas->bannerInfo();
    auto* dialog = new BannerConfigDlg(current, m_canvas->isBannerSet() && current.w > 0, this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &BannerConfigDlg::accepted, this, [this, dialog] {
        const QSharedPointer<CSharedHandle> handle = requireHandle();
        if (!handle)
            return;
        if (dialog->isShown())
            m_worker->setBanner(handle, dialog->banner());
        else
            m_worker->removeBanner(handle);
    });
    dialog->open();
}

void MatrixForm::slotSetBanner(int x, int y, int width, int height)
{
    const QSharedPointer<CSharedHandle> handle = requireHandle();
    if (!handle)
        return;
    MatrixBannerInfo banner = m_canvas->bannerInfo();
    banner.x = x;
    banner.y = y;
    banner.w = width;
    banner.h = height;
    m_worker->setBanner(handle, banner);
}

void MatrixForm::slotDelBanner()
{
    if (const QSharedPointer<CSharedHandle> handle = requireHandle())
        m_worker->removeBanner(handle);
}

void MatrixForm::slotSetBannerResult(int result, MatrixBannerInfo banner)
{
    if (result != 0) {
        setTip(tr("Set banner failed(%1).").arg(result));
        // Back to what the decoder shows.
        if (const QSharedPointer<CSharedHandle> handle = m_state.currentHandle())
            m_canvas->setBannerInfo(m_worker->getBanner(handle));
        return;
    }
    m_canvas->setBannerInfo(banner);
}

void MatrixForm::slotRemoveBannerResult(int result)
{
    if (result != 0) {
        setTip(tr("Remove banner failed(%1).").arg(result));
        return;
    }
    MatrixBannerInfo hidden = m_canvas->bannerInfo();
    hidden.w = 0;
    m_canvas->setBannerInfo(hidden);
}

void MatrixForm::slotDevFileBtnClicked()
{
    const QSharedPointer<CSharedHandle> handle = requireHandle();
    if (!handle)
        return;
    MatrixWindowInfo window;
    if (m_canvas->currentWindowId() < 0
        || !m_canvas->windowInfo(m_canvas->currentWindowId(), m_canvas->currentWindowType(), &window)) {
        SystemAssistant::messageAlert(tr("please select window"), this);
        return;
    }
    m_worker->getDevPlayFileList(
        handle, window.windowId, m_canvas->currentSubWindowId(), m_canvas->currentWindowType());
}

void MatrixForm::slotGetDevPlayFileResult(QList<DevPlayFile_t> files, int windowId, int subWindowId, int windowType)
{
    bool any = false;
    for (const DevPlayFile_t& file : qAsConst(files))
        any = any || !file.isDirectory;
    if (!any) {
        SystemAssistant::messageAlert(tr("Video file fetch is empty!"), this);
        return;
    }
    auto* dialog = new DevFileDlg(files, this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &DevFileDlg::signalPlayFile, this, [this, windowId, subWindowId, windowType](const QString& path) {
        const QSharedPointer<CSharedHandle> handle = requireHandle();
        MatrixWindowInfo window;
        if (handle && m_canvas->windowInfo(windowId, windowType, &window))
            m_worker->startPlayDevFile(handle, window, subWindowId, path);
    });
    dialog->open();
}

void MatrixForm::slotDevStatusResult(int inputCount, int inputConnected, int, int)
{
    // A failed read carries its (negative) code as the count: no input is offered then.
    constexpr int kMaxInputs = 4; // the SDK's status record has room for four
    const int count = qBound(0, inputCount, kMaxInputs);
    QMenu* inputs = m_hdmiBtn->menu();
    inputs->clear();
    for (int i = 0; i < count; ++i) {
        const bool cable = inputConnected & (1 << i);
        QAction* action
            = inputs->addAction(cable ? tr("HDMI input %1").arg(i + 1) : tr("HDMI input %1 (no signal)").arg(i + 1),
                this, [this, i] { slotHdmiInputChosen(i); });
        action->setData(i);
    }
    m_hdmiBtn->setEnabled(count > 0);
    m_hdmiBtn->setToolTip(count > 0 ? tr("Show an HDMI input of the decoder in the selected window")
                                    : tr("The decoder has no HDMI input"));
}

void MatrixForm::slotHdmiInputChosen(int input)
{
    const QSharedPointer<CSharedHandle> handle = requireHandle();
    MatrixWindowInfo window;
    if (!handle)
        return;
    if (m_canvas->currentWindowId() < 0
        || !m_canvas->windowInfo(m_canvas->currentWindowId(), m_canvas->currentWindowType(), &window)) {
        SystemAssistant::messageAlert(tr("please select window"), this);
        return;
    }
    m_worker->startPlayHdmiVideo(handle, window, m_canvas->currentSubWindowId(), input);
}

void MatrixForm::slotScreenColourBtnClicked()
{
    const QSharedPointer<CSharedHandle> handle = requireHandle();
    MatrixWindowInfo window;
    if (!handle)
        return;
    if (m_canvas->currentWindowId() < 0
        || !m_canvas->windowInfo(m_canvas->currentWindowId(), m_canvas->currentWindowType(), &window)) {
        SystemAssistant::messageAlert(tr("please select window"), this);
        return;
    }
    // The screen under the window's top-left corner.
    const int col = qBound(0, window.x / qMax(1, 32768 / m_canvas->cols()), m_canvas->cols() - 1);
    const int row = qBound(0, window.y / qMax(1, 32768 / m_canvas->rows()), m_canvas->rows() - 1);
    auto* dialog = new ScreenColourDlg(col, row, this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    // The answers carry no screen: the dialog takes the first one after its own request.
    auto answered = QSharedPointer<bool>::create(false);
    connect(
        m_worker, &MatrixSdkWorker::signalMatrixGetScreenColorResult, dialog,
        [this, dialog, answered](ScreenColor colour) {
            if (*answered)
                return;
            *answered = true;
            // All zero is the worker's word for a refused read: nothing is offered to change.
            if (colour.brightness == 0 && colour.contrast == 0 && colour.saturation == 0 && colour.hue == 0)
                setTip(tr("Reading the screen colour failed."));
            else
                dialog->setColour(colour);
        },
        Qt::QueuedConnection);
    connect(
        m_worker, &MatrixSdkWorker::signalMatrixSetScreenColorResult, dialog,
        [this](int result) {
            if (result != 0)
                setTip(tr("Set screen colour failed(%1).").arg(result));
        },
        Qt::QueuedConnection);
    connect(dialog, &ScreenColourDlg::signalApply, this, [this](int c, int r, ScreenColor colour) {
        if (const QSharedPointer<CSharedHandle> h = requireHandle())
            m_worker->setMatrixScreenColor(h, c, r, colour);
    });
    dialog->open();
    m_worker->getMatrixScreenColor(handle, col, row);
}

} // namespace kvms_matrix
