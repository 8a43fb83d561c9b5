// MatrixForm: the wall's results from the worker and the operator's actions on the wall.
#include "MatrixForm.h"

#include "ControlMatrixWt.h"
#include "MatrixSdkWorker.h"
#include "SourcePane.h"
#include "SourceRecords.h"
#include "WallConfigStore.h"

#include "SystemAssistant.h"

#include <QLabel>
#include <QListWidget>

namespace kvms_matrix {

void MatrixForm::slotGetWindowInfoResult(QList<MatrixWindowInfo> windowInfoList, int row, int col)
{
    const QSharedPointer<CSharedHandle> handle = m_state.currentHandle();
    if (!handle)
        return; // a wall read for a link that is gone since
    if (layOutEmptyWall(windowInfoList))
        return;
    m_canvas->setWindowInfoList(windowInfoList, row, col);
    m_canvas->setBannerInfo(m_worker->getBanner(handle));
    setTip(QString());
}

bool MatrixForm::layOutEmptyWall(const QList<MatrixWindowInfo>& windows)
{
    // Scenes and loops of the wall arrive before its windows (they are asked for first).
    if (!windows.isEmpty() || m_sceneList->count() > 0 || m_loopList->count() > 0 || m_layingOut
        || m_laidOutIp == m_state.currentIp())
        return false;
    const TvWallManagement wall = WallConfigStore::wall();
    if (wall.main_decoder_ip != m_state.currentIp() || wall.row < 1 || wall.column < 1)
        return false;
    QList<MatrixInfo> decoders { m_state.current() };
    for (const MatrixInfo& second : wall.second_ip)
        if (m_state.hasDecoder(second.ip) && second.ip != wall.main_decoder_ip)
            decoders.append(m_state.decoder(second.ip));
    const int rows = qMin(wall.row, int(WallConfigStore::kMaxGrid));
    const int cols = qMin(wall.column, int(WallConfigStore::kMaxGrid));
    m_layingOut = true;
    m_laidOutIp = m_state.currentIp();
    setTip(tr("Laying out the TV wall..."));
    m_worker->setLayout(wall.name, m_state.current().type, rows, cols,
        WallConfigStore::layoutScreens(rows, cols, decoders), m_state.currentIp());
    return true;
}

void MatrixForm::slotSetLayoutResult(int result)
{
    if (!m_layingOut)
        return;
    m_layingOut = false;
    if (result != 0)
        setTip(tr("Setting up the TV wall failed(%1, %2).").arg(result).arg(MatrixSdkWorker::getErrorInfo(result)));
    else if (const QSharedPointer<CSharedHandle> handle = m_state.currentHandle())
        m_worker->getWindowInfo(handle);
}

void MatrixForm::slotRoamingBtnClicked()
{
    if (requireHandle())
        m_canvas->createFloatingWindow();
}

void MatrixForm::slotCreateFloatingWindow(MatrixWindowInfo windowInfo)
{
    const QSharedPointer<CSharedHandle> handle = requireHandle();
    if (!handle)
        return;
    if (windowInfo.windowId < 1) {
        // A free id above the grid's cells and every window on the wall.
        int id = m_canvas->rows() * m_canvas->cols();
        for (const MatrixWindowInfo& w : m_canvas->windowInfoList())
            id = qMax(id, w.windowId);
        windowInfo.windowId = id + 1;
        windowInfo.windowIndex = id;
    }
    windowInfo.windowType = 2;
    if (windowInfo.subWindows.isEmpty())
        windowInfo.subWindows.append(MatrixSubWindowInfo());
    m_worker->addWindowInfo(handle, windowInfo);
}

void MatrixForm::slotAddWindowInfoResult(int result, MatrixWindowInfo windowInfo)
{
    if (result != 0) {
        setTip(tr("Open window failed(%1).").arg(result));
        return;
    }
    m_canvas->setWindowInfo(windowInfo);
}

void MatrixForm::slotMoveFloatingWindow(MatrixWindowInfo windowInfo)
{
    if (const QSharedPointer<CSharedHandle> handle = requireHandle())
        m_worker->moveFloatingWindow(handle, windowInfo);
}

void MatrixForm::slotRemoveWindowResult(int result, int windowId, int windowType)
{
    if (result != 0) {
        setTip(tr("delete window failed"));
        return;
    }
    m_canvas->removeWindowInfo(windowId, windowType);
    // A spliced window gives its cells back: the wall is read again to show them.
    if (windowType == 1)
        if (const QSharedPointer<CSharedHandle> handle = m_state.currentHandle())
            m_worker->getWindowInfo(handle);
}

void MatrixForm::slotSetWindowSplitResult(int result, int windowId, QList<MatrixSubWindowInfo> subWindowInfoList)
{
    if (result == 0 && !subWindowInfoList.isEmpty())
        m_canvas->setSubWindows(windowId, subWindowInfoList);
    else
        setTip(tr("cut window failed"));
}

void MatrixForm::slotClearWindowResult(int result, int windowId, int subWindowId, int windowType)
{
    if (result != 0)
        setTip(tr("cls failed"));
    else
        followProjection(windowId, subWindowId, false);
    m_canvas->clearSubWindow(windowId, subWindowId, windowType);
}

void MatrixForm::slotSetFullWindowResult(int result, int windowId, int subWindowId)
{
    if (result != 0)
        setTip(tr("full window failed"));
    m_canvas->toggleFullSubWindow(windowId, subWindowId);
}

void MatrixForm::slotVideoPanelDropEvent(int windowId, int subWindowId, int windowType)
{
    const QSharedPointer<CSharedHandle> handle = requireHandle();
    MatrixWindowInfo window;
    if (!handle || !m_canvas->windowInfo(windowId, windowType, &window))
        return;
    MatrixDeviceInfo source;
    // Not a channel: a camera source with an empty id is bound, as the decoder has always had it.
    if (!m_sources->currentSource(&source))
        source.deviceType = 1;
    bool found = false;
    for (MatrixSubWindowInfo& sub : window.subWindows) {
        if (sub.subWindowId == subWindowId || (windowType == 2 && !found)) {
            sub.device = source;
            sub.sourceState = SourceRecords::sourceStateOf(source.deviceType);
            found = true;
        }
    }
    if (found)
        m_worker->setWindowSignalSource(handle, window, subWindowId, false);
}

void MatrixForm::slotSetAudioOutputEnableResult(int result)
{
    if (result != 0)
        setTip(tr("Video sound control failed!"));
}

} // namespace kvms_matrix
