#include "MatrixScreenGridWt.h"

#include "CanvasGeometry.h"

#include <QPainter>

namespace kvms_matrix {

MatrixScreenGridWt::MatrixScreenGridWt(QWidget* parent)
    : QWidget(parent)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAttribute(Qt::WA_NoSystemBackground);
    setObjectName(QStringLiteral("matrixScreenGridWt"));
}

void MatrixScreenGridWt::setGrid(int rows, int cols)
{
    if (rows == m_rows && cols == m_cols)
        return;
    m_rows = rows;
    m_cols = cols;
    update();
}

void MatrixScreenGridWt::paintEvent(QPaintEvent*)
{
    if (m_rows < 1 || m_cols < 1)
        return;
    QPainter painter(this);
    const int w = width();
    const int h = height();
    const int unitW = CanvasGeometry::kWallUnits / m_cols;
    const int unitH = CanvasGeometry::kWallUnits / m_rows;

    QPen joint(QColor(120, 140, 180, 110));
    joint.setStyle(Qt::DashLine);
    painter.setPen(joint);
    for (int c = 1; c < m_cols; ++c) {
        const int x = CanvasGeometry::toPixels(c * unitW, w);
        painter.drawLine(x, 0, x, h);
    }
    for (int r = 1; r < m_rows; ++r) {
        const int y = CanvasGeometry::toPixels(r * unitH, h);
        painter.drawLine(0, y, w, y);
    }

    // Each screen's number at the right end of the title strip along its top edge, where it
    // hides no panel of a one-screen window.
    const int title = CanvasGeometry::titleHeight(h);
    const int cellW = CanvasGeometry::toPixels(unitW, w);
    const int pixelSize = qMin(12, title - 6);
    if (pixelSize < 7 || cellW < 60)
        return;
    QFont font = painter.font();
    font.setPixelSize(pixelSize);
    font.setBold(true);
    painter.setFont(font);
    const QFontMetrics metrics(font);
    for (int r = 0; r < m_rows; ++r) {
        for (int c = 0; c < m_cols; ++c) {
            const QString number = QString::number(r * m_cols + c + 1);
            const int badgeW = metrics.horizontalAdvance(number) + 10;
            const int badgeH = qMin(metrics.height() + 2, title - 4);
            const int right = CanvasGeometry::toPixels((c + 1) * unitW, w) - 4;
            const int top = CanvasGeometry::toPixels(r * unitH, h) + (title - badgeH) / 2;
            const QRect badge(right - badgeW, top, badgeW, badgeH);
            painter.setPen(Qt::NoPen);
            painter.setBrush(QColor(14, 22, 36, 170));
            painter.drawRoundedRect(badge, 3, 3);
            painter.setPen(QColor(150, 165, 195, 220));
            painter.drawText(badge, Qt::AlignCenter, number);
        }
    }
}

} // namespace kvms_matrix
