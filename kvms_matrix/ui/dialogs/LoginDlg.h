#pragma once

#include "MatrixInfo.h"

#include <QDialog>

class QLabel;
class QLineEdit;
class QSpinBox;

namespace kvms_matrix {

// Asks for a decoder's login: the account of a known decoder (Login), a decoder added by
// address (Add), or the administrator password of a factory-new unit (Activate).
class LoginDlg : public QDialog {
    Q_OBJECT

public:
    enum class Mode { Login, Add, Activate };

    LoginDlg(const MatrixInfo& decoder, Mode mode, QWidget* parent = nullptr);

    // The decoder with what the operator entered.
    MatrixInfo decoder() const;
    QLineEdit* addressEdit() const { return m_address; }
    QSpinBox* portEdit() const { return m_port; }
    QLineEdit* userEdit() const { return m_user; }
    QLineEdit* passwordEdit() const { return m_password; }
    QLineEdit* confirmEdit() const { return m_confirm; }

public slots:
    void accept() override;

private:
    MatrixInfo m_decoder;
    Mode m_mode;
    QLineEdit* m_address = nullptr;
    QSpinBox* m_port = nullptr;
    QLineEdit* m_user = nullptr;
    QLineEdit* m_password = nullptr;
    QLineEdit* m_confirm = nullptr;
    QLabel* m_error = nullptr;
};

} // namespace kvms_matrix
