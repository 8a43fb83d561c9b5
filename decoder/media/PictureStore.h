#pragma once

#include "SubWindowMedia.h"

#include <QByteArray>
#include <QSize>

#include <chrono>
#include <map>
#include <mutex>
#include <utility>
#include <vector>

namespace vdec {

class Wall;
struct Window;

// Counters and latest pictures by (window id, sub-window). It has a lock of its own:
// pictures are stored after decoding, outside the decoder's state lock. Entries of a
// window that is gone, or of a sub-window whose source has changed since, are stale
// and dropped when the wall is next collected, so a picture never outlives what it
// was shown in. Nothing here is saved.
//
// Pictures need not all be decoded: one that arrives soon after the last decoded one of
// its sub-window is kept compressed (pending), replacing any older pending one, and
// decoded when the wall is looked at. A sub-window fed 25 pictures a second so costs
// a few decodes a second, not 25.
class PictureStore {
public:
    using Key = std::pair<uint32_t, int32_t>;
    using Clock = std::chrono::steady_clock;
    // Undecodable: a whole envelope whose video did not decode (counted as failed, its
    // codec noted); Failed: an envelope or picture that is refused.
    enum class Result { Counted, Decoded, Failed, Undecodable };

    // A picture kept compressed, as handed out to be decoded.
    struct Pending {
        Key key;
        QString sourceKey;
        QByteArray jpeg;
        QSize shown;
        quint64 sequence = 0; // tells a picture from one that replaced it meanwhile
    };

    // Identifies the source bound to a sub-window: device id and main URL; empty when
    // none is bound.
    static QString sourceKey(const Window& window, int32_t sub);

    // Counts one envelope for the sub-window; a decoded one brings its picture along.
    // Changes whenever stale entries are dropped. A frame bound for a sub-window is
    // recorded only if no entry was dropped since it was addressed (the epoch taken
    // then, under the state lock), so it cannot land in a window made anew meanwhile.
    quint64 epoch();
    void record(const Key& key, const QString& sourceKey, quint64 epoch, quint64 bytes, Result result, int codec,
        const QImage& picture = {});
    // Counts one envelope whose picture is kept compressed for now.
    void recordPending(const Key& key, const QString& sourceKey, quint64 epoch, quint64 bytes, int codec,
        const QByteArray& jpeg, QSize shown);
    // True when every one of these sub-windows has had a picture decoded less than
    // `interval` ago.
    bool allDecodedWithin(const std::vector<Key>& keys, std::chrono::milliseconds interval);
    // The pictures waiting to be decoded, and the outcome of decoding one of them: it is
    // dropped when a newer one has replaced it or its sub-window has changed meanwhile.
    std::vector<Pending> pending();
    void finish(const Pending& picture, bool decoded, const QImage& image);
    // Drops stale entries; the caller holds the state lock.
    void prune(const Wall& wall);
    // The entries still valid for the wall as it is; the caller holds the state lock.
    std::map<Key, SubWindowMedia> collect(const Wall& wall);
    void clear();

private:
    struct Entry {
        SubWindowMedia media;
        QByteArray pending; // latest picture not decoded yet
        QSize pendingShown;
        quint64 pendingSequence = 0;
        Clock::time_point lastDecoded {};
    };

    Entry& entry(const Key& key, const QString& sourceKey);
    void pruneLocked(const Wall& wall);

    std::mutex mutex_;
    std::map<Key, Entry> entries_;
    quint64 epoch_ = 0;
};

} // namespace vdec
