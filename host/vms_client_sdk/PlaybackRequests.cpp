#include "PlaybackRequests.h"

#include "PlaybackRecorder.h"
#include "RecordingSource.h"
#include "RecordingStream.h"

#include <QHash>

#include <memory>
#include <mutex>

namespace vms_sdk {

namespace {

int recorded(const char* function, const QString& streamId, const QVariant& argument, int result)
{
    PlaybackRecorder::instance()->record({ QString::fromLatin1(function), streamId, argument, result });
    return result;
}

// The streams whose threads run, by id. Closed ones are joined outside the lock.
struct OpenStreams {
    std::mutex mutex;
    QHash<QString, std::shared_ptr<RecordingStream>> streams;
};

OpenStreams& openStreams()
{
    static OpenStreams* const open = new OpenStreams; // threads may report while the process exits
    return *open;
}

std::shared_ptr<RecordingStream> streamOf(const QString& streamId)
{
    std::lock_guard<std::mutex> lock(openStreams().mutex);
    return openStreams().streams.value(streamId);
}

} // namespace

QStringList playback_speed_texts()
{
    return { QStringLiteral("1/16"), QStringLiteral("1/8"), QStringLiteral("1/4"), QStringLiteral("1/2"),
        QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("4"), QStringLiteral("8"), QStringLiteral("16") };
}

QString playback_by_time_req(const PlaybackByTimeCondition& condition)
{
    const bool usable = !condition.deviceId.isEmpty() && condition.channel >= 0 && condition.begin.isValid()
        && condition.end.isValid() && condition.begin < condition.end;
    const QString streamId = usable ? PlaybackRecorder::instance()->openStream(condition) : QString();
    recorded("playback_by_time_req", streamId, QVariant(), usable ? 0 : -1);
    if (usable) {
        // An unknown channel still gets its stream: the thread reports that it cannot connect.
        auto stream = std::make_shared<RecordingStream>(streamId, condition, recording_source(condition));
        {
            std::lock_guard<std::mutex> lock(openStreams().mutex);
            openStreams().streams.insert(streamId, stream);
        }
        stream->start();
    }
    return streamId;
}

int disconnect_stream_req(const QString& streamId)
{
    const bool closed = PlaybackRecorder::instance()->closeStream(streamId);
    std::shared_ptr<RecordingStream> stream;
    {
        std::lock_guard<std::mutex> lock(openStreams().mutex);
        stream = openStreams().streams.take(streamId);
    }
    stream.reset(); // stops and joins its thread
    return recorded("disconnect_stream_req", streamId, QVariant(), closed ? 0 : -1);
}

int playback_ctrl_req(const QString& streamId, int ctrl)
{
    const bool valid = ctrl >= PLAYBACK_CTRL_RESUME && ctrl <= PLAYBACK_CTRL_STEP;
    const bool ok = valid && PlaybackRecorder::instance()->isOpen(streamId);
    if (const auto stream = ok ? streamOf(streamId) : nullptr) {
        if (ctrl == PLAYBACK_CTRL_STEP)
            stream->step();
        else
            stream->setPaused(ctrl == PLAYBACK_CTRL_PAUSE);
    }
    return recorded("playback_ctrl_req", streamId, ctrl, ok ? 0 : -1);
}

int playback_speed_set_req(const QString& streamId, const QString& speedText)
{
    const bool ok = playback_speed_texts().contains(speedText) && PlaybackRecorder::instance()->isOpen(streamId);
    if (const auto stream = ok ? streamOf(streamId) : nullptr)
        stream->setSpeed(speedText);
    return recorded("playback_speed_set_req", streamId, speedText, ok ? 0 : -1);
}

int skip_by_appointed_time_req(const QString& streamId, const QDateTime& time)
{
    PlaybackByTimeCondition condition;
    const bool open = PlaybackRecorder::instance()->streamCondition(streamId, &condition);
    const bool ok = open && time.isValid() && time >= condition.begin && time <= condition.end;
    if (const auto stream = ok ? streamOf(streamId) : nullptr)
        stream->seek(time);
    return recorded("skip_by_appointed_time_req", streamId, time, ok ? 0 : -1);
}

} // namespace vms_sdk
