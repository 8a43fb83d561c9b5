#pragma once

#include "MatrixCellInfo.h"

#include <QList>
#include <QPoint>
#include <QRect>
#include <QSize>

namespace kvms_matrix {

struct MatrixWindowInfo;

// Where a floating (roaming) window is created, where it may be dragged, and the frame drawn
// around it while it is selected.
class FloatingGeometry {
public:
    // Pixels outside the window on every side of the selection frame.
    static constexpr int kSelectionMargin = 5;
    // Pixels a dragged window's right edge must keep from the canvas's right edge.
    static constexpr int kRightMargin = 5;

    // Centred on the canvas, half its size (integer halves and quarters).
    static QRect creationRect(const QSize& canvas);
    // A new floating window for a wall of rows x cols cells: its pixel rectangle in wall units and
    // the cells it overlaps (cell size 32768 / cols by 32768 / rows), row by row.
    static MatrixWindowInfo creationWindow(const QSize& canvas, int rows, int cols, int windowId);
    static QList<MatrixCellInfo> overlappedCells(
        const QRect& wallRect, int rows, int cols, int* spanRows = nullptr, int* spanCols = nullptr);

    // Whether a window of the given size may be moved with its top-left to target, all in the
    // parent's coordinates. The bottom test looks at the top edge only and the right test keeps a
    // margin: a window may hang below the canvas but never touch its right edge.
    static bool moveAllowed(const QPoint& target, const QSize& window, const QRect& parent);

    static QRect selectionFrame(const QRect& window);
};

} // namespace kvms_matrix
