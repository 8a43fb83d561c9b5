#include "FloatingGeometry.h"

#include "CanvasGeometry.h"
#include "MatrixWindowInfo.h"

#include <QtGlobal>

namespace kvms_matrix {

QRect FloatingGeometry::creationRect(const QSize& canvas)
{
    return QRect(canvas.width() / 4, canvas.height() / 4, canvas.width() / 2, canvas.height() / 2);
}

MatrixWindowInfo FloatingGeometry::creationWindow(const QSize& canvas, int rows, int cols, int windowId)
{
    const QRect wall = CanvasGeometry::toWallRect(creationRect(canvas), canvas);
    MatrixWindowInfo window;
    window.windowId = windowId;
    window.windowIndex = windowId - 1;
    window.windowType = 2;
    window.division = 1;
    window.x = wall.x();
    window.y = wall.y();
    window.w = wall.width();
    window.h = wall.height();
    window.cells = overlappedCells(wall, rows, cols, &window.spanRows, &window.spanCols);
    window.subWindows.append(MatrixSubWindowInfo());
    return window;
}

QList<MatrixCellInfo> FloatingGeometry::overlappedCells(
    const QRect& wallRect, int rows, int cols, int* spanRows, int* spanCols)
{
    QList<MatrixCellInfo> cells;
    rows = qMax(rows, 1);
    cols = qMax(cols, 1);
    const int unitW = CanvasGeometry::kWallUnits / cols;
    const int unitH = CanvasGeometry::kWallUnits / rows;
    int firstCol = 0, lastCol = -1, firstRow = 0, lastRow = -1;
    if (wallRect.width() > 0 && wallRect.height() > 0) {
        firstCol = qBound(0, wallRect.x() / unitW, cols - 1);
        lastCol = qBound(0, (wallRect.x() + wallRect.width() - 1) / unitW, cols - 1);
        firstRow = qBound(0, wallRect.y() / unitH, rows - 1);
        lastRow = qBound(0, (wallRect.y() + wallRect.height() - 1) / unitH, rows - 1);
    }
    for (int r = firstRow; r <= lastRow; ++r) {
        for (int c = firstCol; c <= lastCol; ++c) {
            MatrixCellInfo cell;
            cell.cellId = r * cols + c + 1;
            cell.row = r - firstRow;
            cell.column = c - firstCol;
            cells.append(cell);
        }
    }
    if (spanRows)
        *spanRows = qMax(1, lastRow - firstRow + 1);
    if (spanCols)
        *spanCols = qMax(1, lastCol - firstCol + 1);
    return cells;
}

bool FloatingGeometry::moveAllowed(const QPoint& target, const QSize& window, const QRect& parent)
{
    return target.x() > parent.x() && target.y() > parent.y() && target.y() < parent.y() + parent.height()
        && target.x() + window.width() < parent.x() + parent.width() - kRightMargin;
}

QRect FloatingGeometry::selectionFrame(const QRect& window)
{
    return QRect(window.x() - kSelectionMargin, window.y() - kSelectionMargin, window.width() + 2 * kSelectionMargin,
        window.height() + 2 * kSelectionMargin);
}

} // namespace kvms_matrix
