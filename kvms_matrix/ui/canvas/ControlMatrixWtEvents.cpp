#include "ControlMatrixWt.h"

#include "CanvasGeometry.h"
#include "FloatingWt.h"
#include "MatrixBannerWt.h"
#include "MatrixPanelWt.h"
#include "MatrixScreenGridWt.h"

#include <QDragEnterEvent>
#include <QMimeData>
#include <QMouseEvent>

// Mouse, drag and visibility handling of the canvas; what a gesture means is the page's.

namespace kvms_matrix {

namespace {

const char* const kSourceFormat = "application/x-qabstractitemmodeldatalist";
const char* const kListItemFormat = "matrixlistitem";

bool acceptedFormat(const QMimeData* data)
{
    return data && (data->hasFormat(QLatin1String(kSourceFormat)) || data->hasFormat(QLatin1String(kListItemFormat)));
}

} // namespace

bool ControlMatrixWt::hitTest(const QPoint& pos, int* windowId, int* subWindowId, int* windowType) const
{
    const auto answer = [&](int id, int sub, int type) {
        if (windowId)
            *windowId = id;
        if (subWindowId)
            *subWindowId = sub;
        if (windowType)
            *windowType = type;
        return true;
    };
    for (auto it = m_floatingWts.cend(); it != m_floatingWts.cbegin();) {
        --it;
        const FloatingWt* floating = it.value();
        if (floating->isVisible() && floating->geometry().contains(pos))
            return answer(floating->windowId(), floating->panel()->subWindowId(), 2);
    }
    const QSize canvas = size();
    for (const QMap<int, MatrixWindowInfo>* map : { &m_splicedWindows, &m_windows }) {
        for (const MatrixWindowInfo& window : *map) {
            if (!CanvasGeometry::windowRect(window, canvas).contains(pos))
                continue;
            // The panel under the point; on the title strip or a border, the sub-window shown
            // full, else the first one.
            const int full = fullSubWindowIndex(window.windowId, window.windowType);
            int fallback = -1;
            for (const MatrixSubWindowInfo& sub : window.subWindows) {
                const MatrixPanelWt* panel
                    = m_panels.value(panelKey(window.windowId, sub.subWindowId, window.windowType));
                if (panel && !panel->isHidden() && panel->geometry().contains(pos))
                    return answer(window.windowId, sub.subWindowId, window.windowType);
                if (fallback == -1 || sub.subWindowIndex == full)
                    fallback = sub.subWindowId;
            }
            return answer(window.windowId, fallback, window.windowType);
        }
    }
    return false;
}

void ControlMatrixWt::selectWindow(int windowId, int subWindowId, int windowType)
{
    const bool changed
        = windowId != m_currentWindowId || subWindowId != m_currentSubWindowId || windowType != m_currentWindowType;
    m_currentWindowId = windowId;
    m_currentSubWindowId = subWindowId;
    m_currentWindowType = windowType;
    update();
    if (changed)
        emit signalWindowSelected(windowId, subWindowId, windowType);
}

void ControlMatrixWt::deselectFloatingWindows(FloatingWt* except)
{
    for (FloatingWt* floating : qAsConst(m_floatingWts)) {
        if (floating != except && floating->isSelected())
            floating->setSelected(false);
    }
}

void ControlMatrixWt::mousePressEvent(QMouseEvent* event)
{
    deselectFloatingWindows(nullptr);
    setFocus(Qt::MouseFocusReason);
    if (event->button() == Qt::LeftButton)
        startJoinBand(event->pos(), event->modifiers() & Qt::ShiftModifier);
    int windowId = -1, subWindowId = -1, windowType = 0;
    if (hitTest(event->pos(), &windowId, &subWindowId, &windowType))
        selectWindow(windowId, subWindowId, windowType);
    QWidget::mousePressEvent(event);
}

void ControlMatrixWt::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton && finishJoinBand(event->pos())) {
        event->accept();
        return;
    }
    QWidget::mouseReleaseEvent(event);
}

void ControlMatrixWt::mouseDoubleClickEvent(QMouseEvent* event)
{
    QWidget::mouseDoubleClickEvent(event);
}

void ControlMatrixWt::mouseMoveEvent(QMouseEvent* event)
{
    if ((event->buttons() & Qt::LeftButton) && moveJoinBand(event->pos())) {
        event->accept();
        return;
    }
    QWidget::mouseMoveEvent(event);
}

void ControlMatrixWt::resizeEvent(QResizeEvent* event)
{
    placeOverlay();
    placeBanner();
    layoutPanels();
    QWidget::resizeEvent(event);
}

void ControlMatrixWt::showEvent(QShowEvent* event)
{
    placeOverlay();
    m_gridWt->show();
    placeBanner();
    layoutPanels();
    QWidget::showEvent(event);
}

void ControlMatrixWt::hideEvent(QHideEvent* event)
{
    m_gridWt->hide();
    m_bannerWt->hide();
    QWidget::hideEvent(event);
}

void ControlMatrixWt::dragEnterEvent(QDragEnterEvent* event)
{
    if (acceptedFormat(event->mimeData()))
        event->acceptProposedAction();
    else
        event->ignore();
}

void ControlMatrixWt::dragLeaveEvent(QDragLeaveEvent* event)
{
    QWidget::dragLeaveEvent(event);
}

void ControlMatrixWt::dropEvent(QDropEvent* event)
{
    const QMimeData* data = event->mimeData();
    int windowId = -1, subWindowId = -1, windowType = 0;
    if (!acceptedFormat(data) || !hitTest(event->pos(), &windowId, &subWindowId, &windowType)) {
        event->ignore();
        return;
    }
    if (data->hasFormat(QLatin1String(kListItemFormat))) {
        // A loop item carries its id as decimal text.
        bool ok = false;
        const int id = QString::fromLocal8Bit(data->data(QLatin1String(kListItemFormat))).trimmed().toInt(&ok);
        if (!ok) {
            event->ignore();
            return;
        }
        event->acceptProposedAction();
        emit signalLoopListDropEvent(windowId, subWindowId, windowType, id);
        return;
    }
    event->acceptProposedAction();
    emit signalVideoPanelDropEvent(windowId, subWindowId, windowType);
}

void ControlMatrixWt::slotFloatingWtMove()
{
    auto* floating = qobject_cast<FloatingWt*>(sender());
    if (!floating)
        return;
    floating->setWallRect(CanvasGeometry::toWallRect(floating->geometry(), size()));
    emit signalMoveFloatingWindow(floating->windowInfo());
}

void ControlMatrixWt::slotFloatingSelected()
{
    auto* floating = qobject_cast<FloatingWt*>(sender());
    if (!floating)
        return;
    deselectFloatingWindows(floating);
    restack();
    selectWindow(floating->windowId(), floating->panel()->subWindowId(), 2);
}

void ControlMatrixWt::slotBannerWtMove()
{
    // The banner's size in wall units stays as it was; only where it lies changes.
    const QPoint at = m_bannerWt->pos();
    m_banner.x = CanvasGeometry::toUnits(at.x(), width());
    m_banner.y = CanvasGeometry::toUnits(at.y(), height());
    emit signalSetBanner(m_banner.x, m_banner.y, m_banner.w, m_banner.h);
}

void ControlMatrixWt::slotDelBanner()
{
    emit signalDelBanner();
}

} // namespace kvms_matrix
