// MatrixForm: the wall's banner and the files on the decoder's USB storage.
#include "MatrixForm.h"

#include "BannerConfigDlg.h"
#include "ControlMatrixWt.h"
#include "DevFileDlg.h"
#include "MatrixSdkWorker.h"

#include "SystemAssistant.h"

#include <QBoxLayout>
#include <QPushButton>

namespace kvms_matrix {

void MatrixForm::buildExtras()
{
    m_bannerBtn = new QPushButton(tr("Banner"), this);
    m_bannerBtn->setToolTip(tr("Put a scrolling banner on the wall"));
    m_devFileBtn = new QPushButton(tr("USB files"), this);
    m_devFileBtn->setToolTip(tr("Play a video file of the decoder's USB storage in the selected window"));
    // Beside the roaming-window button in the page's tool row.
    auto* page = qobject_cast<QBoxLayout*>(layout());
    auto* tools = page && page->count() > 0 ? qobject_cast<QBoxLayout*>(page->itemAt(0)->layout()) : nullptr;
    if (tools) {
        const int at = tools->indexOf(m_roamingBtn);
        tools->insertWidget(at + 1, m_devFileBtn);
        tools->insertWidget(at + 1, m_bannerBtn);
    }
    connect(m_bannerBtn, &QPushButton::clicked, this, &MatrixForm::slotBannerBtnClicked);
    connect(m_devFileBtn, &QPushButton::clicked, this, &MatrixForm::slotDevFileBtnClicked);
    connect(m_canvas, &ControlMatrixWt::signalBannerConfig, this, &MatrixForm::slotBannerBtnClicked);
    connect(m_canvas, &ControlMatrixWt::signalSetBanner, this, &MatrixForm::slotSetBanner);
    connect(m_canvas, &ControlMatrixWt::signalDelBanner, this, &MatrixForm::slotDelBanner);
    const auto queued = Qt::QueuedConnection;
    connect(m_worker, &MatrixSdkWorker::signalSetBannerResult, this, &MatrixForm::slotSetBannerResult, queued);
    connect(m_worker, &MatrixSdkWorker::signalRemoveBannerResult, this, &MatrixForm::slotRemoveBannerResult, queued);
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

} // namespace kvms_matrix
