#pragma once

#include "PlaybackByTimeCondition.h"

#include <QHash>
#include <QList>
#include <QMutex>
#include <QString>
#include <QStringList>
#include <QVariant>

namespace vms_sdk {

// One call of a playback request function.
struct PlaybackCall {
    QString function; // e.g. "playback_ctrl_req"
    QString streamId; // the returned id for playback_by_time_req
    QVariant argument; // ctrl value, speed text or seek time; null for the others
    int result = 0;
};

// The client library's table of open playback streams, and a journal of the requests made,
// which tests read to see what a caller asked for.
class PlaybackRecorder {
public:
    static PlaybackRecorder* instance();

    QList<PlaybackCall> calls() const;
    QList<PlaybackCall> callsOf(const QString& function) const;
    QStringList openStreams() const;
    bool streamCondition(const QString& streamId, PlaybackByTimeCondition* condition) const;
    // Forgets the journal and every open stream.
    void clear();

    QString openStream(const PlaybackByTimeCondition& condition);
    bool closeStream(const QString& streamId);
    bool isOpen(const QString& streamId) const;
    void record(const PlaybackCall& call);

private:
    PlaybackRecorder() = default;

    mutable QMutex mutex_;
    QHash<QString, PlaybackByTimeCondition> streams_;
    QList<PlaybackCall> calls_;
    quint64 nextStream_ = 1;
};

} // namespace vms_sdk
