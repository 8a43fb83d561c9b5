#pragma once

#include "CSharedHandle.h"
#include "VideoStreamInfo.h"

#include "CKawsPlayer.h"
#include "PlaybackByTimeCondition.h"

#include <QDateTime>
#include <QMetaObject>
#include <QSharedPointer>
#include <QString>

#include <mutex>

class QTimer;

namespace kvms_matrix {

// Replays a camera's recording onto one window of the wall: the client library streams the
// recording here, the player (in frame-callback mode) parses it, and every picture it hands
// back is sent on to the decoder as a Kav frame over the window's media distribution.
class PlayerbackPlayer : public CKawsPlayer {
    Q_OBJECT

public:
    static constexpr int kStatusStopped = 0;
    static constexpr int kStatusStreaming = 16384;
    static constexpr int kReplayMode = 1;
    static constexpr int kMessageDisplay = 4096; // stream events
    static constexpr int kDataStateDisplay = 1024; // video-data states
    static constexpr int kProgressIntervalMs = 500;

    explicit PlayerbackPlayer(QWidget* parent = nullptr);
    ~PlayerbackPlayer() override;

    // The decoder and the place on it the frames go to.
    void setTarget(
        QSharedPointer<CSharedHandle> connection, int windowId, int subWindowId, int windowType, int channel);
    void setWindowKey(const QString& key) { m_windowKey = key; }
    QString windowKey() const { return m_windowKey; }
    int channel() const { return m_channel; }
    QSharedPointer<CSharedHandle> connection() const { return m_connection; }

    void Start(const vms_sdk::PlaybackByTimeCondition& condition);
    void Stop();
    void pause(bool pause);
    void setSpeed(const QString& speedText);
    // Moves the replay to `time` within the span; the client library's result.
    int seek(const QDateTime& time);

    int status() const { return m_status; }
    int playState() const { return m_playState; }
    bool isPlaying() const { return m_playing; }
    QString speedText() const { return m_speedText; }
    QString streamId() const { return m_streamId; }
    vms_sdk::PlaybackByTimeCondition condition() const { return m_condition; }
    bool streamInfoReceived() const;
    VideoStreamInfo streamInfo() const;
    // The event message of a stream event, empty for events that show none.
    static QString eventMessage(int event);

public slots:
    void slotStreamData(const QString& streamId, const QByteArray& data);
    void slotStreamEventPush(QString streamId, int event);
    void slotVideoDataState(int state);

protected:
    void frameDataCallback(int type, char* data, int length) override;
    // Sends one picture to the decoder; the one place the player reaches the worker.
    virtual int sendFrame(int windowId, VideoStreamInfo* info, char* data, int length, int kind);

private:
    void announce();
    void reportProgress();
    void releaseStream();

    QString m_streamId;
    QString m_windowKey;
    QSharedPointer<CSharedHandle> m_connection;
    int m_channel = 0;
    vms_sdk::PlaybackByTimeCondition m_condition;
    mutable std::mutex m_infoMutex; // the stream description is written on the player's thread
    VideoStreamInfo m_info;
    bool m_infoReceived = false;
    int m_status = kStatusStopped;
    int m_playState = 1;
    bool m_playing = false;
    QString m_speedText = QStringLiteral("1");
    QMetaObject::Connection m_dataConnection;
    QMetaObject::Connection m_eventConnection;
    QTimer* m_progressTimer = nullptr;
    quint64 m_reportedTimestamp = 0;
};

} // namespace kvms_matrix
