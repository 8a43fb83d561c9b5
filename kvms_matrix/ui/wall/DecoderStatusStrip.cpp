#include "DecoderStatusStrip.h"

#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QVariant>

namespace kvms_matrix {

namespace {

QString colourOf(MatrixPageState::Link link)
{
    switch (link) {
    case MatrixPageState::Link::Connected:
        return QStringLiteral("#3fb950");
    case MatrixPageState::Link::Lost:
    case MatrixPageState::Link::Failed:
        return QStringLiteral("#f85149");
    case MatrixPageState::Link::Connecting:
    case MatrixPageState::Link::Reconnecting:
        return QStringLiteral("#d29922");
    case MatrixPageState::Link::Idle:
        break;
    }
    return QStringLiteral("#858fa2");
}

} // namespace

DecoderStatusStrip::DecoderStatusStrip(QWidget* parent)
    : QWidget(parent)
{
    setObjectName(QStringLiteral("matrixStatusStrip"));
    m_layout = new QHBoxLayout(this);
    m_layout->setContentsMargins(4, 2, 4, 2);
    m_layout->setSpacing(18);
    auto* icon = new QLabel(this);
    icon->setPixmap(QIcon(QStringLiteral(":/page_icons/decoder.png")).pixmap(16, 16));
    m_layout->addWidget(icon);
    m_layout->addStretch(1);
}

void DecoderStatusStrip::setDecoders(const QList<MatrixInfo>& decoders)
{
    qDeleteAll(m_labels);
    m_labels.clear();
    for (const MatrixInfo& d : decoders) {
        if (m_labels.contains(d.ip))
            continue;
        auto* label = new QLabel(this);
        label->setObjectName(QStringLiteral("decoderLink_") + d.ip);
        m_layout->insertWidget(m_layout->count() - 1, label);
        m_labels.insert(d.ip, label);
        setLink(d.ip, MatrixPageState::Link::Idle, 0);
    }
}

void DecoderStatusStrip::setLink(const QString& ip, MatrixPageState::Link link, int attempts)
{
    QLabel* label = m_labels.value(ip);
    if (!label)
        return;
    label->setText(QStringLiteral("<span style=\"color:%1\">&#9679;</span> %2")
                       .arg(colourOf(link), linkText(ip, link, attempts).toHtmlEscaped()));
    label->setProperty("plainText", linkText(ip, link, attempts));
}

QString DecoderStatusStrip::text(const QString& ip) const
{
    const QLabel* label = m_labels.value(ip);
    return label ? label->property("plainText").toString() : QString();
}

QString DecoderStatusStrip::linkText(const QString& ip, MatrixPageState::Link link, int attempts)
{
    switch (link) {
    case MatrixPageState::Link::Connecting:
        return tr("%1: connecting").arg(ip);
    case MatrixPageState::Link::Connected:
        return tr("%1: connected").arg(ip);
    case MatrixPageState::Link::Lost:
        return tr("%1: connection lost").arg(ip);
    case MatrixPageState::Link::Reconnecting:
        return tr("%1: reconnecting (attempt %2)").arg(ip).arg(attempts);
    case MatrixPageState::Link::Failed:
        return tr("%1: login failed").arg(ip);
    case MatrixPageState::Link::Idle:
        break;
    }
    return tr("%1: not connected").arg(ip);
}

} // namespace kvms_matrix
