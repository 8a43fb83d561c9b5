#pragma once

#include <QWidget>

namespace kvms_matrix {

// A see-through layer over the wall's windows: the screen joints of a rows x cols wall and
// each screen's number, so the operator sees where a window crosses a bezel. It takes no input.
class MatrixScreenGridWt : public QWidget {
    Q_OBJECT

public:
    explicit MatrixScreenGridWt(QWidget* parent = nullptr);

    void setGrid(int rows, int cols);
    int rows() const { return m_rows; }
    int cols() const { return m_cols; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    int m_rows = 0;
    int m_cols = 0;
};

} // namespace kvms_matrix
