#include "MatrixBannerWt.h"

#include <QMenu>
#include <QMouseEvent>
#include <QPainter>

namespace kvms_matrix {

MatrixBannerWt::MatrixBannerWt(QWidget* parent)
    : QWidget(parent)
    , m_menu(new QMenu(this))
{
    setObjectName(QStringLiteral("matrixBannerWt"));
    setCursor(Qt::SizeAllCursor);
    setToolTip(tr("Drag to move the banner; double-click for its settings"));
    connect(m_menu->addAction(tr("Banner settings")), &QAction::triggered, this,
        &MatrixBannerWt::signalBannerDoubleClicked);
    connect(m_menu->addAction(tr("Delete banner")), &QAction::triggered, this, &MatrixBannerWt::signalDeleteBanner);
}

void MatrixBannerWt::setBanner(const MatrixBannerInfo& banner)
{
    m_banner = banner;
    update();
}

void MatrixBannerWt::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return;
    m_pressed = true;
    m_moved = false;
    m_pressOffset = event->globalPos() - mapToGlobal(QPoint(0, 0));
    raise();
}

void MatrixBannerWt::mouseMoveEvent(QMouseEvent* event)
{
    if (!m_pressed || !(event->buttons() & Qt::LeftButton) || !parentWidget())
        return;
    const QWidget* canvas = parentWidget();
    QPoint target = canvas->mapFromGlobal(event->globalPos() - m_pressOffset);
    target.setX(qBound(0, target.x(), qMax(0, canvas->width() - width())));
    target.setY(qBound(0, target.y(), qMax(0, canvas->height() - height())));
    if (target == pos())
        return;
    move(target);
    m_moved = true;
}

void MatrixBannerWt::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::RightButton) {
        m_menu->popup(event->globalPos());
        return;
    }
    if (event->button() != Qt::LeftButton)
        return;
    const bool moved = m_pressed && m_moved;
    m_pressed = false;
    m_moved = false;
    if (moved)
        emit signalBannerMoved();
}

void MatrixBannerWt::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
        emit signalBannerDoubleClicked();
}

void MatrixBannerWt::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    QColor back = m_banner.backColor.isValid() ? m_banner.backColor : QColor(0, 0, 0);
    if (back.alpha() == 0)
        back.setAlpha(90); // the decoder draws a transparent back; the canvas still shows the area
    painter.fillRect(rect(), back);
    QPen edge(QColor("#e6a23c"));
    edge.setStyle(Qt::DashLine);
    painter.setPen(edge);
    painter.drawRect(rect().adjusted(0, 0, -1, -1));

    const int percent = m_banner.fontPercent > 0 ? qMin(m_banner.fontPercent, 100) : 60;
    QFont font = painter.font();
    font.setPixelSize(qMax(7, height() * percent / 100));
    painter.setFont(font);
    painter.setPen(m_banner.fontColor.isValid() ? m_banner.fontColor : QColor(Qt::white));
    const QRect textArea = rect().adjusted(4, 0, -4, 0);
    const QString text = painter.fontMetrics().elidedText(m_banner.message, Qt::ElideRight, textArea.width());
    painter.drawText(textArea, Qt::AlignVCenter | Qt::AlignLeft, text);
}

} // namespace kvms_matrix
