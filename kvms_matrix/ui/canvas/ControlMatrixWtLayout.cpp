#include "ControlMatrixWt.h"

#include "CanvasGeometry.h"
#include "FloatingWt.h"
#include "MatrixBannerWt.h"
#include "MatrixPanelWt.h"
#include "MatrixScreenGridWt.h"
#include "MatrixSelectWt.h"

#include <QPainter>

// Laying out the canvas's child widgets from the wall units of its records, and painting the
// windows' frames and title strips.

namespace kvms_matrix {

namespace {

const QColor kBackground("#0e1624");
const QColor kWindowBack("#1e293d");
const QColor kWindowEdge("#2e3b55");
const QColor kTitleBack("#24324b");
const QColor kCurrentTitleBack("#0659a4");
const QColor kCurrentEdge("#3d8bfd");
const QColor kTitleText("#d8dee9");

// Avoids a move or resize, and the repaint it causes, when nothing changed.
void place(QWidget* widget, const QRect& rect)
{
    const QRect bounded(rect.x(), rect.y(), qMax(0, rect.width()), qMax(0, rect.height()));
    if (widget->geometry() != bounded)
        widget->setGeometry(bounded);
}

} // namespace

void ControlMatrixWt::layoutPanels()
{
    const QSize canvas = size();
    // Panels of one window overlap none of another's, so one stacking pass after placing is
    // enough: ordinary windows first, spliced windows over them.
    for (const MatrixWindowInfo& window : qAsConst(m_windows))
        layoutWindow(window, canvas);
    for (const MatrixWindowInfo& window : qAsConst(m_splicedWindows))
        layoutWindow(window, canvas);
    placeFloatingWindows();
    restack();
    update();
}

void ControlMatrixWt::layoutWindow(const MatrixWindowInfo& window, const QSize& canvas)
{
    const int full = fullSubWindowIndex(window.windowId, window.windowType);
    const QVector<QRect> cells = full == -1 ? CanvasGeometry::panelRects(window, canvas) : QVector<QRect>();
    const QRect fullRect = full == -1 ? QRect() : CanvasGeometry::fullPanelRect(window, canvas);
    for (const MatrixSubWindowInfo& sub : window.subWindows) {
        MatrixPanelWt* panel = m_panels.value(panelKey(window.windowId, sub.subWindowId, window.windowType));
        if (!panel)
            continue;
        const int index = sub.subWindowIndex;
        bool shown = false;
        if (full == -1 && index >= 0 && index < cells.size()) {
            place(panel, cells.at(index));
            shown = true;
        } else if (full != -1 && index == full) {
            place(panel, fullRect);
            shown = true;
        }
        if (shown) {
            panel->raise();
            if (panel->isHidden())
                panel->show();
        } else if (!panel->isHidden()) {
            panel->hide();
        }
    }
}

void ControlMatrixWt::placeFloatingWindows()
{
    for (FloatingWt* floating : qAsConst(m_floatingWts))
        place(floating, CanvasGeometry::windowRect(floating->windowInfo(), size()));
}

void ControlMatrixWt::placeOverlay()
{
    place(m_gridWt, rect());
}

void ControlMatrixWt::placeBanner()
{
    if (!m_bannerSet) {
        m_bannerWt->hide();
        return;
    }
    const QRect bannerRect = CanvasGeometry::bannerRect(m_banner, size());
    place(m_bannerWt, bannerRect);
    // A hidden canvas shows the banner with itself later.
    m_bannerWt->setVisible(bannerRect.width() != 0);
    m_bannerWt->raise();
}

void ControlMatrixWt::restack()
{
    // Joints and screen numbers over the windows; floating windows, their frames and the banner
    // above them.
    m_gridWt->raise();
    for (FloatingWt* floating : qAsConst(m_floatingWts)) {
        floating->raise();
        if (floating->isSelected() && floating->selectWt())
            floating->selectWt()->raise();
    }
    m_bannerWt->raise();
}

void ControlMatrixWt::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), kBackground);
    for (const MatrixWindowInfo& window : qAsConst(m_windows))
        paintWindow(painter, window);
    for (const MatrixWindowInfo& window : qAsConst(m_splicedWindows))
        paintWindow(painter, window);
}

void ControlMatrixWt::paintWindow(QPainter& painter, const MatrixWindowInfo& window)
{
    const QSize canvas = size();
    const QRect frame = CanvasGeometry::windowRect(window, canvas);
    if (frame.width() <= 0 || frame.height() <= 0)
        return;
    const bool current = window.windowId == m_currentWindowId && window.windowType == m_currentWindowType;
    painter.fillRect(frame, kWindowBack);
    const QRect title = CanvasGeometry::titleRect(window, canvas);
    painter.fillRect(title, current ? kCurrentTitleBack : kTitleBack);

    if (title.height() >= 8 && title.width() >= 24) {
        QFont font = painter.font();
        font.setPixelSize(qBound(7, title.height() * 2 / 3, 14));
        font.setBold(current);
        painter.setFont(font);
        painter.setPen(kTitleText);
        const QString text = tr("Window %1 \u00b7 %2").arg(window.windowId).arg(window.division);
        const QRect textArea = title.adjusted(4, 0, -4, 0);
        painter.drawText(textArea, Qt::AlignVCenter | Qt::AlignLeft,
            painter.fontMetrics().elidedText(text, Qt::ElideRight, textArea.width()));
    }

    QPen edge(current ? kCurrentEdge : kWindowEdge);
    edge.setWidth(1);
    painter.setPen(edge);
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(frame.adjusted(0, 0, -1, -1));
}

} // namespace kvms_matrix
