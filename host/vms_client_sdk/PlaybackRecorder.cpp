#include "PlaybackRecorder.h"

#include <QMutexLocker>

namespace vms_sdk {

namespace {
// The journal is there to be read back by tests; a long session must not grow it forever.
const int kJournalLimit = 10000;
} // namespace

PlaybackRecorder* PlaybackRecorder::instance()
{
    static PlaybackRecorder* const recorder = new PlaybackRecorder;
    return recorder;
}

QList<PlaybackCall> PlaybackRecorder::calls() const
{
    QMutexLocker lock(&mutex_);
    return calls_;
}

QList<PlaybackCall> PlaybackRecorder::callsOf(const QString& function) const
{
    QMutexLocker lock(&mutex_);
    QList<PlaybackCall> matching;
    for (const PlaybackCall& call : calls_) {
        if (call.function == function)
            matching.append(call);
    }
    return matching;
}

QStringList PlaybackRecorder::openStreams() const
{
    QMutexLocker lock(&mutex_);
    return streams_.keys();
}

bool PlaybackRecorder::streamCondition(const QString& streamId, PlaybackByTimeCondition* condition) const
{
    QMutexLocker lock(&mutex_);
    auto it = streams_.constFind(streamId);
    if (it == streams_.constEnd())
        return false;
    if (condition)
        *condition = it.value();
    return true;
}

void PlaybackRecorder::clear()
{
    QMutexLocker lock(&mutex_);
    streams_.clear();
    calls_.clear();
}

QString PlaybackRecorder::openStream(const PlaybackByTimeCondition& condition)
{
    QMutexLocker lock(&mutex_);
    const QString id = QStringLiteral("playback-%1").arg(nextStream_++);
    streams_.insert(id, condition);
    return id;
}

bool PlaybackRecorder::closeStream(const QString& streamId)
{
    QMutexLocker lock(&mutex_);
    return streams_.remove(streamId) > 0;
}

bool PlaybackRecorder::isOpen(const QString& streamId) const
{
    QMutexLocker lock(&mutex_);
    return streams_.contains(streamId);
}

void PlaybackRecorder::record(const PlaybackCall& call)
{
    QMutexLocker lock(&mutex_);
    calls_.append(call);
    if (calls_.size() > kJournalLimit)
        calls_.removeFirst();
}

} // namespace vms_sdk
