#pragma once

#include "MatrixCellInfo.h"
#include "MatrixSubWindowInfo.h"

#include <QList>
#include <QMetaType>
#include <QVariantList>

namespace kvms_matrix {

// One window of a wall. Rectangles are in wall units: 32768 x 32768 cover the whole wall.
struct MatrixWindowInfo {
    int windowId = -1; // 1-based decoder window id
    int windowIndex = -1;
    int division = 1; // 1, 4, 6, 8, 9, 16 or 25 sub-windows
    int turnIndex = -1; // source shown by a window displaying in turn, 0-based
    int layer = -1;
    int spanRows = 1;
    int spanCols = 1;
    int x = 0;
    int y = 0;
    int w = 0;
    int h = 0;
    int windowType = 0; // 0 one cell, 1 spliced, 2 floating
    QList<MatrixSubWindowInfo> subWindows;
    QList<MatrixCellInfo> cells; // spliced windows, row by row
    QVariantList extraList; // copied through
};

} // namespace kvms_matrix

Q_DECLARE_METATYPE(kvms_matrix::MatrixWindowInfo)
