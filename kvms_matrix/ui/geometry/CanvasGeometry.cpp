#include "CanvasGeometry.h"

#include "DivisionGrid.h"

#include <QtGlobal>

namespace kvms_matrix {

namespace {

// The product wraps as 32-bit arithmetic does instead of being undefined on absurd numbers.
qint32 product32(qint32 a, qint32 b)
{
    return static_cast<qint32>(static_cast<quint32>(a) * static_cast<quint32>(b));
}

} // namespace

int CanvasGeometry::toPixels(int units, int size)
{
    return product32(units, size) / kWallUnits;
}

int CanvasGeometry::toUnits(int pixels, int size)
{
    if (size <= 0)
        return 0;
    return product32(pixels, kWallUnits) / size;
}

int CanvasGeometry::titleHeight(int canvasHeight)
{
    return toPixels(kTitleUnits, canvasHeight);
}

QRect CanvasGeometry::windowRect(const MatrixWindowInfo& window, const QSize& canvas)
{
    return QRect(toPixels(window.x, canvas.width()), toPixels(window.y, canvas.height()),
        toPixels(window.w, canvas.width()), toPixels(window.h, canvas.height()));
}

QRect CanvasGeometry::titleRect(const MatrixWindowInfo& window, const QSize& canvas)
{
    const QRect frame = windowRect(window, canvas);
    return QRect(frame.x(), frame.y(), frame.width(), qMin(titleHeight(canvas.height()), frame.height()));
}

QVector<QRect> CanvasGeometry::panelRects(const MatrixWindowInfo& window, const QSize& canvas)
{
    const DivisionGrid grid = DivisionGrid::of(window.division);
    QVector<QRect> rects;
    if (grid.isEmpty())
        return rects;
    rects.reserve(grid.panelCount());

    const int canvasW = canvas.width();
    const int canvasH = canvas.height();
    const int rows = grid.rows();
    const int cols = grid.cols();
    const int title = titleHeight(canvasH);
    const int titleShare = title / rows;
    const int left = toPixels(window.x, canvasW);
    const int top = toPixels(window.y, canvasH);
    int cw = toPixels(window.w, canvasW) / cols;
    int ch = toPixels(window.h, canvasH) / rows;
    if (cw == canvasW)
        cw -= 1;
    if (ch == canvasH)
        ch -= 1;

    for (int r = 0; r < rows; ++r) {
        for (int c = 0; c < cols; ++c) {
            if (!grid.holdsPanel(r, c))
                continue;
            const int x = left + c * cw + 1;
            const int y = top + r * ch + (title * (rows - r)) / rows + 1;
            if (!grid.isLargeOrigin(r, c)) {
                rects.append(QRect(x, y, cw - 2, ch - 2 - titleShare));
                continue;
            }
            // The large cell of division 8 is drawn lower than that of division 6 by design.
            const int height = window.division == 8 ? ch * grid.largeRowSpan() - 2 - 3 * titleShare - 1
                                                    : ch * grid.largeRowSpan() - 2 - titleShare;
            rects.append(QRect(x, y, cw * grid.largeColSpan() - 2, height));
        }
    }
    return rects;
}

QRect CanvasGeometry::fullPanelRect(const MatrixWindowInfo& window, const QSize& canvas)
{
    const int title = titleHeight(canvas.height());
    return QRect(toPixels(window.x, canvas.width()) + 1, toPixels(window.y, canvas.height()) + title + 1,
        toPixels(window.w, canvas.width()) - 2, toPixels(window.h, canvas.height()) - 2 - title);
}

QRect CanvasGeometry::bannerRect(const MatrixBannerInfo& banner, const QSize& canvas)
{
    return QRect(toPixels(banner.x, canvas.width()), titleHeight(canvas.height()), toPixels(banner.w, canvas.width()),
        toPixels(banner.h, canvas.height()));
}

QRect CanvasGeometry::toWallRect(const QRect& pixels, const QSize& canvas)
{
    return QRect(toUnits(pixels.x(), canvas.width()), toUnits(pixels.y(), canvas.height()),
        toUnits(pixels.width(), canvas.width()), toUnits(pixels.height(), canvas.height()));
}

} // namespace kvms_matrix
