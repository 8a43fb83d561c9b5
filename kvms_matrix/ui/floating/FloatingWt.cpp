#include "FloatingWt.h"

#include "CanvasGeometry.h"
#include "ControlMatrixWt.h"
#include "FloatingGeometry.h"
#include "MatrixPanelWt.h"
#include "MatrixSelectWt.h"
#include "MatrixSignals.h"

#include "KSingleton.h"

#include <QDragEnterEvent>
#include <QMenu>
#include <QMimeData>
#include <QMouseEvent>
#include <QPainter>

namespace kvms_matrix {

namespace {

const char* const kSourceFormat = "application/x-qabstractitemmodeldatalist";
constexpr int kMinWidth = 40;
constexpr int kMinHeight = 30;
// Codes of the wall's context actions.
constexpr int kPlaybackCode = 1;
constexpr int kClearCode = 2;
constexpr int kRemoveCode = 11;

} // namespace

FloatingWt::FloatingWt(const MatrixWindowInfo& window, QWidget* parent)
    : QWidget(parent)
    , m_menu(new QMenu(this))
{
    setObjectName(QStringLiteral("floatingWt"));
    setAcceptDrops(true);
    m_panel = new MatrixPanelWt(window.windowId, -1, 2, this);
    m_panel->installEventFilter(this);
    m_selectWt = new MatrixSelectWt(parent);
    m_selectWt->hide();
    connect(m_selectWt, &MatrixSelectWt::signalMouseMove, this, &FloatingWt::slotMouseMove);
    connect(m_selectWt, &MatrixSelectWt::signalMouseRelease, this, &FloatingWt::slotMouseRelease);

    m_menu->setStyleSheet(QStringLiteral("QMenu::item{padding-top:4px;padding-bottom:4px;padding-left:15px;"
                                         "padding-right:15px} QMenu::icon{ position:absolute; left:10px; }"));
    m_playbackAction = m_menu->addAction(QIcon(QStringLiteral(":/menu/images/menu/playback_n.png")), tr("playback"));
    m_clearAction
        = m_menu->addAction(QIcon(QStringLiteral(":/matrix_images/images/wnd_clean_n.png")), tr("window clear"));
    m_menu->addSeparator();
    m_deleteAction = m_menu->addAction(tr("delete window"));
    connect(m_menu, &QMenu::triggered, this, &FloatingWt::slotMenuActionTriggered);
    setWindowInfo(window);
}

FloatingWt::~FloatingWt()
{
    delete m_selectWt.data();
}

void FloatingWt::setWindowInfo(const MatrixWindowInfo& window)
{
    m_window = window;
    m_panel->setIds(window.windowId, firstSubWindowId(), 2);
    m_panel->setSubWindow(window.subWindows.isEmpty() ? MatrixSubWindowInfo() : window.subWindows.first());
    m_panel->setCaption(tr("Window %1 \u00b7 roaming").arg(window.windowId));
}

void FloatingWt::setWallRect(const QRect& wallRect)
{
    m_window.x = wallRect.x();
    m_window.y = wallRect.y();
    m_window.w = wallRect.width();
    m_window.h = wallRect.height();
}

QString FloatingWt::panelKey() const
{
    return ControlMatrixWt::panelKey(m_window.windowId, firstSubWindowId(), 2);
}

int FloatingWt::firstSubWindowId() const
{
    return m_window.subWindows.isEmpty() ? -1 : m_window.subWindows.first().subWindowId;
}

void FloatingWt::setSelected(bool selected)
{
    m_selected = selected;
    placeSelectFrame();
    update();
}

void FloatingWt::placeSelectFrame()
{
    if (!m_selectWt)
        return;
    if (!m_selected || !isVisible()) {
        m_selectWt->hide();
        return;
    }
    m_selectWt->setGeometry(FloatingGeometry::selectionFrame(geometry()));
    m_selectWt->show();
    m_selectWt->raise();
}

void FloatingWt::layoutPanel()
{
    m_panel->setGeometry(1, 1, qMax(0, width() - 2), qMax(0, height() - 2));
}

bool FloatingWt::eventFilter(QObject* watched, QEvent* event)
{
    // The panel leaves the mouse to the window, so a press on the picture selects and drags it.
    if (watched == m_panel) {
        switch (event->type()) {
        case QEvent::MouseButtonPress:
            mousePressEvent(static_cast<QMouseEvent*>(event));
            return true;
        case QEvent::MouseMove:
            mouseMoveEvent(static_cast<QMouseEvent*>(event));
            return true;
        case QEvent::MouseButtonRelease:
            mouseReleaseEvent(static_cast<QMouseEvent*>(event));
            return true;
        default:
            break;
        }
    }
    return QWidget::eventFilter(watched, event);
}

void FloatingWt::mousePressEvent(QMouseEvent* event)
{
    m_selected = true;
    placeSelectFrame();
    update();
    m_pressOffset = event->globalPos() - mapToGlobal(QPoint(0, 0));
    emit KCOMMON::KSingleton<MatrixSignals>::instance()->signalProgressBarShow(false, m_window.windowId, -1, 2, false);
    emit signalFloatingSelected();
}

void FloatingWt::mouseMoveEvent(QMouseEvent* event)
{
    QWidget* canvas = parentWidget();
    if (!(event->buttons() & Qt::LeftButton) || !canvas)
        return;
    m_moveKind = Whole;
    m_moving = true;
    const QPoint target = event->globalPos() - m_pressOffset;
    const QRect bounds(canvas->mapToGlobal(QPoint(0, 0)), canvas->size());
    if (!FloatingGeometry::moveAllowed(target, size(), bounds))
        return;
    move(canvas->mapFromGlobal(target));
    layoutPanel();
}

void FloatingWt::mouseReleaseEvent(QMouseEvent* event)
{
    if (m_moving) {
        m_moving = false;
        m_moveKind = None;
        emit signalFloatingWtMove();
    }
    if (event->button() == Qt::RightButton && !m_menu->actions().isEmpty()) {
        updateMenuActions();
        m_menu->popup(event->globalPos());
    }
}

void FloatingWt::updateMenuActions()
{
    const MatrixSubWindowInfo first
        = m_window.subWindows.isEmpty() ? MatrixSubWindowInfo() : m_window.subWindows.first();
    // A camera can be replayed; a projected desktop can be cleared; a recording is left alone
    // while it plays.
    switch (first.sourceState) {
    case 1:
        m_playbackAction->setEnabled(true);
        m_clearAction->setEnabled(false);
        break;
    case 2:
        m_playbackAction->setEnabled(false);
        m_clearAction->setEnabled(!MatrixPanelWt::nameOf(first).startsWith(QLatin1String("rec_")));
        break;
    default:
        m_playbackAction->setEnabled(false);
        m_clearAction->setEnabled(false);
        break;
    }
}

void FloatingWt::slotMenuActionTriggered(QAction* action)
{
    int code = -1;
    if (action == m_playbackAction)
        code = kPlaybackCode;
    else if (action == m_clearAction)
        code = kClearCode;
    else if (action == m_deleteAction)
        code = kRemoveCode;
    if (code < 0)
        return;
    emit KCOMMON::KSingleton<MatrixSignals>::instance()->signalRightMemuClicked(
        m_window.windowId, firstSubWindowId(), 2, code, 0);
}

void FloatingWt::slotMouseMove(MouseMovePos mouseMouveType, bool press)
{
    QWidget* canvas = parentWidget();
    if (!press || mouseMouveType == None || mouseMouveType == Whole || !canvas || !m_selectWt)
        return;
    // The handle sits on the frame, 5 pixels outside the window's corner.
    const int margin = FloatingGeometry::kSelectionMargin;
    const QPoint p = canvas->mapFromGlobal(m_selectWt->mouseGlobalPos());
    QRect r = geometry();
    switch (mouseMouveType) {
    case TopLeft:
        r.setTopLeft(p + QPoint(margin, margin));
        break;
    case TopRight:
        r.setTopRight(p + QPoint(-margin, margin));
        break;
    case BottomLeft:
        r.setBottomLeft(p + QPoint(margin, -margin));
        break;
    case BottomRight:
        r.setBottomRight(p - QPoint(margin, margin));
        break;
    case Left:
        r.setLeft(p.x() + margin);
        break;
    case Right:
        r.setRight(p.x() - margin);
        break;
    case Bottom:
        r.setBottom(p.y() - margin);
        break;
    default:
        return;
    }
    r = r.normalized().intersected(canvas->rect());
    if (r.width() < kMinWidth || r.height() < kMinHeight)
        return;
    m_moveKind = mouseMouveType;
    m_moving = true;
    setGeometry(r);
}

void FloatingWt::slotMouseRelease()
{
    if (!m_moving)
        return;
    m_moving = false;
    m_moveKind = None;
    emit signalFloatingWtMove();
}

void FloatingWt::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), m_selected ? QColor("#3d8bfd") : QColor("#5c6b8a"));
}

void FloatingWt::moveEvent(QMoveEvent*)
{
    placeSelectFrame();
}

void FloatingWt::resizeEvent(QResizeEvent*)
{
    layoutPanel();
    placeSelectFrame();
}

void FloatingWt::dragEnterEvent(QDragEnterEvent* event)
{
    // Only a video source lands here; other drags go on to the canvas below.
    if (event->mimeData()->hasFormat(QLatin1String(kSourceFormat)))
        event->acceptProposedAction();
    else
        event->ignore();
}

void FloatingWt::dragLeaveEvent(QDragLeaveEvent* event)
{
    QWidget::dragLeaveEvent(event);
}

void FloatingWt::dropEvent(QDropEvent* event)
{
    if (!event->mimeData()->hasFormat(QLatin1String(kSourceFormat))) {
        event->ignore();
        return;
    }
    event->acceptProposedAction();
    emit signalVideoPanelDropEvent(m_window.windowId, firstSubWindowId(), 2);
}

void FloatingWt::showEvent(QShowEvent*)
{
    layoutPanel();
    placeSelectFrame();
}

void FloatingWt::hideEvent(QHideEvent*)
{
    if (m_selectWt)
        m_selectWt->hide();
}

} // namespace kvms_matrix
