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

    // Screen numbers in the bottom-right corner of each screen, small enough to leave the
    // panels readable.
    const int cellW = CanvasGeometry::toPixels(unitW, w);
    const int cellH = CanvasGeometry::toPixels(unitH, h);
    const int pixelSize = qBound(7, qMin(cellW, cellH) / 12, 12);
    if (cellW < 4 * pixelSize || cellH < 3 * pixelSize)
        return;
    QFont font = painter.font();
    font.setPixelSize(pixelSize);
    font.setBold(true);
    painter.setFont(font);
    const QFontMetrics metrics(font);
    for (int r = 0; r < m_rows; ++r) {
        for (int c = 0; c < m_cols; ++c) {
            const QString number = QString::number(r * m_cols + c + 1);
            const int badgeW = metrics.horizontalAdvance(number) + 8;
            const int badgeH = metrics.height() + 2;
            const int right = CanvasGeometry::toPixels((c + 1) * unitW, w) - 4;
            const int bottom = CanvasGeometry::toPixels((r + 1) * unitH, h) - 4;
            const QRect badge(right - badgeW, bottom - badgeH, badgeW, badgeH);
            painter.setPen(Qt::NoPen);
            painter.setBrush(QColor(14, 22, 36, 160));
            painter.drawRoundedRect(badge, 3, 3);
            painter.setPen(QColor(150, 165, 195, 200));
            painter.drawText(badge, Qt::AlignCenter, number);
        }
    }
}

} // namespace kvms_matrix
