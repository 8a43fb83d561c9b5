#pragma once

#include "MatrixWindowInfo.h"

#include "CMatrixSDK.h"

#include <vector>

namespace kvms_matrix {

// The grid of a wall of rows x cols cells in the decoder's 32768 x 32768 units: cells of
// 32768 / cols by 32768 / rows units (truncated), default windows numbered from 1 row by row,
// and how a window the decoder reports lies on that grid.
class WallGeometry {
public:
    static constexpr int kUnits = 32768;
    // The largest side any decoder's grid is read as, whatever it declares or reports.
    static constexpr int kMaxSide = 32;

    // Counts below 1 are taken as 1 (a decoder that reports a 0 x 0 wall shows one cell), counts
    // above the given largest side (at most kMaxSide) as that side.
    WallGeometry(int rows, int cols, int maxRows = kMaxSide, int maxCols = kMaxSide);
    // Whether the counts given were read as they are.
    bool asGiven() const { return m_asGiven; }

    int rows() const { return m_rows; }
    int cols() const { return m_cols; }
    int unitW() const { return m_unitW; }
    int unitH() const { return m_unitH; }
    int cellId(int row, int col) const { return m_cols * row + col + 1; }

    // The default window of every cell, row by row.
    std::vector<MatrixWindow_t> grid() const;
    // A reported window without its sub-windows: id, rectangle, layer, turn, and its kind:
    // floating, one cell, or spliced over the cells its size covers. A rectangle is kept inside
    // the wall and a span inside the grid, whatever the decoder reports.
    MatrixWindowInfo windowOf(const MatrixWindowStatus_t& status) const;

    // The window record of a window the module holds.
    static MatrixWindow_t recordOf(const MatrixWindowInfo& window, bool floating);
    // The windows a spliced window gives back to its cells, each under its cell id.
    static std::vector<MatrixWindow_t> cellsOf(const MatrixWindowInfo& spliced);

private:
    int m_rows;
    int m_cols;
    int m_unitW;
    int m_unitH;
    bool m_asGiven;
};

} // namespace kvms_matrix
