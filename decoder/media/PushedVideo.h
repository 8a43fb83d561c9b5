#pragma once

#include "PictureStore.h"
#include "VideoDecoder.h"

#include <QImage>
#include <QSize>
#include <QString>

#include <chrono>
#include <map>
#include <memory>
#include <mutex>

namespace vdec {

// Video pushed in media frames (replayed recordings): codec 1 is H.264 and codec 2
// H.265. A key frame carries the codec; the frames after it carry none and go to the
// decoder their sub-window already has. One decoder per sub-window, reset when its
// source changes; at most kMaxStreams are kept (the least recently fed go first).
// A picture is scaled and shown at most every kShowEveryMs; all are decoded.
class PushedVideo {
public:
    static constexpr int kH264 = 1, kHevc = 2;
    static constexpr int kMaxStreams = 64;
    static constexpr int kShowEveryMs = 40;
    enum class Result { NotVideo, Decoded, Counted, Failed };

    // `codec` as the frame describes it, -1 when it describes none.
    Result decode(const PictureStore::Key& key, const QString& sourceKey, int codec, const uint8_t* data, size_t size,
        QSize shown, QImage& picture);

private:
    using Clock = std::chrono::steady_clock;
    struct Stream {
        std::mutex mutex; // one frame at a time per sub-window
        VideoDecoder decoder;
        int codec = 0;
        QString sourceKey;
        Clock::time_point lastShown {};
        Clock::time_point lastFed {};
    };
    std::shared_ptr<Stream> streamFor(const PictureStore::Key& key, const QString& sourceKey, int codec);

    std::mutex mutex_;
    std::map<PictureStore::Key, std::shared_ptr<Stream>> streams_;
};

} // namespace vdec
