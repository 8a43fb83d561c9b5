#include "PlayerbackPlayer.h"
#include "WindowKey.h"

#include "MatrixSdkWorker.h"
#include "MatrixSignals.h"

#include "ClientSignals.h"
#include "KSingleton.h"
#include "PlaybackRequests.h"
#include "StreamEvent.h"

#include <QStringList>
#include <QTimer>

#include <cstring>

namespace kvms_matrix {

namespace {

const int kWindowIdPrefix = 9; // length of "windowid:"
const quint32 kNoConnectionCodec = 128;

MatrixSignals* hub()
{
    return KCOMMON::KSingleton<MatrixSignals>::instance();
}

} // namespace

PlayerbackPlayer::PlayerbackPlayer(QWidget* parent)
    : CKawsPlayer(parent)
    , m_progressTimer(new QTimer(this))
{
    m_progressTimer->setInterval(kProgressIntervalMs);
    connect(m_progressTimer, &QTimer::timeout, this, &PlayerbackPlayer::reportProgress);
    connect(
        this, &CKawsPlayer::signalVideoDataState, this, &PlayerbackPlayer::slotVideoDataState, Qt::QueuedConnection);
}

PlayerbackPlayer::~PlayerbackPlayer()
{
    Stop();
    Disconnect(); // no callback may reach this object while it is taken apart
}

void PlayerbackPlayer::setTarget(
    QSharedPointer<CSharedHandle> connection, int windowId, int subWindowId, int windowType, int channel)
{
    m_connection = std::move(connection);
    m_windowKey = kvms_matrix::windowKey(windowId, subWindowId, windowType);
    m_channel = channel;
}

void PlayerbackPlayer::Start(const vms_sdk::PlaybackByTimeCondition& condition)
{
    setMode(kReplayMode);
    Connect(QStringLiteral("kavFrame"));
    // A stream already open here would go on flowing with nobody reading it.
    if (!m_streamId.isEmpty())
        vms_sdk::disconnect_stream_req(m_streamId);
    if (!m_dataConnection) {
        vms_sdk::ClientSignals* client = vms_sdk::ClientSignals::instance();
        m_dataConnection = connect(client, &vms_sdk::ClientSignals::signalStreamData, this,
            &PlayerbackPlayer::slotStreamData, Qt::QueuedConnection);
        m_eventConnection = connect(client, &vms_sdk::ClientSignals::signalStreamEventPush, this,
            &PlayerbackPlayer::slotStreamEventPush, Qt::QueuedConnection);
    }
    if (m_status == kStatusStopped) {
        m_playState = 1; // a new stream starts playing at normal speed
        m_speedText = QStringLiteral("1");
        m_reportedTimestamp = 0;
    }
    m_condition = condition;
    m_streamId = vms_sdk::playback_by_time_req(condition);
    startFrameDataCallback();
    m_progressTimer->start();
    if (m_status == kStatusStreaming)
        return;
    m_status = kStatusStreaming;
    announce();
}

void PlayerbackPlayer::Stop()
{
    if (m_status == kStatusStopped)
        return;
    releaseStream();
    vms_sdk::disconnect_stream_req(m_streamId);
    Disconnect();
    {
        std::lock_guard<std::mutex> lock(m_infoMutex);
        m_infoReceived = false;
    }
    m_progressTimer->stop();
    m_status = kStatusStopped;
    announce();
}

void PlayerbackPlayer::releaseStream()
{
    disconnect(m_dataConnection);
    disconnect(m_eventConnection);
    m_dataConnection = {};
    m_eventConnection = {};
}

void PlayerbackPlayer::pause(bool pause)
{
    if (pause == (m_playState == 0))
        return;
    vms_sdk::playback_ctrl_req(m_streamId, pause ? vms_sdk::PLAYBACK_CTRL_PAUSE : vms_sdk::PLAYBACK_CTRL_RESUME);
    m_playState = pause ? 0 : 1;
    announce();
}

void PlayerbackPlayer::setSpeed(const QString& speedText)
{
    if (m_playState != 1 || speedText == m_speedText)
        return;
    vms_sdk::playback_speed_set_req(m_streamId, speedText);
    m_speedText = speedText;
}

int PlayerbackPlayer::seek(const QDateTime& time)
{
    return vms_sdk::skip_by_appointed_time_req(m_streamId, time);
}

bool PlayerbackPlayer::streamInfoReceived() const
{
    std::lock_guard<std::mutex> lock(m_infoMutex);
    return m_infoReceived;
}

VideoStreamInfo PlayerbackPlayer::streamInfo() const
{
    std::lock_guard<std::mutex> lock(m_infoMutex);
    return m_info;
}

void PlayerbackPlayer::slotStreamData(const QString& streamId, const QByteArray& data)
{
    if (streamId.isEmpty() || streamId != m_streamId)
        return;
    pushKavFrameData(reinterpret_cast<const unsigned char*>(data.constData()), unsigned(data.size()));
}

QString PlayerbackPlayer::eventMessage(int event)
{
    switch (event) {
    case vms_sdk::STREAM_EVENT_UNKNOWN_ERROR:
        return tr("Unknown Error");
    case vms_sdk::STREAM_EVENT_CONNECT_FAILED:
        return tr("video connect Failed");
    case vms_sdk::STREAM_EVENT_CONNECT_BROKEN:
        return tr("video connect broken");
    case vms_sdk::STREAM_EVENT_LOGIN_FAILED:
        return tr("dev login failed");
    case vms_sdk::STREAM_EVENT_REACH_DEVICE_LIMIT:
        return tr("playback reach dev limit");
    case vms_sdk::STREAM_EVENT_RECEIVE_TIMEOUT:
        return tr("data receive timeout");
    case vms_sdk::STREAM_EVENT_WEAK_PASSWORD:
        return tr("weak password,disable opening video");
    case vms_sdk::STREAM_EVENT_DEFAULT_PASSWORD:
        return tr("device using default password,disable opening video");
    case vms_sdk::STREAM_EVENT_DEVICE_OFFLINE:
        return tr("device offline");
    default:
        return QString();
    }
}

void PlayerbackPlayer::slotStreamEventPush(QString streamId, int event)
{
    if (streamId.isEmpty() || streamId != m_streamId)
        return;
    if (event == vms_sdk::STREAM_EVENT_PLAYBACK_END) {
        if (mode() != kReplayMode)
            return;
        m_playing = false;
        // The library's stream is finished: free it now, since the id is forgotten below.
        vms_sdk::disconnect_stream_req(m_streamId);
        m_streamId.clear();
        Disconnect();
        reportProgress();
        m_progressTimer->stop();
        announce();
        return;
    }
    if (event == vms_sdk::STREAM_EVENT_REACH_DEVICE_LIMIT && !m_playing)
        return;
    const QString text = eventMessage(event);
    if (!text.isEmpty())
        showMessage(text, kMessageDisplay);
}

void PlayerbackPlayer::slotVideoDataState(int state)
{
    switch (state) {
    case NoVideoData:
        showMessage(tr("No Video Data"), kDataStateDisplay);
        break;
    case DecodeFailed:
        showMessage(tr("Video Data Decode Failed"), kDataStateDisplay);
        break;
    case VideoArrives:
        m_playing = true;
        if (mode() == 1 || mode() == 2)
            play(m_streamId.toUtf8());
        showMessage(QString(), kDataStateDisplay);
        announce();
        break;
    default:
        break;
    }
}

void PlayerbackPlayer::frameDataCallback(int type, char* data, int length)
{
    if (type == AudioFrame)
        return;
    if (type == StreamInfo) {
        if (!data || length < int(6 * sizeof(quint32)))
            return;
        quint32 v[6];
        std::memcpy(v, data, sizeof v);
        std::lock_guard<std::mutex> lock(m_infoMutex);
        if (m_connection) {
            m_info.codec = int32_t(v[0]);
            m_info.width = uint16_t(v[1]);
            m_info.height = uint16_t(v[2]);
            m_info.frameRateNum = v[3];
            m_info.frameRateDen = v[4];
        } else {
            m_info.codec = int32_t(kNoConnectionCodec);
            m_info.width = uint16_t(v[1]);
            m_info.height = uint16_t(v[2]);
            m_info.frameRateNum = v[4] != 0 ? v[3] / v[4] : 25;
            m_info.frameRateDen = 1;
            m_info.reserved = int32_t(v[5]);
        }
        m_infoReceived = true;
        return;
    }
    VideoStreamInfo info;
    {
        std::lock_guard<std::mutex> lock(m_infoMutex);
        if (!m_infoReceived || !m_connection)
            return;
        info = m_info;
    }
    const QStringList parts = m_windowKey.split(QLatin1Char('~'));
    if (parts.size() < 3)
        return;
    const int windowId = parts.first().mid(kWindowIdPrefix).toInt();
    sendFrame(windowId, &info, data, length, type);
}

int PlayerbackPlayer::sendFrame(int windowId, VideoStreamInfo* info, char* data, int length, int kind)
{
    return KCOMMON::KSingleton<MatrixSdkWorker>::instance()->sendDeviceDisplayFrame(
        m_connection, windowId, m_channel, info, data, length, kind);
}

void PlayerbackPlayer::announce()
{
    emit hub()->signalVideoStateChanged(m_windowKey, m_status, m_playState, m_streamId);
}

void PlayerbackPlayer::reportProgress()
{
    const quint64 stamp = lastTimestamp();
    if (stamp == 0 || stamp == m_reportedTimestamp || !m_condition.begin.isValid())
        return;
    m_reportedTimestamp = stamp;
    const qint64 begin = m_condition.begin.toMSecsSinceEpoch();
    const quint64 duration = quint64(qMax<qint64>(0, m_condition.begin.msecsTo(m_condition.end)));
    const quint64 position = qMin(duration, quint64(qMax<qint64>(0, qint64(stamp) - begin)));
    emit hub()->signalPlaybackProgress(
        m_windowKey, position, duration, QDateTime::fromMSecsSinceEpoch(begin + qint64(position)));
}

} // namespace kvms_matrix
