#include "KWidget.h"

#include <QPainter>
#include <QStyleOption>

namespace KCOMMON {

KWidget::KWidget(QWidget* parent, Qt::WindowFlags flags)
    : QWidget(parent, flags)
{
}

void KWidget::paintEvent(QPaintEvent* event)
{
    QStyleOption option;
    option.initFrom(this);
    QPainter painter(this);
    style()->drawPrimitive(QStyle::PE_Widget, &option, &painter, this);
    QWidget::paintEvent(event);
}

} // namespace KCOMMON
