#pragma once

namespace kvms_matrix {

// The grid a window's division count gives: rows x columns and at most one large cell at the
// top-left that covers several small ones. Unknown counts give an empty 0 x 0 grid.
class DivisionGrid {
public:
    static DivisionGrid of(int division);

    int rows() const { return m_rows; }
    int cols() const { return m_cols; }
    int largeRowSpan() const { return m_largeRowSpan; }
    int largeColSpan() const { return m_largeColSpan; }
    bool isEmpty() const { return m_rows == 0 || m_cols == 0; }

    // The large cell's origin (0, 0) holds a panel; the other cells under the large cell do not.
    bool isLargeOrigin(int row, int col) const;
    bool holdsPanel(int row, int col) const;
    int panelCount() const;

private:
    DivisionGrid(int rows, int cols, int largeRowSpan, int largeColSpan);

    int m_rows;
    int m_cols;
    int m_largeRowSpan;
    int m_largeColSpan;
};

} // namespace kvms_matrix
