#pragma once

#include <QImage>
#include <QSize>

#include <cstddef>
#include <cstdint>

struct AVCodecContext;
struct AVCodecParameters;
struct AVFrame;
struct AVPacket;
struct SwsContext;

namespace vdec {

// One H.264 (or H.265) decoder, used by one thread at a time. Every picture must be
// decoded for the next to be right, but only the ones shown are scaled, and straight
// to the size they are shown at. Sizes are bounded before anything is allocated.
class VideoDecoder {
public:
    enum class Codec { H264, Hevc };
    static constexpr int kMaxWidth = 4096, kMaxHeight = 2304;

    VideoDecoder() = default;
    ~VideoDecoder();
    VideoDecoder(const VideoDecoder&) = delete;
    VideoDecoder& operator=(const VideoDecoder&) = delete;

    // parameters may be null (a raw stream: the pictures carry their own).
    bool open(Codec codec, const AVCodecParameters* parameters = nullptr);
    bool isOpen() const { return context_ != nullptr; }
    // When the pictures are shown at half their size or less, the deblocking filter
    // is skipped: its effect does not survive the scaling, its cost does.
    void setShownSize(QSize shown);
    // Feeds one access unit; true when it gave a new picture (then see picture()).
    // False for a unit that did not decode (counted by the caller) or gave nothing yet.
    bool decode(const uint8_t* data, size_t size, int64_t pts, bool* failed = nullptr);
    QSize pictureSize() const;
    // The latest picture scaled to at most `shown` (never enlarged), as 32-bit RGB.
    bool toImage(QSize shown, QImage& out);

private:
    void close();

    AVCodecContext* context_ = nullptr;
    AVFrame* frame_ = nullptr; // being received
    AVFrame* picture_ = nullptr; // the latest picture
    AVPacket* packet_ = nullptr;
    SwsContext* scaler_ = nullptr;
    bool havePicture_ = false;
    QSize shown_;
};

} // namespace vdec
