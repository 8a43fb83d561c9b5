#pragma once

#include <QDateTime>
#include <QDialog>
#include <QString>

class QComboBox;
class QDateTimeEdit;
class QLabel;
class QPushButton;

namespace kvms_matrix {

// What the operator chose to replay: a camera channel of the host's catalogue and a span.
struct PlaybackChoice {
    QString channelId; // "<device id>&<channel>"
    QString deviceId;
    int channel = 0;
    QString name; // the channel's name, for the wall
    QDateTime begin;
    QDateTime end;
};

// Chooses the recording to replay on a wall window: the channel (every channel the host
// knows, the one given first), and the span, by default the hour up to now.
class PlaybackDlg : public QDialog {
    Q_OBJECT

public:
    static constexpr qint64 kMaxSpanSecs = 24 * 3600; // one day at most

    explicit PlaybackDlg(const QString& channelId, QWidget* parent = nullptr);

    PlaybackChoice choice() const;
    QComboBox* channelBox() const { return m_channels; }
    QDateTimeEdit* beginEdit() const { return m_begin; }
    QDateTimeEdit* endEdit() const { return m_end; }
    QPushButton* playButton() const { return m_play; }
    QString errorText() const;

public slots:
    void accept() override; // only a channel and a span of up to one day are taken

private:
    QComboBox* m_channels = nullptr;
    QDateTimeEdit* m_begin = nullptr;
    QDateTimeEdit* m_end = nullptr;
    QLabel* m_error = nullptr;
    QPushButton* m_play = nullptr;
};

} // namespace kvms_matrix
