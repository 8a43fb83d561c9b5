#include "StreamPlayer.h"

#include "CameraStamp.h"
#include "StreamUrl.h"
#include "VideoDecoder.h"

extern "C" {
#include <libavformat/avformat.h>
}

#include <algorithm>

namespace vdec {

namespace {

QString errorText(int rc)
{
    char text[AV_ERROR_MAX_STRING_SIZE] = {};
    av_strerror(rc, text, sizeof text);
    return QString::fromUtf8(text);
}

int64_t nowNs()
{
    return std::chrono::duration_cast<std::chrono::nanoseconds>(std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

} // namespace

StreamPlayer::StreamPlayer(QString url, bool sub, QSize shown, Deliver deliver)
    : url_(std::move(url))
    , deliver_(std::move(deliver))
    , shown_(shown)
{
    status_.sub = sub;
}

StreamPlayer::~StreamPlayer()
{
    stop();
    join();
}

void StreamPlayer::start()
{
    if (!thread_.joinable())
        thread_ = std::thread([this] { run(); });
}

void StreamPlayer::stop()
{
    {
        std::lock_guard<std::mutex> lock(mutex_);
        stopping_ = true;
    }
    wake_.notify_all();
}

void StreamPlayer::join()
{
    if (thread_.joinable() && thread_.get_id() != std::this_thread::get_id())
        thread_.join();
}

void StreamPlayer::setShown(QSize shown)
{
    std::lock_guard<std::mutex> lock(mutex_);
    shown_ = shown;
}

VideoStatus StreamPlayer::status() const
{
    std::lock_guard<std::mutex> lock(mutex_);
    return status_;
}

int StreamPlayer::interrupted(void* self)
{
    const auto* p = static_cast<const StreamPlayer*>(self);
    return p->stopping_ || nowNs() > p->deadlineNs_ ? 1 : 0;
}

bool StreamPlayer::pause(int ms)
{
    std::unique_lock<std::mutex> lock(mutex_);
    return !wake_.wait_for(lock, std::chrono::milliseconds(ms), [this] { return bool(stopping_); });
}

void StreamPlayer::noSignal(const QString& why, int retryMs)
{
    std::lock_guard<std::mutex> lock(mutex_);
    status_.state = VideoStatus::State::NoSignal;
    status_.reason = why;
    status_.retryInMs = retryMs;
    status_.latencyMs = -1;
}

void StreamPlayer::run()
{
    {
        std::lock_guard<std::mutex> lock(mutex_);
        status_.url = StreamUrl::withoutCredentials(url_);
    }
    int retryMs = kFirstRetryMs;
    while (!stopping_) {
        {
            std::lock_guard<std::mutex> lock(mutex_);
            ++status_.attempts;
            if (status_.state != VideoStatus::State::NoSignal)
                status_.state = VideoStatus::State::Connecting;
        }
        AVFormatContext* input = nullptr;
        int streamIndex = -1;
        VideoDecoder decoder;
        QString why;
        if (open(input, streamIndex, decoder, why)) {
            why = play(input, streamIndex, decoder);
            retryMs = kFirstRetryMs; // it played: the next attempt comes soon
        }
        avformat_close_input(&input);
        if (stopping_)
            break;
        noSignal(why, retryMs);
        if (!pause(retryMs))
            break;
        retryMs = std::min(retryMs * 2, kMaxRetryMs);
    }
    finished_ = true;
}

bool StreamPlayer::open(AVFormatContext*& input, int& streamIndex, VideoDecoder& decoder, QString& why)
{
    input = avformat_alloc_context();
    if (!input) {
        why = QStringLiteral("out of memory");
        return false;
    }
    input->interrupt_callback = { &StreamPlayer::interrupted, this };
    deadlineNs_ = nowNs() + int64_t(kOpenTimeoutMs) * 1000000;
    AVDictionary* options = nullptr;
    av_dict_set(&options, "rtsp_transport", "tcp", 0);
    av_dict_set(&options, "timeout", QByteArray::number(qint64(kSilenceMs) * 1000).constData(), 0);
    av_dict_set(&options, "allowed_media_types", "video", 0);
    const QByteArray url = url_.toUtf8();
    const int rc = avformat_open_input(&input, url.constData(), nullptr, &options);
    av_dict_free(&options);
    if (rc < 0) {
        why = stopping_ ? QString() : QStringLiteral("cannot open the stream: %1").arg(errorText(rc));
        return false; // input is freed by a failed open
    }
    streamIndex = -1;
    for (unsigned i = 0; i < input->nb_streams && streamIndex < 0; ++i) {
        const AVCodecParameters* p = input->streams[i]->codecpar;
        if (p->codec_type == AVMEDIA_TYPE_VIDEO && (p->codec_id == AV_CODEC_ID_H264 || p->codec_id == AV_CODEC_ID_HEVC))
            streamIndex = int(i);
    }
    if (streamIndex < 0) {
        why = QStringLiteral("the stream has no H.264 or H.265 video");
        return false;
    }
    const AVCodecParameters* p = input->streams[streamIndex]->codecpar;
    {
        std::lock_guard<std::mutex> lock(mutex_);
        decoder.setShownSize(shown_);
    }
    if (!decoder.open(p->codec_id == AV_CODEC_ID_H264 ? VideoDecoder::Codec::H264 : VideoDecoder::Codec::Hevc, p)) {
        why = QStringLiteral("no decoder for the stream");
        return false;
    }
    return true;
}

QString StreamPlayer::play(AVFormatContext* input, int streamIndex, VideoDecoder& decoder)
{
    AVPacket* packet = av_packet_alloc();
    if (!packet)
        return QStringLiteral("out of memory");
    const AVRational timeBase = input->streams[streamIndex]->time_base;
    // The stream's own pace: a picture is late by how much later than its timestamp
    // says it arrived, against the earliest any picture has arrived so far.
    bool paced = false;
    int64_t originNs = 0;
    quint64 bytes = 0;
    QString why;
    while (!stopping_) {
        deadlineNs_ = nowNs() + int64_t(kSilenceMs) * 1000000;
        const int rc = av_read_frame(input, packet);
        if (rc < 0) {
            why = rc == AVERROR_EOF  ? QStringLiteral("the stream ended")
                : rc == AVERROR_EXIT ? QStringLiteral("no pictures for %1 s").arg(kSilenceMs / 1000)
                                     : QStringLiteral("the stream broke: %1").arg(errorText(rc));
            break;
        }
        if (packet->stream_index != streamIndex || packet->size <= 0 || packet->size > kMaxPacket) {
            av_packet_unref(packet);
            continue;
        }
        const int64_t arrivedNs = nowNs();
        bytes += quint64(packet->size);
        int lateMs = 0;
        if (packet->pts != AV_NOPTS_VALUE && timeBase.den > 0) {
            const int64_t ptsNs = av_rescale_q(packet->pts, timeBase, AVRational { 1, 1000000000 });
            if (!paced || arrivedNs - ptsNs < originNs) {
                originNs = arrivedNs - ptsNs;
                paced = true;
            }
            lateMs = int(std::min<int64_t>((arrivedNs - ptsNs - originNs) / 1000000, INT32_MAX));
        }
        const std::optional<CameraStamp::Value> stamp = CameraStamp::find(packet->data, size_t(packet->size));
        bool failed = false;
        const bool got = decoder.decode(packet->data, size_t(packet->size), packet->pts, &failed);
        av_packet_unref(packet);
        QSize shown;
        {
            std::lock_guard<std::mutex> lock(mutex_);
            ++status_.packets;
            status_.failed += failed ? 1 : 0;
            status_.maxLateMs = std::max(status_.maxLateMs, lateMs);
            status_.lastLateMs = lateMs;
            if (got) {
                ++status_.decoded;
                status_.source = decoder.pictureSize();
            }
            shown = shown_;
        }
        if (!got)
            continue;
        if (lateMs > kLateMs) {
            std::lock_guard<std::mutex> lock(mutex_);
            ++status_.dropped;
            continue;
        }
        QImage picture;
        if (!decoder.toImage(shown, picture))
            continue;
        deliver_(*this, picture, bytes);
        bytes = 0;
        std::lock_guard<std::mutex> lock(mutex_);
        ++status_.shown;
        status_.state = VideoStatus::State::Playing;
        status_.reason.clear();
        status_.retryInMs = 0;
        if (stamp) {
            const int64_t nowUs = std::chrono::duration_cast<std::chrono::microseconds>(
                std::chrono::system_clock::now().time_since_epoch())
                                      .count();
            status_.cameraFrame = stamp->frame;
            status_.cameraTimeMs = stamp->sentUs / 1000;
            status_.latencyMs = int(std::clamp<int64_t>((nowUs - stamp->sentUs) / 1000, 0, INT32_MAX));
        }
    }
    av_packet_free(&packet);
    return why;
}

} // namespace vdec
