#pragma once

#include "PlaybackByTimeCondition.h"

#include <QByteArray>
#include <QDateTime>
#include <QString>

#include <atomic>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <thread>

struct AVFormatContext;
struct AVBSFContext;
struct AVPacket;

namespace vms_sdk {

// One open playback stream: a thread reads the recording with libavformat, wraps every
// video access unit in a Kav envelope (key pictures with the stream description) and emits
// it through ClientSignals::signalStreamData, paced at real time times the speed. A file is
// looped to cover the span; a live source is relayed as it comes (its pace is its own, speed
// only moves the clock). Events go through ClientSignals::signalStreamEventPush: connected
// once opened, connect failed when the source cannot be opened or carries no H.264/H.265,
// connect broken when a live source ends, playback end when the span is covered.
class RecordingStream {
public:
    RecordingStream(QString streamId, const PlaybackByTimeCondition& condition, QString source);
    ~RecordingStream(); // stops and joins the thread

    void start();
    void stop();
    void setPaused(bool paused);
    void step(); // one picture forward while paused
    bool setSpeed(const QString& speedText); // false for a text that is not a speed
    void seek(const QDateTime& time);

    // The speed a text stands for ("1/4", "2"), 0 when it is none of them.
    static double speedOf(const QString& speedText);

private:
    struct Source;
    void run();
    bool open(Source& source);
    bool waitWhilePaused(bool live);
    void applySeek(Source& source);
    bool readVideo(Source& source, AVPacket* packet);
    void relay(Source& source, AVPacket* packet);
    void pace(qint64 position);
    void event(int code) const;
    static int interrupted(void* opaque);

    const QString id_;
    const qint64 beginMs_; // the span's start, ms since the epoch: stamped on every picture
    const QString source_;
    const qint64 spanMs_;

    std::mutex mutex_;
    std::condition_variable wake_;
    bool paused_ = false;
    bool stepping_ = false;
    double speed_ = 1.0;
    qint64 seekTo_ = -1; // offset into the span in ms, -1 none
    bool reanchor_ = true; // pacing restarts from the next picture
    std::atomic<bool> stopping_ { false };
    std::thread thread_;

    // Owned by the thread.
    qint64 position_ = 0; // ms of the span already played
    qint64 anchorPosition_ = 0;
    std::chrono::steady_clock::time_point anchorWall_;
};

} // namespace vms_sdk
