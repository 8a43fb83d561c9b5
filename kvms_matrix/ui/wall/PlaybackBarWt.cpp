#include "PlaybackBarWt.h"

#include "PlaybackRequests.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSlider>

namespace kvms_matrix {

namespace {

const char* const kTimeFormat = "yyyy-MM-dd hh:mm:ss";

} // namespace

PlaybackBarWt::PlaybackBarWt(QWidget* parent)
    : QWidget(parent)
{
    setObjectName(QStringLiteral("matrixPlaybackBar"));
    m_title = new QLabel(this);
    m_pause = new QPushButton(tr("Pause"), this);
    m_pause->setObjectName(QStringLiteral("playbackPause"));
    m_speed = new QComboBox(this);
    m_speed->setObjectName(QStringLiteral("playbackSpeed"));
    for (const QString& speed : vms_sdk::playback_speed_texts())
        m_speed->addItem(QStringLiteral("x%1").arg(speed), speed);
    m_timeline = new QSlider(Qt::Horizontal, this);
    m_timeline->setObjectName(QStringLiteral("playbackTimeline"));
    m_timeline->setTracking(false); // a seek when the handle is let go, not on every step
    m_time = new QLabel(this);
    m_time->setObjectName(QStringLiteral("playbackTime"));
    m_stop = new QPushButton(tr("Stop playback"), this);
    m_stop->setObjectName(QStringLiteral("playbackStop"));

    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 2, 0, 2);
    layout->addWidget(m_title);
    layout->addWidget(m_pause);
    layout->addWidget(m_speed);
    layout->addWidget(m_timeline, 1);
    layout->addWidget(m_time);
    layout->addWidget(m_stop);

    connect(m_pause, &QPushButton::clicked, this,
        [this] { emit signalPause(m_key, m_pause->property("playState").toInt() == 1); });
    connect(m_speed, qOverload<int>(&QComboBox::activated), this,
        [this](int index) { emit signalSpeed(m_key, m_speed->itemData(index).toString()); });
    connect(m_timeline, &QSlider::valueChanged, this, [this](int seconds) {
        const QDateTime time = m_begin.addSecs(seconds);
        showTime(time);
        emit signalSeek(m_key, time);
    });
    connect(m_timeline, &QSlider::sliderMoved, this, [this](int seconds) { showTime(m_begin.addSecs(seconds)); });
    connect(m_stop, &QPushButton::clicked, this, [this] { emit signalStop(m_key); });
    hide();
}

void PlaybackBarWt::setTarget(const QString& windowKey, const QString& title, const QDateTime& begin,
    const QDateTime& end, int playState, const QString& speedText)
{
    m_key = windowKey;
    m_begin = begin;
    m_end = end;
    m_title->setText(title);
    {
        const QSignalBlocker block(m_timeline);
        m_timeline->setRange(0, int(qBound<qint64>(0, begin.secsTo(end), INT_MAX)));
        m_timeline->setValue(0);
    }
    m_speed->setCurrentIndex(qMax(0, m_speed->findData(speedText)));
    setPlayState(playState);
    showTime(begin);
    show();
}

void PlaybackBarWt::clearTarget()
{
    m_key.clear();
    hide();
}

void PlaybackBarWt::setPlayState(int playState)
{
    m_pause->setProperty("playState", playState);
    m_pause->setText(playState == 1 ? tr("Pause") : tr("Resume"));
    m_pause->setEnabled(true);
    m_speed->setEnabled(playState == 1); // the speed is changed while playing only
}

void PlaybackBarWt::setProgress(quint64 positionMs, quint64, const QDateTime& time)
{
    if (m_timeline->isSliderDown())
        return; // the operator is choosing a time
    const QSignalBlocker block(m_timeline);
    m_timeline->setValue(int(qMin<quint64>(positionMs / 1000, quint64(m_timeline->maximum()))));
    showTime(time);
}

void PlaybackBarWt::setFinished()
{
    m_pause->setEnabled(false);
    m_speed->setEnabled(false);
    m_time->setText(tr("%1 (end)").arg(m_end.toString(QLatin1String(kTimeFormat))));
}

void PlaybackBarWt::showTime(const QDateTime& time)
{
    m_time->setText(QStringLiteral("%1 / %2").arg(
        time.toString(QLatin1String(kTimeFormat)), m_end.toString(QLatin1String("hh:mm:ss"))));
}

} // namespace kvms_matrix
