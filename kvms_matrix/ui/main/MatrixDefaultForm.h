#pragma once

#include "KWidget.h"

class QLabel;
class QPushButton;

namespace kvms_matrix {

// The page shown while no decoder is configured: a hint and the way to configure one.
class MatrixDefaultForm : public KCOMMON::KWidget {
    Q_OBJECT

public:
    explicit MatrixDefaultForm(QWidget* parent = nullptr);

    QPushButton* configButton() const { return configBtn; }

public slots:
    void slotConfigBtnCliced();

signals:
    // The decoder configuration was saved: the page choice must be made again.
    void signalConfigurationChanged();

private:
    QLabel* m_hint = nullptr;
    QPushButton* configBtn = nullptr;
};

} // namespace kvms_matrix
