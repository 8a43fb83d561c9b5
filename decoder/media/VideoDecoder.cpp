#include "VideoDecoder.h"

#include "PictureDecoder.h"

extern "C" {
#include <libavcodec/avcodec.h>
#include <libswscale/swscale.h>
}

#include <climits>

namespace vdec {

VideoDecoder::~VideoDecoder()
{
    close();
}

void VideoDecoder::close()
{
    sws_freeContext(scaler_);
    scaler_ = nullptr;
    av_packet_free(&packet_);
    av_frame_free(&frame_);
    av_frame_free(&picture_);
    avcodec_free_context(&context_);
    havePicture_ = false;
}

bool VideoDecoder::open(Codec codec, const AVCodecParameters* parameters)
{
    close();
    const AVCodec* decoder = avcodec_find_decoder(codec == Codec::H264 ? AV_CODEC_ID_H264 : AV_CODEC_ID_HEVC);
    if (!decoder)
        return false;
    context_ = avcodec_alloc_context3(decoder);
    frame_ = av_frame_alloc();
    picture_ = av_frame_alloc();
    packet_ = av_packet_alloc();
    if (!context_ || !frame_ || !picture_ || !packet_
        || (parameters && avcodec_parameters_to_context(context_, parameters) < 0)) {
        close();
        return false;
    }
    // One thread per stream already: frame threads would only add pictures of delay.
    context_->thread_count = 1;
    context_->max_pixels = int64_t(kMaxWidth) * kMaxHeight;
    context_->flags |= AV_CODEC_FLAG_LOW_DELAY;
    if (avcodec_open2(context_, decoder, nullptr) < 0) {
        close();
        return false;
    }
    setShownSize(shown_);
    return true;
}

void VideoDecoder::setShownSize(QSize shown)
{
    shown_ = shown;
    if (!context_)
        return;
    const bool small = shown.isValid() && context_->width > 0 && shown.width() * 2 <= context_->width
        && shown.height() * 2 <= context_->height;
    context_->skip_loop_filter = small ? AVDISCARD_ALL : AVDISCARD_DEFAULT;
}

bool VideoDecoder::decode(const uint8_t* data, size_t size, int64_t pts, bool* failed)
{
    if (failed)
        *failed = false;
    if (!context_ || !data || size == 0 || size > size_t(INT_MAX) - AV_INPUT_BUFFER_PADDING_SIZE)
        return false;
    const int previousWidth = context_->width;
    // The decoder may read a little past the end: the packet gets padding of its own.
    if (av_new_packet(packet_, int(size)) < 0)
        return false;
    memcpy(packet_->data, data, size);
    packet_->pts = pts;
    const int sent = avcodec_send_packet(context_, packet_);
    av_packet_unref(packet_);
    if (sent < 0 && sent != AVERROR(EAGAIN)) {
        if (failed)
            *failed = true;
        return false;
    }
    bool got = false;
    while (true) {
        const int rc = avcodec_receive_frame(context_, frame_);
        if (rc < 0) {
            if (rc != AVERROR(EAGAIN) && rc != AVERROR_EOF && failed)
                *failed = true;
            break;
        }
        if (frame_->width <= 0 || frame_->height <= 0 || frame_->width > kMaxWidth || frame_->height > kMaxHeight) {
            if (failed)
                *failed = true;
            av_frame_unref(frame_);
            continue;
        }
        // Receiving clears the frame it is given: the picture is kept apart.
        av_frame_unref(picture_);
        av_frame_move_ref(picture_, frame_);
        got = true;
        havePicture_ = true;
    }
    if (context_->width != previousWidth)
        setShownSize(shown_);
    return got;
}

QSize VideoDecoder::pictureSize() const
{
    return havePicture_ ? QSize(picture_->width, picture_->height) : QSize();
}

bool VideoDecoder::toImage(QSize shown, QImage& out)
{
    if (!havePicture_)
        return false;
    const QSize source(picture_->width, picture_->height);
    const QSize kept = PictureDecoder::keptSize(source, shown.isValid() ? shown : source);
    scaler_ = sws_getCachedContext(scaler_, source.width(), source.height(), AVPixelFormat(picture_->format),
        kept.width(), kept.height(), AV_PIX_FMT_BGRA, SWS_FAST_BILINEAR, nullptr, nullptr, nullptr);
    if (!scaler_)
        return false;
    QImage image(kept, QImage::Format_RGB32);
    if (image.isNull())
        return false;
    uint8_t* planes[4] = { image.bits(), nullptr, nullptr, nullptr };
    int strides[4] = { int(image.bytesPerLine()), 0, 0, 0 };
    if (sws_scale(scaler_, picture_->data, picture_->linesize, 0, source.height(), planes, strides) <= 0)
        return false;
    out = image;
    return true;
}

} // namespace vdec
