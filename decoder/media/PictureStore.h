#pragma once

#include "SubWindowMedia.h"

#include <map>
#include <mutex>
#include <utility>

namespace vdec {

class Wall;
struct Window;

// Counters and latest pictures by (window id, sub-window). It has a lock of its own:
// pictures are stored after decoding, outside the decoder's state lock. Entries of a
// window that is gone, or of a sub-window whose source has changed since, are stale
// and dropped when the wall is next collected, so a picture never outlives what it
// was shown in. Nothing here is saved.
class PictureStore {
public:
    using Key = std::pair<uint32_t, int32_t>;
    enum class Result { Counted, Decoded, Failed };

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
    // Drops stale entries; the caller holds the state lock.
    void prune(const Wall& wall);
    // The entries still valid for the wall as it is; the caller holds the state lock.
    std::map<Key, SubWindowMedia> collect(const Wall& wall);
    void clear();

private:
    SubWindowMedia& entry(const Key& key, const QString& sourceKey);
    void pruneLocked(const Wall& wall);

    std::mutex mutex_;
    std::map<Key, SubWindowMedia> entries_;
    quint64 epoch_ = 0;
};

} // namespace vdec
