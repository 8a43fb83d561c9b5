#include "ControlMatrixWt.h"

#include "CanvasGeometry.h"
#include "CanvasMenu.h"
#include "MatrixPanelWt.h"
#include "MatrixSignals.h"

#include "KSingleton.h"
#include "SystemAssistant.h"

#include <QAction>
#include <QApplication>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QRubberBand>

// The canvas's context menu, its keys, and joining free cells into a spliced window.

namespace kvms_matrix {

namespace {

MatrixSignals* hub()
{
    return KCOMMON::KSingleton<MatrixSignals>::instance();
}

} // namespace

QMenu* ControlMatrixWt::prepareMenuAt(const QPoint& pos)
{
    int windowId = -1, subWindowId = -1, windowType = 0;
    // Floating windows pop up their own menu.
    if (!hitTest(pos, &windowId, &subWindowId, &windowType) || windowType == 2)
        return nullptr;
    if (!m_menu) {
        m_menu = new CanvasMenu(this);
        connect(m_menu->menu(), &QMenu::triggered, this, &ControlMatrixWt::slotMenuActionTriggered);
        connect(m_menu->divisionMenu(), &QMenu::triggered, this, &ControlMatrixWt::slotSubMenuActionTriggered);
        connect(m_menu->joinMenu(), &QMenu::triggered, this, &ControlMatrixWt::slotJoinMenuActionTriggered);
    }
    selectWindow(windowId, subWindowId, windowType);
    m_menuWindowId = windowId;
    m_menuSubWindowId = subWindowId;
    m_menuWindowType = windowType;
    CanvasMenu::State state;
    state.windowType = windowType;
    if (const MatrixWindowInfo* window = findWindow(windowId, windowType))
        state.division = window->division;
    state.full = fullSubWindowIndex(windowId, windowType) >= 0;
    if (const MatrixPanelWt* p = m_panels.value(panelKey(windowId, subWindowId, windowType))) {
        state.hasSource = p->sourceKind() != MatrixPanelWt::SourceKind::Empty;
        state.camera = p->sourceKind() == MatrixPanelWt::SourceKind::Camera;
        state.playback = p->sourceKind() == MatrixPanelWt::SourceKind::Recording;
    }
    return m_menu->prepare(state);
}

void ControlMatrixWt::contextMenuEvent(QContextMenuEvent* event)
{
    if (QMenu* menu = prepareMenuAt(event->pos()))
        menu->popup(event->globalPos());
    event->accept();
}

void ControlMatrixWt::sendMenuCode(int subWindowId, int windowType, int code, int type)
{
    emit hub()->signalRightMemuClicked(m_menuWindowId, subWindowId, windowType, code, type);
}

void ControlMatrixWt::slotMenuActionTriggered(QAction* action)
{
    if (sender() == m_menu->menu() && m_menu->opened() != m_menu->menu())
        return;
    const int code = CanvasMenu::codeOf(action);
    // Divisions come through their sub-menu (the parent menu repeats them).
    if (code < 0 || code == CanvasMenu::Division || m_menuWindowId < 0)
        return;
    switch (code) {
    case CanvasMenu::Exitback:
        emit hub()->signalVideoExitback(m_menuWindowId, m_menuSubWindowId, m_menuWindowType);
        break;
    case CanvasMenu::Full:
        // The window type goes as 0 whatever the window is; the page's full request ignores it.
        sendMenuCode(m_menuSubWindowId, 0, code, fullSubWindowIndex(m_menuWindowId, m_menuWindowType) < 0 ? 1 : 0);
        break;
    case CanvasMenu::Unjoin:
        sendMenuCode(m_menuSubWindowId, 1, code, 0);
        break;
    default:
        sendMenuCode(m_menuSubWindowId, m_menuWindowType, code, 0);
        break;
    }
}

void ControlMatrixWt::slotSubMenuActionTriggered(QAction* action)
{
    if (CanvasMenu::codeOf(action) != CanvasMenu::Division || m_menuWindowId < 0)
        return;
    if (sender() == m_menu->divisionMenu() && m_menu->opened() != m_menu->menu())
        return;
    // A sub-window shown full is put back first, or the new division would keep it full.
    const int full = fullSubWindowIndex(m_menuWindowId, m_menuWindowType);
    if (const MatrixWindowInfo* window = findWindow(m_menuWindowId, m_menuWindowType)) {
        for (const MatrixSubWindowInfo& sub : window->subWindows)
            if (full >= 0 && sub.subWindowIndex == full)
                sendMenuCode(sub.subWindowId, 0, CanvasMenu::Full, 0);
    }
    sendMenuCode(-1, m_menuWindowType, CanvasMenu::Division, CanvasMenu::divisionOf(action));
}

void ControlMatrixWt::slotJoinMenuActionTriggered(QAction* action)
{
    if (m_menu->opened() != m_menu->joinMenu())
        return;
    if (CanvasMenu::codeOf(action) == CanvasMenu::Division)
        slotSubMenuActionTriggered(action);
    else
        slotMenuActionTriggered(action);
}

void ControlMatrixWt::keyPressEvent(QKeyEvent* event)
{
    const int key = event->key();
    if (key != Qt::Key_Delete && key != Qt::Key_Escape) {
        QWidget::keyPressEvent(event);
        return;
    }
    event->accept();
    if (key == Qt::Key_Escape && m_rubberBand && m_rubberBand->isVisible()) {
        m_rubberBand->hide();
        m_bandArmed = false;
        return;
    }
    if (m_currentWindowId < 0 || !findWindow(m_currentWindowId, m_currentWindowType)) {
        if (key == Qt::Key_Delete)
            SystemAssistant::messageAlert(tr("please select window"), this);
        return;
    }
    m_menuWindowId = m_currentWindowId;
    m_menuSubWindowId = m_currentSubWindowId;
    m_menuWindowType = m_currentWindowType;
    if (key == Qt::Key_Delete) {
        sendMenuCode(m_currentSubWindowId, m_currentWindowType, CanvasMenu::Clear, 0);
        return;
    }
    // Escape leaves the full display of the selected window, if it has one.
    const int full = fullSubWindowIndex(m_currentWindowId, m_currentWindowType);
    if (full < 0)
        return;
    for (const MatrixSubWindowInfo& sub : findWindow(m_currentWindowId, m_currentWindowType)->subWindows)
        if (sub.subWindowIndex == full)
            sendMenuCode(sub.subWindowId, 0, CanvasMenu::Full, 0);
}

bool ControlMatrixWt::joinWindowFor(const QRect& canvasRect, MatrixWindowInfo* out, QString* reason) const
{
    const int unitW = CanvasGeometry::kWallUnits / m_cols;
    const int unitH = CanvasGeometry::kWallUnits / m_rows;
    int r0 = m_rows, c0 = m_cols, r1 = -1, c1 = -1;
    for (const MatrixWindowInfo& window : m_windows) {
        if (!CanvasGeometry::windowRect(window, size()).intersects(canvasRect))
            continue;
        const int r = qBound(0, window.y / qMax(1, unitH), m_rows - 1);
        const int c = qBound(0, window.x / qMax(1, unitW), m_cols - 1);
        r0 = qMin(r0, r);
        c0 = qMin(c0, c);
        r1 = qMax(r1, r);
        c1 = qMax(c1, c);
    }
    for (const MatrixWindowInfo& spliced : m_splicedWindows)
        if (CanvasGeometry::windowRect(spliced, size()).intersects(canvasRect)) {
            r1 = -1; // a spliced window in the way
            break;
        }
    const auto refuse = [reason](const QString& text) {
        if (reason)
            *reason = text;
        return false;
    };
    if (r1 < 0 || (r0 == r1 && c0 == c1))
        return refuse(tr("Select two or more free cells to join."));
    MatrixWindowInfo joined;
    joined.windowId = r0 * m_cols + c0 + 1;
    joined.windowIndex = joined.windowId - 1;
    joined.windowType = 1;
    joined.spanRows = r1 - r0 + 1;
    joined.spanCols = c1 - c0 + 1;
    joined.x = c0 * unitW;
    joined.y = r0 * unitH;
    joined.w = joined.spanCols * unitW;
    joined.h = joined.spanRows * unitH;
    for (int i = 0; i < joined.spanRows; ++i) {
        for (int j = 0; j < joined.spanCols; ++j) {
            MatrixCellInfo cell;
            cell.cellId = joined.windowId + i * m_cols + j;
            cell.row = i;
            cell.column = j;
            if (!m_windows.contains(cell.cellId))
                return refuse(tr("Only free cells making a rectangle can be joined."));
            joined.cells.append(cell);
        }
    }
    MatrixSubWindowInfo sub;
    sub.subWindowId = 1;
    sub.subWindowIndex = 0;
    joined.subWindows.append(sub);
    if (out)
        *out = joined;
    return true;
}

void ControlMatrixWt::startJoinBand(const QPoint& pos, bool shift)
{
    const int anchorId = m_currentWindowId;
    const int anchorType = m_currentWindowType;
    int windowId = -1, windowType = 0;
    m_bandArmed = hitTest(pos, &windowId, nullptr, &windowType) && windowType == 0;
    if (!m_bandArmed)
        return;
    const MatrixWindowInfo* anchor = findWindow(anchorId, anchorType);
    if (shift && anchor && anchorType == 0 && anchorId != windowId) {
        // Shift+click: the cells from the selected one to this one.
        const QRect from = CanvasGeometry::windowRect(*anchor, size());
        m_bandOrigin = from.center();
        moveJoinBand(pos);
        return;
    }
    m_bandOrigin = pos;
}

bool ControlMatrixWt::moveJoinBand(const QPoint& pos)
{
    if (!m_bandArmed)
        return false;
    if (!m_rubberBand) {
        m_rubberBand = new QRubberBand(QRubberBand::Rectangle, this);
        m_rubberBand->setObjectName(QStringLiteral("matrixJoinBand"));
    }
    if (!m_rubberBand->isVisible() && (pos - m_bandOrigin).manhattanLength() < QApplication::startDragDistance())
        return false;
    m_rubberBand->setGeometry(QRect(m_bandOrigin, pos).normalized());
    m_rubberBand->show();
    m_rubberBand->raise();
    return true;
}

bool ControlMatrixWt::finishJoinBand(const QPoint& pos)
{
    const bool shown = m_bandArmed && m_rubberBand && m_rubberBand->isVisible();
    m_bandArmed = false;
    if (!shown)
        return false;
    const QRect band = QRect(m_bandOrigin, pos).normalized();
    m_rubberBand->hide();
    MatrixWindowInfo joined;
    QString reason;
    if (!joinWindowFor(band, &joined, &reason)) {
        SystemAssistant::messageAlert(reason, this);
        return true;
    }
    emit signalJoinWindows(joined);
    return true;
}

} // namespace kvms_matrix
