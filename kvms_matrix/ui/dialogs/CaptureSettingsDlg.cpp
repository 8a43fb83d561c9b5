#include "CaptureSettingsDlg.h"

#include "DialogStyle.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QRegularExpressionValidator>
#include <QVBoxLayout>

namespace kvms_matrix {

CaptureSettingsDlg::CaptureSettingsDlg(const CaptureSettings& settings, bool projecting, QWidget* parent)
    : QDialog(parent)
{
    setObjectName(QStringLiteral("captureSettingsDlg"));
    setWindowTitle(tr("Screen capture settings"));
    applyDialogStyle(this);

    auto* sending = new QGroupBox(tr("Sending"), this);
    m_direct = new QRadioButton(tr("Pictures sent straight to the decoder"), sending);
    m_stream = new QRadioButton(tr("ONVIF stream pulled by the decoder"), sending);
    auto* group = new QButtonGroup(this);
    group->addButton(m_direct);
    group->addButton(m_stream);
    m_address = new QLineEdit(settings.streamAddress, sending);
    m_address->setPlaceholderText(tr("IPv4 address of the stream's publisher"));
    m_address->setValidator(new QRegularExpressionValidator(
        QRegularExpression(QStringLiteral("^[0-9]{1,3}(\\.[0-9]{1,3}){0,3}$")), m_address));
    m_address->setMaxLength(15);
    m_what = new QLabel(sending);
    m_what->setWordWrap(true);
    auto* sendingLayout = new QFormLayout(sending);
    sendingLayout->addRow(m_direct);
    sendingLayout->addRow(m_stream);
    sendingLayout->addRow(tr("Stream address"), m_address);
    sendingLayout->addRow(m_what);

    m_label = new QLineEdit(settings.label, this);
    m_label->setMaxLength(CaptureSettings::kMaxLabel);
    m_label->setPlaceholderText(CaptureSettings().effectiveLabel());
    m_ask = new QCheckBox(tr("Ask before each projection"), this);
    m_ask->setChecked(settings.askEachTime);
    m_preview = new QLabel(this);
    m_preview->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto* form = new QFormLayout;
    form->addRow(tr("Name on the wall"), m_label);
    form->addRow(tr("Source id"), m_preview);
    form->addRow(m_ask);

    m_ok = new QPushButton(projecting ? tr("Project") : tr("Save"), this);
    m_ok->setDefault(true);
    auto* cancel = new QPushButton(tr("Cancel"), this);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(m_ok);
    buttons->addWidget(cancel);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(sending);
    layout->addLayout(form);
    layout->addLayout(buttons);

    (settings.sending == CaptureSettings::Sending::Stream ? m_stream : m_direct)->setChecked(true);
    connect(m_direct, &QRadioButton::toggled, this, &CaptureSettingsDlg::refresh);
    connect(m_label, &QLineEdit::textChanged, this, &CaptureSettingsDlg::refresh);
    connect(m_address, &QLineEdit::textChanged, this, &CaptureSettingsDlg::refresh);
    connect(m_ok, &QPushButton::clicked, this, &CaptureSettingsDlg::accept);
    connect(cancel, &QPushButton::clicked, this, &CaptureSettingsDlg::reject);
    refresh();
    resize(460, sizeHint().height());
}

CaptureSettings CaptureSettingsDlg::settings() const
{
    CaptureSettings out;
    out.sending = m_stream->isChecked() ? CaptureSettings::Sending::Stream : CaptureSettings::Sending::Direct;
    out.label = m_label->text().trimmed();
    out.streamAddress = m_address->text().trimmed();
    out.askEachTime = m_ask->isChecked();
    return out;
}

void CaptureSettingsDlg::setTarget(int windowId, int subWindowId)
{
    m_windowId = windowId;
    m_subWindowId = subWindowId;
    refresh();
}

void CaptureSettingsDlg::refresh()
{
    const CaptureSettings now = settings();
    const bool stream = now.sending == CaptureSettings::Sending::Stream;
    m_address->setEnabled(stream);
    if (stream) {
        const QString address = now.streamAddress.isEmpty() ? QStringLiteral("…") : now.streamAddress;
        m_what->setText(tr("The decoder pulls rtsp://%1/0 (main stream) and rtsp://%1/1 (sub stream) "
                           "from the encoder that publishes this desktop.")
                            .arg(address));
    } else {
        m_what->setText(tr("The primary screen with its pointer, as 1920 x 1080 JPEG pictures, "
                           "up to 25 a second."));
    }
    m_preview->setText(now.source(m_windowId, m_subWindowId).deviceId);
    m_ok->setEnabled(!stream || now.streamAddressValid());
}

} // namespace kvms_matrix
