#pragma once

#include <QByteArray>
#include <QString>
#include <QWidget>

#include <atomic>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>

// The host's video player. Besides showing video it can run in frame-callback mode: its
// source is the pseudo-address "kavFrame", frames are pushed in as Kav envelopes, and on the
// player's own thread each one is handed back to frameDataCallback: type 0 with six 32-bit
// values (codec, width, height, frame-rate numerator and denominator, envelope flags) before
// the first picture and whenever the description changes, then 1 for a key picture, 2 for
// another picture, 3 for audio. Codec 0 is H.264, 1 H.265.
class CKawsPlayer : public QWidget {
    Q_OBJECT

public:
    enum FrameType { StreamInfo = 0, KeyFrame = 1, OtherFrame = 2, AudioFrame = 3 };
    enum DataState { NoVideoData = 0, DecodeFailed = 3, VideoArrives = 4 };
    static constexpr int kMaxQueuedFrames = 100; // a pusher that outruns the player loses frames
    static constexpr int kNoDataMs = 5000; // silence before "no video data" is reported

    explicit CKawsPlayer(QWidget* parent = nullptr);
    ~CKawsPlayer() override; // the derived class must Disconnect first if it overrides the callback

    void setMode(int mode); // 0 live view, 1 replay of a recording, 2 replay of a file
    int mode() const { return mode_; }
    // 0 on success; "kavFrame" is the only address of a pushed source.
    int Connect(const QString& address);
    void Disconnect(); // stops the player's thread; no callback runs afterwards
    bool isConnected() const { return connected_; }
    int startFrameDataCallback(); // 0, or -1 when not connected
    // Queues one envelope; 0, or -1 when not connected, empty or the queue is full.
    int pushKavFrameData(const unsigned char* data, unsigned int length);
    void showVideo(bool show);
    int play(const QByteArray& streamId); // starts showing the named stream; 0, -1 when not connected
    QByteArray playingStream() const { return playing_; }
    // A text over the picture area; `display` selects how (passed through as given).
    void showMessage(const QString& text, int display);
    QString messageText() const { return message_; }
    int messageDisplay() const { return messageDisplay_; }
    quint64 lastTimestamp() const { return lastTimestamp_; } // of the latest picture handed on
    quint64 picturesHandedOn() const { return pictures_; }

signals:
    void signalVideoDataState(int state); // a DataState, from the player's thread
    void signalMessageShown(QString text, int display);

protected:
    virtual void frameDataCallback(int type, char* data, int length);
    void paintEvent(QPaintEvent* event) override;

private:
    void run();
    void handOn(QByteArray& envelope);

    int mode_ = 0;
    std::atomic<bool> connected_ { false };
    std::atomic<bool> callbacks_ { false };
    QByteArray playing_;
    QString message_;
    int messageDisplay_ = 0;
    bool videoShown_ = true;

    std::mutex mutex_;
    std::condition_variable wake_;
    std::deque<QByteArray> queue_;
    bool stopping_ = false;
    bool needKey_ = false; // frames were lost: wait for the next key picture
    std::thread thread_;

    // The player thread's own.
    bool described_ = false;
    uint32_t describedValues_[6] = {};
    bool arriving_ = false;
    bool failing_ = false;
    std::atomic<quint64> lastTimestamp_ { 0 };
    std::atomic<quint64> pictures_ { 0 };
};
