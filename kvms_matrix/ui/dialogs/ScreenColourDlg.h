#pragma once

#include "CMatrixSDK.h"

#include <QDialog>

class QPushButton;
class QSlider;

namespace kvms_matrix {

// Brightness, contrast, saturation and hue of one screen of the wall. The values come from the
// decoder when it answers; "Apply" sends them.
class ScreenColourDlg : public QDialog {
    Q_OBJECT

public:
    ScreenColourDlg(int col, int row, QWidget* parent = nullptr);

    int col() const { return m_col; }
    int row() const { return m_row; }
    void setColour(const ScreenColor& colour);
    ScreenColor colour() const;
    QSlider* slider(int index) const { return m_sliders[qBound(0, index, 3)]; }
    QPushButton* applyButton() const { return m_apply; }

signals:
    void signalApply(int col, int row, ScreenColor colour);

private:
    int m_col;
    int m_row;
    QSlider* m_sliders[4] = {};
    QPushButton* m_apply = nullptr;
};

} // namespace kvms_matrix
