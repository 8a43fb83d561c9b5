#include "MatrixSelectWt.h"

#include <QMouseEvent>
#include <QPainter>
#include <QRegion>

namespace kvms_matrix {

namespace {

Qt::CursorShape cursorOf(MouseMovePos handle)
{
    switch (handle) {
    case TopLeft:
    case BottomRight:
        return Qt::SizeFDiagCursor;
    case TopRight:
    case BottomLeft:
        return Qt::SizeBDiagCursor;
    case Left:
    case Right:
        return Qt::SizeHorCursor;
    case Bottom:
        return Qt::SizeVerCursor;
    default:
        return Qt::ArrowCursor;
    }
}

} // namespace

MatrixSelectWt::MatrixSelectWt(QWidget* parent)
    : KCOMMON::KWidget(parent)
{
    qRegisterMetaType<MouseMovePos>("MouseMovePos");
    setObjectName(QStringLiteral("matrixSelectWt"));
    setMouseTracking(true);
    setAttribute(Qt::WA_NoSystemBackground);
}

void MatrixSelectWt::setEdgeMode(bool edges)
{
    m_edgeMode = edges;
    setMask(QRegion());
    resizeEvent(nullptr);
    update();
}

QVector<QPair<MouseMovePos, QRect>> MatrixSelectWt::handles() const
{
    const int w = width();
    const int h = height();
    if (m_edgeMode) {
        return { { Left, QRect(0, h / 2 - 8, 7, 7) }, { Right, QRect(w - 8, h / 2 - 8, 7, 7) },
            { Bottom, QRect(w / 2 - 8, h - 8, 7, 7) } };
    }
    return { { TopLeft, QRect(0, 0, 10, 10) }, { TopRight, QRect(w - 11, 0, 10, 10) },
        { BottomLeft, QRect(0, h - 11, 10, 10) }, { BottomRight, QRect(w - 11, h - 11, 10, 10) } };
}

MouseMovePos MatrixSelectWt::handleAt(const QPoint& pos) const
{
    for (const auto& handle : handles()) {
        if (handle.second.contains(pos))
            return handle.first;
    }
    return None;
}

void MatrixSelectWt::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return;
    m_pressed = true;
    m_handle = handleAt(event->pos());
    m_globalPos = event->globalPos();
}

void MatrixSelectWt::mouseMoveEvent(QMouseEvent* event)
{
    m_globalPos = event->globalPos();
    if (!m_pressed) {
        m_handle = handleAt(event->pos());
        setCursor(cursorOf(m_handle));
    }
    emit signalMouseMove(m_handle, m_pressed);
}

void MatrixSelectWt::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return;
    m_pressed = false;
    emit signalMouseRelease();
}

void MatrixSelectWt::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor("#0659a4"));
    for (const auto& handle : handles())
        painter.drawRect(handle.second);
}

void MatrixSelectWt::resizeEvent(QResizeEvent*)
{
    // Only the handles take the mouse; between them the framed window gets it.
    QRegion region;
    for (const auto& handle : handles())
        region += handle.second.adjusted(0, 0, 1, 1);
    setMask(region);
}

} // namespace kvms_matrix
