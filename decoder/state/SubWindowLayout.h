#pragma once

#include <QRect>
#include <QSize>

#include <cstdint>

namespace vdec {

struct Window;

// Where the sub-windows of a window sit. Divisions 1, 4, 9, 16 and 25 are square
// grids; 6 is a 3x3 grid whose first sub-window takes the top-left 2x2 cells, and 8
// a 4x4 grid whose first takes the top-left 3x3; the others follow row by row.
class SubWindowLayout {
public:
    // Cells per side of the grid, 0 for a division the decoder does not offer.
    static int side(int32_t division);
    // The grid cells sub-window `sub` (1-based) covers; empty when out of range.
    static QRect cells(int32_t division, int32_t sub);
    // The part of `area` that sub-window `sub` covers; edges are cut by truncating
    // integer arithmetic, so neighbours share their edges exactly.
    static QRect rect(const QRect& area, int32_t division, int32_t sub);

    // The window on a wall of cols x rows screens of `screen` pixels each, scaled from
    // wall units by truncating integer arithmetic.
    static QRect windowRect(const Window& window, int cols, int rows, QSize screen);
    // The sub-window as the wall shows it: the whole window while it is full screen.
    static QRect shownRect(const Window& window, int32_t sub, int cols, int rows, QSize screen);
};

} // namespace vdec
