#include "CKawsPlayer.h"

#include "KavFrame.h"

#include <QPainter>

#include <cstring>

#include <chrono>

#include <pthread.h>

namespace {

const char* const kPushedSource = "kavFrame";

bool isVideo(uint32_t type)
{
    return type == KAV_TYPE_KEY || type == KAV_TYPE_VIDEO || type == KAV_TYPE_PLAIN;
}

} // namespace

CKawsPlayer::CKawsPlayer(QWidget* parent)
    : QWidget(parent)
{
}

CKawsPlayer::~CKawsPlayer()
{
    Disconnect();
}

void CKawsPlayer::setMode(int mode)
{
    mode_ = mode;
}

int CKawsPlayer::Connect(const QString& address)
{
    if (address != QLatin1String(kPushedSource))
        return -1;
    if (connected_)
        return 0;
    {
        std::lock_guard<std::mutex> lock(mutex_);
        stopping_ = false;
        needKey_ = false;
        queue_.clear();
    }
    described_ = false;
    arriving_ = false;
    failing_ = false;
    connected_ = true;
    thread_ = std::thread([this] { run(); });
    return 0;
}

void CKawsPlayer::Disconnect()
{
    {
        std::lock_guard<std::mutex> lock(mutex_);
        stopping_ = true;
        queue_.clear();
    }
    wake_.notify_all();
    if (thread_.joinable())
        thread_.join();
    connected_ = false;
    callbacks_ = false;
    playing_.clear();
}

int CKawsPlayer::startFrameDataCallback()
{
    if (!connected_)
        return -1;
    callbacks_ = true;
    return 0;
}

int CKawsPlayer::pushKavFrameData(const unsigned char* data, unsigned int length)
{
    if (!connected_ || !data || length == 0 || length > unsigned(INT32_MAX))
        return -1;
    {
        std::lock_guard<std::mutex> lock(mutex_);
        if (int(queue_.size()) >= kMaxQueuedFrames) {
            needKey_ = true; // the pictures after a lost one cannot be decoded
            return -1;
        }
        queue_.emplace_back(reinterpret_cast<const char*>(data), int(length));
    }
    wake_.notify_one();
    return 0;
}

void CKawsPlayer::showVideo(bool show)
{
    videoShown_ = show;
    update();
}

int CKawsPlayer::play(const QByteArray& streamId)
{
    if (!connected_)
        return -1;
    playing_ = streamId;
    return 0;
}

void CKawsPlayer::showMessage(const QString& text, int display)
{
    message_ = text;
    messageDisplay_ = display;
    update();
    emit signalMessageShown(text, display);
}

void CKawsPlayer::frameDataCallback(int, char*, int) { }

void CKawsPlayer::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), Qt::black);
    if (!message_.isEmpty()) {
        painter.setPen(Qt::white);
        painter.drawText(rect(), Qt::AlignCenter | Qt::TextWordWrap, message_);
    }
}

void CKawsPlayer::run()
{
    pthread_setname_np(pthread_self(), "kaws-player");
    const auto silence = std::chrono::milliseconds(kNoDataMs);
    bool silent = false;
    for (;;) {
        QByteArray envelope;
        {
            std::unique_lock<std::mutex> lock(mutex_);
            const bool woken = wake_.wait_for(lock, silence, [this] { return stopping_ || !queue_.empty(); });
            if (stopping_)
                return;
            if (!woken) {
                lock.unlock();
                if (!silent)
                    emit signalVideoDataState(NoVideoData);
                silent = true;
                arriving_ = false; // the next picture is announced again
                continue;
            }
            envelope = std::move(queue_.front());
            queue_.pop_front();
        }
        silent = false;
        handOn(envelope);
    }
}

void CKawsPlayer::handOn(QByteArray& envelope)
{
    KavFrame frame {};
    KavStreamInfo info {};
    const int size
        = KavUnpackFrame(reinterpret_cast<const unsigned char*>(envelope.constData()), envelope.size(), &frame, &info);
    // The unpacker only demands the payload, not the blocks before it, inside the input.
    const bool inside = size > 0
        && frame.data + frame.size <= reinterpret_cast<const unsigned char*>(envelope.constData()) + envelope.size();
    if (!inside) {
        if (!failing_)
            emit signalVideoDataState(DecodeFailed);
        failing_ = true;
        return;
    }
    failing_ = false;
    char* payload = const_cast<char*>(reinterpret_cast<const char*>(frame.data));
    if (frame.type == KAV_TYPE_AUDIO) {
        if (callbacks_)
            frameDataCallback(AudioFrame, payload, int(frame.size));
        return;
    }
    if (!isVideo(frame.type))
        return;
    const bool key = frame.type == KAV_TYPE_KEY;
    {
        std::lock_guard<std::mutex> lock(mutex_);
        if (needKey_ && !key)
            return;
        if (key)
            needKey_ = false;
    }
    if (key && (info.flags & KAV_STREAM_VIDEO)) {
        const uint32_t codec = info.videoCodec == 1 ? 0 : info.videoCodec == 2 ? 1 : info.videoCodec;
        const uint32_t values[6] = { codec, info.width, info.height, info.frameRateNum, info.frameRateDen, info.flags };
        if (!described_ || std::memcmp(values, describedValues_, sizeof values) != 0) {
            std::memcpy(describedValues_, values, sizeof values);
            described_ = true;
            if (callbacks_)
                frameDataCallback(StreamInfo, reinterpret_cast<char*>(describedValues_), int(sizeof describedValues_));
        }
    }
    if (!described_)
        return; // pictures before the first description cannot be placed
    lastTimestamp_ = frame.timestamp;
    ++pictures_;
    if (!arriving_)
        emit signalVideoDataState(VideoArrives);
    arriving_ = true;
    if (callbacks_)
        frameDataCallback(key ? KeyFrame : OtherFrame, payload, int(frame.size));
}
