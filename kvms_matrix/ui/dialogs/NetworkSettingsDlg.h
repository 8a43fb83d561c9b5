#pragma once

#include "MatrixInfo.h"

#include "CMatrixSDK.h"

#include <QDialog>

class QLabel;
class QLineEdit;

namespace kvms_matrix {

// Reads a found decoder's network settings and sends the operator's changes, through the
// worker's discovery functions (no login needed, the account is sent with the request).
class NetworkSettingsDlg : public QDialog {
    Q_OBJECT

public:
    NetworkSettingsDlg(const MatrixInfo& decoder, QWidget* parent = nullptr);

    QLineEdit* addressEdit() const { return m_ip; }
    QLineEdit* maskEdit() const { return m_mask; }

public slots:
    void accept() override;
    void slotGetMatrixNetworkResult(DeviceNetworkCfg_t networkCfg, QString formerIp, int type);
    void slotSetMatrixNetworkResult(int result, QString mainIp, QString formerIp);

signals:
    // The decoder now answers at newIp.
    void signalAddressChanged(QString formerIp, QString newIp);

private:
    MatrixInfo m_decoder;
    bool m_sending = false;
    QLineEdit* m_ip = nullptr;
    QLineEdit* m_mask = nullptr;
    QLineEdit* m_gateway = nullptr;
    QLineEdit* m_dns = nullptr;
    QLineEdit* m_user = nullptr;
    QLineEdit* m_password = nullptr;
    QLabel* m_status = nullptr;
};

} // namespace kvms_matrix
