#pragma once

#include "MatrixBannerInfo.h"

#include <QDialog>

class QCheckBox;
class QComboBox;
class QLineEdit;
class QPushButton;
class QSpinBox;

namespace kvms_matrix {

// The banner's text, look and motion. Where it lies is set by dragging it on the wall; a new
// banner starts across the bottom of the wall.
class BannerConfigDlg : public QDialog {
    Q_OBJECT

public:
    explicit BannerConfigDlg(const MatrixBannerInfo& banner, bool shown, QWidget* parent = nullptr);

    MatrixBannerInfo banner() const;
    bool isShown() const;

    QLineEdit* messageEdit() const { return m_message; }
    QCheckBox* showBox() const { return m_show; }
    QPushButton* saveButton() const { return m_save; }

public slots:
    void accept() override;

private:
    void pickColour(QPushButton* button, QColor* colour);
    static void paintSwatch(QPushButton* button, const QColor& colour);

    MatrixBannerInfo m_banner;
    QLineEdit* m_message = nullptr;
    QSpinBox* m_font = nullptr;
    QSpinBox* m_speed = nullptr;
    QComboBox* m_direction = nullptr;
    QPushButton* m_fontColour = nullptr;
    QPushButton* m_backColour = nullptr;
    QCheckBox* m_show = nullptr;
    QPushButton* m_save = nullptr;
};

} // namespace kvms_matrix
