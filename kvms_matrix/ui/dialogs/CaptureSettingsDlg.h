#pragma once

#include "CaptureSettings.h"

#include <QDialog>

class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;

namespace kvms_matrix {

// The settings of "grab screen": how the desktop reaches the decoder, the name it has on the
// wall, and whether they are asked before each projection. Opened by "grab screen" (the OK
// button then projects) or from the page's tool row (it only saves).
class CaptureSettingsDlg : public QDialog {
    Q_OBJECT

public:
    CaptureSettingsDlg(const CaptureSettings& settings, bool projecting, QWidget* parent = nullptr);

    CaptureSettings settings() const;
    // The sub-window projected to, for the source id shown.
    void setTarget(int windowId, int subWindowId);

    QRadioButton* directButton() const { return m_direct; }
    QRadioButton* streamButton() const { return m_stream; }
    QLineEdit* labelEdit() const { return m_label; }
    QLineEdit* addressEdit() const { return m_address; }
    QCheckBox* askBox() const { return m_ask; }
    QPushButton* okButton() const { return m_ok; }
    QLabel* previewLabel() const { return m_preview; }

private:
    void refresh();

    QRadioButton* m_direct = nullptr;
    QRadioButton* m_stream = nullptr;
    QLineEdit* m_label = nullptr;
    QLineEdit* m_address = nullptr;
    QCheckBox* m_ask = nullptr;
    QLabel* m_what = nullptr;
    QLabel* m_preview = nullptr;
    QPushButton* m_ok = nullptr;
    int m_windowId = 1;
    int m_subWindowId = 1;
};

} // namespace kvms_matrix
