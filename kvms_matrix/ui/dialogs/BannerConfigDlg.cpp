#include "BannerConfigDlg.h"

#include "DialogStyle.h"

#include "SystemAssistant.h"

#include <QCheckBox>
#include <QColorDialog>
#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QVBoxLayout>

namespace kvms_matrix {

namespace {

constexpr int kWallUnits = 32768;
// The decoder keeps 1024 bytes of UTF-8; 300 characters stay within them in any script.
constexpr int kMaxMessage = 300;

} // namespace

BannerConfigDlg::BannerConfigDlg(const MatrixBannerInfo& banner, bool shown, QWidget* parent)
    : QDialog(parent)
    , m_banner(banner)
{
    setObjectName(QStringLiteral("bannerConfigDlg"));
    setWindowTitle(tr("Banner"));
    applyDialogStyle(this);
    if (m_banner.w <= 0 || m_banner.h <= 0) {
        m_banner.x = 0;
        m_banner.w = kWallUnits;
        m_banner.h = kWallUnits / 12;
        m_banner.y = kWallUnits - m_banner.h;
    }
    // A decoder that never showed a banner reports both colours as 0: text the colour of its
    // background would not be seen, so such a pair starts from the defaults.
    const bool unreadable = m_banner.fontColor.isValid() && m_banner.fontColor.rgb() == m_banner.backColor.rgb();
    if (!m_banner.fontColor.isValid() || unreadable)
        m_banner.fontColor = Qt::white;
    if (!m_banner.backColor.isValid() || unreadable)
        m_banner.backColor = QColor(0, 0, 128);
    m_message = new QLineEdit(m_banner.message, this);
    m_message->setMaxLength(kMaxMessage);
    m_font = new QSpinBox(this);
    m_font->setRange(10, 100);
    m_font->setSuffix(QStringLiteral(" %"));
    m_font->setValue(m_banner.fontPercent >= 10 ? qMin(m_banner.fontPercent, 100) : 60);
    m_speed = new QSpinBox(this);
    m_speed->setRange(0, 10);
    m_speed->setValue(qBound(0, m_banner.speed, 10));
    m_direction = new QComboBox(this);
    m_direction->addItem(tr("Right to left"), 0);
    m_direction->addItem(tr("Left to right"), 1);
    m_direction->addItem(tr("Still"), 2);
    m_direction->setCurrentIndex(qMax(0, m_direction->findData(m_banner.direction)));
    m_fontColour = new QPushButton(this);
    m_backColour = new QPushButton(this);
    paintSwatch(m_fontColour, m_banner.fontColor);
    paintSwatch(m_backColour, m_banner.backColor);
    m_show = new QCheckBox(tr("Show the banner on the wall"), this);
    m_show->setChecked(shown || m_banner.message.isEmpty());
    m_save = new QPushButton(tr("Save"), this);
    m_save->setDefault(true);
    auto* cancel = new QPushButton(tr("Cancel"), this);

    auto* form = new QFormLayout;
    form->addRow(tr("Text"), m_message);
    form->addRow(tr("Font size (of the banner height)"), m_font);
    form->addRow(tr("Text colour"), m_fontColour);
    form->addRow(tr("Background colour"), m_backColour);
    form->addRow(tr("Speed"), m_speed);
    form->addRow(tr("Direction"), m_direction);
    form->addRow(QString(), m_show);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(m_save);
    buttons->addWidget(cancel);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addLayout(buttons);

    connect(m_fontColour, &QPushButton::clicked, this, [this] { pickColour(m_fontColour, &m_banner.fontColor); });
    connect(m_backColour, &QPushButton::clicked, this, [this] { pickColour(m_backColour, &m_banner.backColor); });
    connect(m_save, &QPushButton::clicked, this, &BannerConfigDlg::accept);
    connect(cancel, &QPushButton::clicked, this, &BannerConfigDlg::reject);
}

void BannerConfigDlg::paintSwatch(QPushButton* button, const QColor& colour)
{
    button->setText(colour.name());
    button->setStyleSheet(
        QStringLiteral("QPushButton{background:%1;color:%2;}")
            .arg(colour.name(), colour.lightness() > 128 ? QStringLiteral("#000") : QStringLiteral("#fff")));
}

void BannerConfigDlg::pickColour(QPushButton* button, QColor* colour)
{
    const QColor chosen = QColorDialog::getColor(*colour, this, tr("Choose a colour"));
    if (!chosen.isValid())
        return;
    *colour = chosen;
    paintSwatch(button, chosen);
}

MatrixBannerInfo BannerConfigDlg::banner() const
{
    MatrixBannerInfo out = m_banner;
    out.message = m_message->text();
    out.fontPercent = m_font->value();
    out.speed = m_speed->value();
    out.direction = m_direction->currentData().toInt();
    return out;
}

bool BannerConfigDlg::isShown() const
{
    return m_show->isChecked();
}

void BannerConfigDlg::accept()
{
    if (m_show->isChecked() && m_message->text().trimmed().isEmpty()) {
        SystemAssistant::messageAlert(tr("The banner text cannot be empty."), this);
        return;
    }
    QDialog::accept();
}

} // namespace kvms_matrix
