#include "LoginDlg.h"

#include "DialogStyle.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHostAddress>
#include <QIcon>
#include <QLabel>
#include <QLineEdit>
#include <QSpinBox>
#include <QVBoxLayout>

namespace kvms_matrix {

namespace {

constexpr int kDefaultPort = 28000;
constexpr int kMaxTextLength = 31; // the SDK's user and password fields hold 31 bytes

} // namespace

LoginDlg::LoginDlg(const MatrixInfo& decoder, Mode mode, QWidget* parent)
    : QDialog(parent)
    , m_decoder(decoder)
    , m_mode(mode)
{
    setObjectName(QStringLiteral("matrixLoginDlg"));
    applyDialogStyle(this);
    setWindowIcon(QIcon(QStringLiteral(":/page_icons/login.png")));
    setWindowTitle(mode == Mode::Add ? tr("Add decoder")
            : mode == Mode::Activate ? tr("Activate decoder")
                                     : tr("Decoder login"));
    m_address = new QLineEdit(decoder.ip, this);
    m_address->setReadOnly(mode != Mode::Add);
    m_port = new QSpinBox(this);
    m_port->setRange(1, 65535);
    m_port->setValue(decoder.manager_port > 0 ? decoder.manager_port : kDefaultPort);
    m_port->setEnabled(mode == Mode::Add);
    m_user = new QLineEdit(mode == Mode::Activate ? QStringLiteral("admin") : decoder.username, this);
    m_user->setReadOnly(mode == Mode::Activate);
    m_user->setMaxLength(kMaxTextLength);
    if (m_user->text().isEmpty())
        m_user->setText(QStringLiteral("admin"));
    m_password = new QLineEdit(mode == Mode::Activate ? QString() : decoder.password, this);
    m_password->setEchoMode(QLineEdit::Password);
    m_password->setMaxLength(kMaxTextLength);
    m_confirm = new QLineEdit(this);
    m_confirm->setEchoMode(QLineEdit::Password);
    m_confirm->setMaxLength(kMaxTextLength);
    m_error = new QLabel(this);
    m_error->setStyleSheet(QStringLiteral("QLabel{color:#f85149;}"));

    auto* form = new QFormLayout;
    form->addRow(tr("Address"), m_address);
    form->addRow(tr("Port"), m_port);
    form->addRow(tr("User"), m_user);
    form->addRow(tr("Password"), m_password);
    if (mode == Mode::Activate)
        form->addRow(tr("Confirm password"), m_confirm);
    else
        m_confirm->hide();
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &LoginDlg::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &LoginDlg::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(m_error);
    layout->addWidget(buttons);
    (mode == Mode::Add ? m_address : m_password)->setFocus();
}

MatrixInfo LoginDlg::decoder() const
{
    MatrixInfo info = m_decoder;
    info.ip = m_address->text().trimmed();
    info.manager_port = m_port->value();
    if (info.port <= 0)
        info.port = info.manager_port;
    info.username = m_user->text();
    info.password = m_password->text();
    if (info.type < 0)
        info.type = 0;
    return info;
}

void LoginDlg::accept()
{
    const QHostAddress address(m_address->text().trimmed());
    if (address.protocol() != QAbstractSocket::IPv4Protocol) {
        m_error->setText(tr("Please enter an IPv4 address."));
        return;
    }
    if (m_user->text().isEmpty()) {
        m_error->setText(tr("Please enter the user name."));
        return;
    }
    if (m_mode == Mode::Activate && (m_password->text().isEmpty() || m_password->text() != m_confirm->text())) {
        m_error->setText(tr("The two passwords differ or are empty."));
        return;
    }
    QDialog::accept();
}

} // namespace kvms_matrix
