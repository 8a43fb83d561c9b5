#pragma once

#include "VideoStatus.h"

#include <QImage>
#include <QSize>
#include <QString>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

struct AVFormatContext;

namespace vdec {

class VideoDecoder;

// Plays one live stream on a thread of its own: opens it (RTSP over TCP), decodes
// every picture and hands the ones in time to `deliver`, scaled to the size shown. A
// picture later than kLateMs is decoded but not shown, so a player that fell behind
// catches up instead of queueing. A stream that cannot be opened, or goes silent, is
// tried again after a back-off that doubles from kFirstRetryMs up to kMaxRetryMs. All
// network waits are bounded and end at once on stop().
class StreamPlayer {
public:
    using Deliver = std::function<void(const StreamPlayer&, const QImage&, quint64 bytes)>;
    static constexpr int kLateMs = 200;
    static constexpr int kOpenTimeoutMs = 4000;
    static constexpr int kSilenceMs = 3000;
    static constexpr int kFirstRetryMs = 500;
    static constexpr int kMaxRetryMs = 8000;
    static constexpr int kMaxPacket = 8 * 1024 * 1024;

    StreamPlayer(QString url, bool sub, QSize shown, Deliver deliver);
    ~StreamPlayer(); // stops and joins
    StreamPlayer(const StreamPlayer&) = delete;
    StreamPlayer& operator=(const StreamPlayer&) = delete;

    void start();
    // Asks the thread to end; returns at once.
    void stop();
    bool finished() const { return finished_; }
    void join();

    void setShown(QSize shown);
    QString url() const { return url_; }
    VideoStatus status() const;

private:
    using Clock = std::chrono::steady_clock;
    void run();
    bool open(AVFormatContext*& input, int& streamIndex, VideoDecoder& decoder, QString& why);
    QString play(AVFormatContext* input, int streamIndex, VideoDecoder& decoder);
    void noSignal(const QString& why, int retryMs);
    bool pause(int ms); // false when stopped meanwhile
    static int interrupted(void* self);

    const QString url_;
    const Deliver deliver_;
    std::atomic<bool> stopping_ { false };
    std::atomic<bool> finished_ { false };
    std::atomic<int64_t> deadlineNs_ { 0 }; // network waits end here (steady clock)
    std::thread thread_;

    mutable std::mutex mutex_; // guards status_, shown_; also for the back-off wait
    std::condition_variable wake_;
    VideoStatus status_;
    QSize shown_;
};

} // namespace vdec
