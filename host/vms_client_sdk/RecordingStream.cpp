#include "RecordingStream.h"

#include "ClientSignals.h"
#include "KavFrame.h"
#include "PlaybackRequests.h"
#include "StreamEvent.h"

extern "C" {
#include <libavcodec/bsf.h>
#include <libavformat/avformat.h>
}

#include <QStringList>

#include <cmath>
#include <cstring>

#include <pthread.h>

namespace vms_sdk {

namespace {

using Clock = std::chrono::steady_clock;

constexpr int kKavH264 = 1, kKavHevc = 2;
constexpr qint64 kMaxFrameGapMs = 1000; // a larger jump in time stamps is not trusted
constexpr int kMaxPacketBytes = 16 * 1024 * 1024;

bool annexB(const uint8_t* data, int size)
{
    return size >= 4 && data[0] == 0 && data[1] == 0 && (data[2] == 1 || (data[2] == 0 && data[3] == 1));
}

// The NAL unit types of an Annex B access unit up to its first picture slice, and whether
// that slice starts a key picture. Parameter sets and SEI come before the slices, and a start
// code never occurs inside a NAL unit, so the scan stops early.
struct AccessUnitKind {
    bool parameterSets = false;
    bool key = false;
};

AccessUnitKind scanAccessUnit(const uint8_t* data, int size, bool hevc)
{
    AccessUnitKind kind;
    for (int i = 0; i + 3 < size; ++i) {
        if (data[i] != 0 || data[i + 1] != 0 || data[i + 2] != 1)
            continue;
        const uint8_t header = data[i + 3];
        const int type = hevc ? (header >> 1) & 0x3f : header & 0x1f;
        if (hevc ? type == 33 : type == 7)
            kind.parameterSets = true;
        const bool slice = hevc ? type < 32 : (type >= 1 && type <= 5);
        if (slice) {
            kind.key = hevc ? (type >= 16 && type <= 21) : type == 5;
            break;
        }
        i += 3;
    }
    return kind;
}

} // namespace

struct RecordingStream::Source {
    AVFormatContext* fmt = nullptr;
    AVBSFContext* bsf = nullptr;
    AVPacket* filtered = nullptr;
    int stream = -1;
    int kavCodec = 0;
    KavStreamInfo info {}; // the description every key picture's envelope carries
    qint64 frameMs = 40;
    qint64 durationMs = 0;
    bool live = false;
    bool needKey = true;
    bool started = false; // a picture went out since the last (re)start: the next one adds time
    qint64 lastPtsMs = -1;
    QByteArray parameterSets; // Annex B extradata, put before key pictures that lack it

    // Where the video stream's time begins, in its time base.
    int64_t startTime() const
    {
        const AVStream* st = fmt->streams[stream];
        return st->start_time != AV_NOPTS_VALUE ? st->start_time : 0;
    }

    // Reading moved: pictures up to the next key one cannot be decoded, and the next one
    // is taken as a frame on.
    void restart()
    {
        if (bsf)
            av_bsf_flush(bsf);
        needKey = true;
        lastPtsMs = -1;
    }

