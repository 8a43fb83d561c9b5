#pragma once

#include <QDateTime>
#include <QString>
#include <QWidget>

class QComboBox;
class QLabel;
class QPushButton;
class QSlider;

namespace kvms_matrix {

// The controls of the recording replayed in the selected wall window: pause and resume, speed,
// the time axis (a slider over the span with the current time; dragging it seeks) and stop.
// Reports intent only; hidden while no replay is chosen.
class PlaybackBarWt : public QWidget {
    Q_OBJECT

public:
    explicit PlaybackBarWt(QWidget* parent = nullptr);

    // Shows the controls for one replay.
    void setTarget(const QString& windowKey, const QString& title, const QDateTime& begin, const QDateTime& end,
        int playState, const QString& speedText);
    void clearTarget();
    QString windowKey() const { return m_key; }
    void setPlayState(int playState);
    void setProgress(quint64 positionMs, quint64 durationMs, const QDateTime& time);
    void setFinished();

    QPushButton* pauseButton() const { return m_pause; }
    QComboBox* speedBox() const { return m_speed; }
    QSlider* timeline() const { return m_timeline; }
    QPushButton* stopButton() const { return m_stop; }
    QLabel* timeLabel() const { return m_time; }

signals:
    void signalPause(const QString& windowKey, bool pause);
    void signalSpeed(const QString& windowKey, const QString& speedText);
    void signalSeek(const QString& windowKey, const QDateTime& time);
    void signalStop(const QString& windowKey);

private:
    void showTime(const QDateTime& time);

    QString m_key;
    QDateTime m_begin;
    QDateTime m_end;
    QLabel* m_title = nullptr;
    QPushButton* m_pause = nullptr;
    QComboBox* m_speed = nullptr;
    QSlider* m_timeline = nullptr;
    QLabel* m_time = nullptr;
    QPushButton* m_stop = nullptr;
};

} // namespace kvms_matrix
