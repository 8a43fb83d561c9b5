#include "PlaybackDlg.h"

#include "DialogStyle.h"

#include "DevsMgrData.h"
#include "KSingleton.h"

#include <QComboBox>
#include <QDateTimeEdit>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace kvms_matrix {

namespace {

const char* const kTimeFormat = "yyyy-MM-dd hh:mm:ss";

} // namespace

PlaybackDlg::PlaybackDlg(const QString& channelId, QWidget* parent)
    : QDialog(parent)
{
    setObjectName(QStringLiteral("matrixPlaybackDlg"));
    setWindowTitle(tr("Play back a recording"));
    applyDialogStyle(this);

    m_channels = new QComboBox(this);
    m_channels->setObjectName(QStringLiteral("playbackChannel"));
    for (const DevRecord& device : KCOMMON::KSingleton<DevsMgrData>::instance()->devices()) {
        for (const ChannelRecord& channel : device.channels) {
            m_channels->addItem(QStringLiteral("%1 / %2").arg(device.name, channel.name), channel.id);
            if (channel.id == channelId)
                m_channels->setCurrentIndex(m_channels->count() - 1);
        }
    }
    const QDateTime now = QDateTime::currentDateTime();
    m_begin = new QDateTimeEdit(now.addSecs(-3600), this);
    m_end = new QDateTimeEdit(now, this);
    for (QDateTimeEdit* edit : { m_begin, m_end }) {
        edit->setDisplayFormat(QLatin1String(kTimeFormat));
        edit->setCalendarPopup(true);
    }
    m_begin->setObjectName(QStringLiteral("playbackBegin"));
    m_end->setObjectName(QStringLiteral("playbackEnd"));
    m_error = new QLabel(this);
    m_error->setObjectName(QStringLiteral("playbackError"));
    m_error->setStyleSheet(QStringLiteral("QLabel{color:#f0c060;}"));

    auto* form = new QFormLayout;
    form->addRow(tr("Camera channel"), m_channels);
    form->addRow(tr("Begin"), m_begin);
    form->addRow(tr("End"), m_end);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Cancel, this);
    m_play = buttons->addButton(tr("Play back"), QDialogButtonBox::AcceptRole);
    m_play->setObjectName(QStringLiteral("playbackStart"));
    connect(buttons, &QDialogButtonBox::accepted, this, &PlaybackDlg::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(m_error);
    layout->addWidget(buttons);
}

PlaybackChoice PlaybackDlg::choice() const
{
    PlaybackChoice c;
    c.channelId = m_channels->currentData().toString();
    c.deviceId = c.channelId.section(QLatin1Char('&'), 0, 0);
    c.channel = c.channelId.section(QLatin1Char('&'), 1).toInt();
    ChannelRecord channel;
    c.name = KCOMMON::KSingleton<DevsMgrData>::instance()->channelById(c.channelId, &channel)
        ? channel.name
        : m_channels->currentText();
    c.begin = m_begin->dateTime();
    c.end = m_end->dateTime();
    return c;
}

QString PlaybackDlg::errorText() const
{
    return m_error->text();
}

void PlaybackDlg::accept()
{
    const PlaybackChoice c = choice();
    if (c.channelId.isEmpty())
        m_error->setText(tr("Choose a camera channel."));
    else if (c.begin >= c.end)
        m_error->setText(tr("The begin time must be before the end time."));
    else if (c.begin.secsTo(c.end) > kMaxSpanSecs)
        m_error->setText(tr("A playback covers one day at most."));
    else
        QDialog::accept();
}

} // namespace kvms_matrix
