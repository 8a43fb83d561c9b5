#include "NetworkSettingsDlg.h"

#include "DialogStyle.h"

#include "MatrixSdkWorker.h"

#include "KSingleton.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHostAddress>
#include <QIcon>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

#include <cstring>

namespace kvms_matrix {

namespace {

QString field(const char* text, size_t size)
{
    return QString::fromLatin1(text, int(strnlen(text, size)));
}

void putField(char* out, size_t size, const QString& text)
{
    const QByteArray bytes = text.toLatin1();
    std::memset(out, 0, size);
    std::memcpy(out, bytes.constData(), qMin(size - 1, size_t(bytes.size())));
}

bool isIpv4(const QString& text)
{
    return QHostAddress(text).protocol() == QAbstractSocket::IPv4Protocol;
}

} // namespace

NetworkSettingsDlg::NetworkSettingsDlg(const MatrixInfo& decoder, QWidget* parent)
    : QDialog(parent)
    , m_decoder(decoder)
{
    setObjectName(QStringLiteral("matrixNetworkDlg"));
    applyDialogStyle(this);
    setWindowIcon(QIcon(QStringLiteral(":/page_icons/network.png")));
    setWindowTitle(tr("Network settings of %1").arg(decoder.ip));
    m_ip = new QLineEdit(decoder.ip, this);
    m_mask = new QLineEdit(this);
    m_gateway = new QLineEdit(this);
    m_dns = new QLineEdit(this);
    m_user = new QLineEdit(decoder.username.isEmpty() ? QStringLiteral("admin") : decoder.username, this);
    m_password = new QLineEdit(decoder.password, this);
    m_password->setEchoMode(QLineEdit::Password);
    m_status = new QLabel(tr("Reading the settings..."), this);
    auto* form = new QFormLayout;
    form->addRow(tr("IPv4 address"), m_ip);
    form->addRow(tr("Subnet mask"), m_mask);
    form->addRow(tr("Gateway"), m_gateway);
    form->addRow(tr("DNS server"), m_dns);
    form->addRow(tr("User"), m_user);
    form->addRow(tr("Password"), m_password);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &NetworkSettingsDlg::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &NetworkSettingsDlg::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(m_status);
    layout->addWidget(buttons);

    MatrixSdkWorker* worker = KCOMMON::KSingleton<MatrixSdkWorker>::instance();
    connect(worker, &MatrixSdkWorker::signalGetMatrixNetworkResult, this,
        &NetworkSettingsDlg::slotGetMatrixNetworkResult, Qt::QueuedConnection);
    connect(worker, &MatrixSdkWorker::signalSetMatrixNetworkResult, this,
        &NetworkSettingsDlg::slotSetMatrixNetworkResult, Qt::QueuedConnection);
    worker->getMatrixNetworkInfo(decoder, decoder.type);
}

void NetworkSettingsDlg::slotGetMatrixNetworkResult(DeviceNetworkCfg_t networkCfg, QString formerIp, int)
{
    if (formerIp != m_decoder.ip)
        return;
    // An all-zero record means the decoder did not answer.
    const QString ip = field(networkCfg.ipv4, sizeof networkCfg.ipv4);
    if (ip.isEmpty()) {
        m_status->setText(tr("The decoder did not send its settings."));
        return;
    }
    m_ip->setText(ip);
    m_mask->setText(field(networkCfg.mask, sizeof networkCfg.mask));
    m_gateway->setText(field(networkCfg.gateway, sizeof networkCfg.gateway));
    m_dns->setText(field(networkCfg.dns, sizeof networkCfg.dns));
    m_status->clear();
}

void NetworkSettingsDlg::accept()
{
    for (QLineEdit* edit : { m_ip, m_mask }) {
        if (!isIpv4(edit->text().trimmed())) {
            m_status->setText(tr("Please enter an IPv4 address."));
            edit->setFocus();
            return;
        }
    }
    DeviceNetworkCfg_t cfg;
    std::memset(&cfg, 0, sizeof cfg);
    putField(cfg.ipv4, sizeof cfg.ipv4, m_ip->text().trimmed());
    putField(cfg.mask, sizeof cfg.mask, m_mask->text().trimmed());
    putField(cfg.gateway, sizeof cfg.gateway, m_gateway->text().trimmed());
    putField(cfg.dns, sizeof cfg.dns, m_dns->text().trimmed());
    MatrixInfo target = m_decoder;
    target.username = m_user->text();
    target.password = m_password->text();
    m_sending = true;
    m_status->setText(tr("Sending the settings..."));
    KCOMMON::KSingleton<MatrixSdkWorker>::instance()->setMatrixNetworkConfig(
        {}, m_decoder, target, cfg, m_decoder.type, this);
}

void NetworkSettingsDlg::slotSetMatrixNetworkResult(int result, QString mainIp, QString formerIp)
{
    if (!m_sending || formerIp != m_decoder.ip)
        return;
    m_sending = false;
    if (result != 0) {
        m_status->setText(
            tr("Changing the network settings failed(%1, %2).").arg(result).arg(MatrixSdkWorker::getErrorInfo(result)));
        return;
    }
    emit signalAddressChanged(formerIp, mainIp);
    QDialog::accept();
}

} // namespace kvms_matrix
