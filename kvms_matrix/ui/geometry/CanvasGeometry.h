#pragma once

#include "MatrixBannerInfo.h"
#include "MatrixWindowInfo.h"

#include <QRect>
#include <QSize>
#include <QVector>

namespace kvms_matrix {

// Wall units to canvas pixels. The wall is 32768 x 32768 units whatever its grid; a quantity
// becomes q x size / 32768 pixels in 32-bit signed arithmetic, multiplication first, the division
// truncating. Nothing here keeps pixel state: every rectangle is recomputed from the canvas size.
class CanvasGeometry {
public:
    static constexpr int kWallUnits = 32768;
    // The title strip of every window is a fixed height in wall units.
    static constexpr int kTitleUnits = 1500;

    static int toPixels(int units, int size);
    // Pixels back to wall units (pixels x 32768 / size); 0 for an empty canvas.
    static int toUnits(int pixels, int size);
    static int titleHeight(int canvasHeight);

    // The window's frame, title strip included.
    static QRect windowRect(const MatrixWindowInfo& window, const QSize& canvas);
    static QRect titleRect(const MatrixWindowInfo& window, const QSize& canvas);
    // The panel rectangles of a window in the order of its sub-window indexes (cells walked row by
    // row, counting only cells that hold a panel). Empty for a division outside the known ones.
    static QVector<QRect> panelRects(const MatrixWindowInfo& window, const QSize& canvas);
    // The one panel of a window that shows a sub-window full: the window below its title strip.
    static QRect fullPanelRect(const MatrixWindowInfo& window, const QSize& canvas);
    // The banner sits one title strip below the top edge, whatever its own y.
    static QRect bannerRect(const MatrixBannerInfo& banner, const QSize& canvas);
    // A pixel rectangle in wall units.
    static QRect toWallRect(const QRect& pixels, const QSize& canvas);
};

} // namespace kvms_matrix
