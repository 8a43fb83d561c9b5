#pragma once

#include <QMetaType>

namespace kvms_matrix {

// One cell covered by a spliced window, relative to the window's top-left cell.
struct MatrixCellInfo {
    int cellId = -1; // id of the cell's default window
    int row = 0;
    int column = 0;
};

} // namespace kvms_matrix

Q_DECLARE_METATYPE(kvms_matrix::MatrixCellInfo)