    ~Source()
    {
        av_packet_free(&filtered);
        av_bsf_free(&bsf);
        avformat_close_input(&fmt);
    }
};

RecordingStream::RecordingStream(QString streamId, const PlaybackByTimeCondition& condition, QString source)
    : id_(std::move(streamId))
    , beginMs_(condition.begin.toMSecsSinceEpoch())
    , source_(std::move(source))
    , spanMs_(condition.begin.msecsTo(condition.end))
{
}

RecordingStream::~RecordingStream()
{
    stop();
}

double RecordingStream::speedOf(const QString& speedText)
{
    // The accepted texts run from 1/16 to 16, doubling at each step.
    const int at = playback_speed_texts().indexOf(speedText);
    return at < 0 ? 0 : std::ldexp(1.0, at - 4);
}

void RecordingStream::start()
{
    thread_ = std::thread([this] { run(); });
}

void RecordingStream::stop()
{
    stopping_ = true;
    wake_.notify_all();
    if (thread_.joinable() && thread_.get_id() != std::this_thread::get_id())
        thread_.join();
}

void RecordingStream::setPaused(bool paused)
{
    std::lock_guard<std::mutex> lock(mutex_);
    paused_ = paused;
    reanchor_ = true;
    wake_.notify_all();
}

void RecordingStream::step()
{
    std::lock_guard<std::mutex> lock(mutex_);
    stepping_ = paused_;
    wake_.notify_all();
}

bool RecordingStream::setSpeed(const QString& speedText)
{
    const double speed = speedOf(speedText);
    if (speed <= 0)
        return false;
    std::lock_guard<std::mutex> lock(mutex_);
    speed_ = speed;
    reanchor_ = true;
    wake_.notify_all();
    return true;
}

void RecordingStream::seek(const QDateTime& time)
{
    std::lock_guard<std::mutex> lock(mutex_);
    seekTo_ = qBound<qint64>(0, time.toMSecsSinceEpoch() - beginMs_, spanMs_);
    stepping_ = paused_; // a paused picture shows where it now stands
    reanchor_ = true;
    wake_.notify_all();
}

int RecordingStream::interrupted(void* opaque)
{
    return static_cast<RecordingStream*>(opaque)->stopping_ ? 1 : 0;
}

void RecordingStream::event(int code) const
{
    emit ClientSignals::instance()->signalStreamEventPush(id_, code);
}

bool RecordingStream::open(Source& s)
{
    s.fmt = avformat_alloc_context();
    if (!s.fmt)
        return false;
    s.fmt->interrupt_callback.callback = &RecordingStream::interrupted;
    s.fmt->interrupt_callback.opaque = this;
    AVDictionary* options = nullptr;
    if (source_.startsWith(QLatin1String("rtsp://"))) {
        av_dict_set(&options, "rtsp_transport", "tcp", 0);
        av_dict_set(&options, "timeout", "5000000", 0);
    }
    const int opened = avformat_open_input(&s.fmt, source_.toUtf8().constData(), nullptr, &options);
    av_dict_free(&options);
    if (opened < 0 || avformat_find_stream_info(s.fmt, nullptr) < 0)
        return false;
    s.stream = av_find_best_stream(s.fmt, AVMEDIA_TYPE_VIDEO, -1, -1, nullptr, 0);
    if (s.stream < 0)
        return false;
    const AVStream* st = s.fmt->streams[s.stream];
    const AVCodecParameters* par = st->codecpar;
    if (par->codec_id != AV_CODEC_ID_H264 && par->codec_id != AV_CODEC_ID_HEVC)
        return false;
    if (par->width <= 0 || par->width > 0xffff || par->height <= 0 || par->height > 0xffff)
        return false;
    s.kavCodec = par->codec_id == AV_CODEC_ID_H264 ? kKavH264 : kKavHevc;
    AVRational rate = st->avg_frame_rate.num > 0 && st->avg_frame_rate.den > 0 ? st->avg_frame_rate : st->r_frame_rate;
    const double fps = rate.den > 0 ? av_q2d(rate) : 0;
    if (fps < 1 || fps > 120)
        rate = AVRational { 25, 1 };
    s.info.flags = KAV_STREAM_VIDEO | KAV_STREAM_AUDIO;
    s.info.videoCodec = uint32_t(s.kavCodec);
    s.info.frameRateNum = uint32_t(rate.num);
    s.info.frameRateDen = uint32_t(rate.den);
    s.info.width = uint16_t(par->width);
    s.info.height = uint16_t(par->height);
    s.frameMs = qBound<qint64>(1, qint64(1000.0 / av_q2d(rate)), kMaxFrameGapMs);
    s.durationMs = s.fmt->duration > 0 ? s.fmt->duration / (AV_TIME_BASE / 1000) : 0;
    s.live = !s.fmt->pb || !(s.fmt->pb->seekable & AVIO_SEEKABLE_NORMAL);

    if (par->extradata_size > 0 && !annexB(par->extradata, par->extradata_size)) {
        // Length-prefixed pictures (MP4, Matroska) become Annex B, parameter sets included.
        const AVBitStreamFilter* filter
            = av_bsf_get_by_name(s.kavCodec == kKavH264 ? "h264_mp4toannexb" : "hevc_mp4toannexb");
        if (!filter || av_bsf_alloc(filter, &s.bsf) < 0 || avcodec_parameters_copy(s.bsf->par_in, par) < 0)
            return false;
        s.bsf->time_base_in = st->time_base;
        if (av_bsf_init(s.bsf) < 0 || !(s.filtered = av_packet_alloc()))
            return false;
    } else if (par->extradata_size > 0) {
        s.parameterSets = QByteArray(reinterpret_cast<const char*>(par->extradata), par->extradata_size);
    }
    return true;
}

void RecordingStream::run()
{
    pthread_setname_np(pthread_self(), "vms-recording"); // told apart in profiles and /proc
    Source s;
    if (!open(s)) {
        if (!stopping_)
            event(STREAM_EVENT_CONNECT_FAILED);
        return;
    }
    event(STREAM_EVENT_CONNECTED);
    AVPacket* packet = av_packet_alloc();
    while (packet && !stopping_ && waitWhilePaused(s.live)) {
        applySeek(s);
        if (!readVideo(s, packet))
            break;
        bool drop = false;
        {
            std::lock_guard<std::mutex> lock(mutex_);
            drop = s.live && paused_ && !stepping_; // a live source keeps coming while paused
        }
        if (!drop)
            relay(s, packet);
        av_packet_unref(packet);
        if (position_ >= spanMs_) {
            event(STREAM_EVENT_PLAYBACK_END);
            break;
        }
    }
    av_packet_free(&packet);
}

bool RecordingStream::waitWhilePaused(bool live)
{
    std::unique_lock<std::mutex> lock(mutex_);
    if (!live)
        wake_.wait(lock, [this] { return stopping_ || !paused_ || stepping_ || seekTo_ >= 0; });
    return !stopping_;
}

void RecordingStream::applySeek(Source& s)
{
    qint64 offset = -1;
    {
        std::lock_guard<std::mutex> lock(mutex_);
        std::swap(offset, seekTo_);
        if (offset >= 0)
            reanchor_ = true; // the clock restarts at the new place, not at the last picture sent
    }
    if (offset < 0)
        return;
    position_ = offset;
    s.started = false;
    if (s.live)
        return;
    const qint64 inClip = s.durationMs > 0 ? offset % s.durationMs : offset;
    const int64_t start = s.startTime();
    const int64_t target = start + av_rescale_q(inClip, AVRational { 1, 1000 }, s.fmt->streams[s.stream]->time_base);
    if (av_seek_frame(s.fmt, s.stream, target, AVSEEK_FLAG_BACKWARD) < 0)
        av_seek_frame(s.fmt, s.stream, start, AVSEEK_FLAG_BACKWARD);
    s.restart();
}

// The next picture of the video stream; a file that ends before the span does starts over.
bool RecordingStream::readVideo(Source& s, AVPacket* packet)
{
    for (int rewinds = 0; !stopping_;) {
        const int read = av_read_frame(s.fmt, packet);
        if (read >= 0) {
            if (packet->stream_index == s.stream && packet->size > 0 && packet->size <= kMaxPacketBytes)
                return true;
            av_packet_unref(packet);
            continue;
        }
        if (stopping_)
            return false;
        if (s.live || ++rewinds > 1 || av_seek_frame(s.fmt, s.stream, s.startTime(), AVSEEK_FLAG_BACKWARD) < 0) {
            event(STREAM_EVENT_CONNECT_BROKEN);
            return false;
        }
        s.restart();
    }
    return false;
}

void RecordingStream::relay(Source& s, AVPacket* packet)
{
    const AVStream* st = s.fmt->streams[s.stream];
    const int64_t pts = packet->pts != AV_NOPTS_VALUE ? packet->pts : packet->dts;
    const qint64 ptsMs = pts != AV_NOPTS_VALUE ? av_rescale_q(pts, st->time_base, AVRational { 1, 1000 }) : -1;
    AVPacket* unit = packet;
    if (s.bsf) {
        if (av_bsf_send_packet(s.bsf, packet) < 0 || av_bsf_receive_packet(s.bsf, s.filtered) < 0)
            return;
        unit = s.filtered;
    }
    const AccessUnitKind kind = scanAccessUnit(unit->data, unit->size, s.kavCodec == kKavHevc);
    const bool key = kind.key || (packet->flags & AV_PKT_FLAG_KEY);
    if (s.needKey && !key) {
        if (unit == s.filtered)
            av_packet_unref(s.filtered);
        return;
    }
    s.needKey = false;

    qint64 delta = s.started ? s.frameMs : 0;
    if (s.started && ptsMs >= 0 && s.lastPtsMs >= 0 && ptsMs > s.lastPtsMs && ptsMs - s.lastPtsMs <= kMaxFrameGapMs)
        delta = ptsMs - s.lastPtsMs;
    s.lastPtsMs = ptsMs;
    s.started = true;
    position_ += delta;
    if (position_ < spanMs_) {
        // Header, parameter sets and picture go straight into the envelope: one copy per picture.
        const int prefix = key && !kind.parameterSets ? s.parameterSets.size() : 0;
        KavFrame frame {};
        frame.type = key ? KAV_TYPE_KEY : KAV_TYPE_VIDEO;
        frame.data = unit->data;
        frame.size = uint32_t(prefix + unit->size);
        frame.timestamp = uint64_t(beginMs_ + position_);
        const int total = KavCalcFrameSize(frame.type, frame.size);
        QByteArray envelope(total > 0 ? total : 0, Qt::Uninitialized);
        auto* out = reinterpret_cast<unsigned char*>(envelope.data());
        const int header = total > 0 ? KavPackFrameHeader(&frame, &s.info, out, total) : -1;
        if (header > 0 && header + int(frame.size) == total) {
            std::memcpy(out + header, s.parameterSets.constData(), size_t(prefix));
            std::memcpy(out + header + prefix, unit->data, size_t(unit->size));
            if (!s.live)
                pace(position_);
            if (!stopping_)
                emit ClientSignals::instance()->signalStreamData(id_, envelope);
        }
    }
    if (unit == s.filtered)
        av_packet_unref(s.filtered);
    std::lock_guard<std::mutex> lock(mutex_);
    stepping_ = false;
}

// Holds the picture at `position` until its time at the current speed. A change of speed,
// a pause or a seek starts the clock again from the picture that follows it.
void RecordingStream::pace(qint64 position)
{
    std::unique_lock<std::mutex> lock(mutex_);
    if (!reanchor_ && !stepping_) {
        const auto due
            = anchorWall_ + std::chrono::microseconds(qint64(double(position - anchorPosition_) * 1000.0 / speed_));
        wake_.wait_until(lock, due, [this] { return stopping_ || reanchor_; });
        if (!reanchor_)
            return;
    }
    reanchor_ = false;
    anchorWall_ = Clock::now();
    anchorPosition_ = position;
}

} // namespace vms_sdk
