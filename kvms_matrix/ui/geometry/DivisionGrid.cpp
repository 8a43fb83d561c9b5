#include "DivisionGrid.h"

namespace kvms_matrix {

DivisionGrid::DivisionGrid(int rows, int cols, int largeRowSpan, int largeColSpan)
    : m_rows(rows)
    , m_cols(cols)
    , m_largeRowSpan(largeRowSpan)
    , m_largeColSpan(largeColSpan)
{
}

DivisionGrid DivisionGrid::of(int division)
{
    switch (division) {
    case 1:
        return DivisionGrid(1, 1, 1, 1);
    case 4:
        return DivisionGrid(2, 2, 1, 1);
    case 6:
        return DivisionGrid(3, 3, 2, 2);
    case 8:
        return DivisionGrid(4, 4, 3, 3);
    case 9:
        return DivisionGrid(3, 3, 1, 1);
    case 16:
        return DivisionGrid(4, 4, 1, 1);
    case 25:
        return DivisionGrid(5, 5, 1, 1);
    default:
        return DivisionGrid(0, 0, 1, 1);
    }
}

bool DivisionGrid::isLargeOrigin(int row, int col) const
{
    return row == 0 && col == 0 && (m_largeRowSpan > 1 || m_largeColSpan > 1);
}

bool DivisionGrid::holdsPanel(int row, int col) const
{
    if (row < 0 || col < 0 || row >= m_rows || col >= m_cols)
        return false;
    const bool underLarge = row < m_largeRowSpan && col < m_largeColSpan;
    return !underLarge || (row == 0 && col == 0);
}

int DivisionGrid::panelCount() const
{
    if (isEmpty())
        return 0;
    return m_rows * m_cols - m_largeRowSpan * m_largeColSpan + 1;
}

} // namespace kvms_matrix
