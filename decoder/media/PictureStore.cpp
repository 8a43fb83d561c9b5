#include "PictureStore.h"

#include "state/Wall.h"

namespace vdec {

QString PictureStore::sourceKey(const Window& window, int32_t sub)
{
    const auto it = window.sources.find(sub);
    if (it == window.sources.end() || it->second.protocol == 8)
        return {};
    const DeviceInfo_t& d = it->second;
    return QString::fromUtf8(d.devId, int(qstrnlen(d.devId, sizeof d.devId))) + QLatin1Char('\n')
        + QString::fromUtf8(d.mainUrl, int(qstrnlen(d.mainUrl, sizeof d.mainUrl)));
}

PictureStore::Entry& PictureStore::entry(const Key& key, const QString& sourceKey)
{
    Entry& e = entries_[key];
    if (e.media.sourceKey != sourceKey) { // a new source starts afresh
        e = Entry {};
        e.media.sourceKey = sourceKey;
    }
    return e;
}

quint64 PictureStore::epoch()
{
    std::lock_guard<std::mutex> lock(mutex_);
    return epoch_;
}

void PictureStore::record(const Key& key, const QString& sourceKey, quint64 epoch, quint64 bytes, Result result,
    int codec, const QImage& picture)
{
    std::lock_guard<std::mutex> lock(mutex_);
    if (epoch != epoch_)
        return; // addressed to a wall that has changed since
    Entry& e = entry(key, sourceKey);
    ++e.media.frames;
    e.media.bytes += bytes;
    if (result == Result::Decoded) {
        ++e.media.decoded;
        e.media.picture = picture;
        e.lastDecoded = Clock::now();
        e.pending.clear(); // older than what is shown now
    } else if (result == Result::Failed || result == Result::Undecodable)
        ++e.media.failed;
    if (result != Result::Failed)
        e.media.lastCodec = codec;
}

void PictureStore::recordPending(const Key& key, const QString& sourceKey, quint64 epoch, quint64 bytes, int codec,
    const QByteArray& jpeg, QSize shown)
{
    std::lock_guard<std::mutex> lock(mutex_);
    if (epoch != epoch_)
        return;
    Entry& e = entry(key, sourceKey);
    ++e.media.frames;
    e.media.bytes += bytes;
    e.media.lastCodec = codec;
    e.pending = jpeg;
    e.pendingShown = shown;
    ++e.pendingSequence;
}

bool PictureStore::allDecodedWithin(const std::vector<Key>& keys, std::chrono::milliseconds interval)
{
    std::lock_guard<std::mutex> lock(mutex_);
    const Clock::time_point since = Clock::now() - interval;
    for (const Key& key : keys) {
        const auto it = entries_.find(key);
        if (it == entries_.end() || it->second.lastDecoded < since)
            return false;
    }
    return true;
}

std::vector<PictureStore::Pending> PictureStore::pending()
{
    std::lock_guard<std::mutex> lock(mutex_);
    std::vector<Pending> out;
    for (const auto& [key, e] : entries_) {
        if (!e.pending.isEmpty())
            out.push_back({ key, e.media.sourceKey, e.pending, e.pendingShown, e.pendingSequence });
    }
    return out;
}

void PictureStore::finish(const Pending& picture, bool decoded, const QImage& image)
{
    std::lock_guard<std::mutex> lock(mutex_);
    const auto it = entries_.find(picture.key);
    if (it == entries_.end() || it->second.media.sourceKey != picture.sourceKey || it->second.pending.isEmpty()
        || it->second.pendingSequence != picture.sequence)
        return;
    Entry& e = it->second;
    e.pending.clear();
    if (decoded) {
        ++e.media.decoded;
        e.media.picture = image;
        e.lastDecoded = Clock::now();
    } else
        ++e.media.failed;
}

void PictureStore::pruneLocked(const Wall& wall)
{
    bool dropped = false;
    for (auto it = entries_.begin(); it != entries_.end();) {
        const Window* w = wall.windows().find(it->first.first);
        const bool valid = w && it->first.second >= 1 && it->first.second <= w->division
            && sourceKey(*w, it->first.second) == it->second.media.sourceKey;
        dropped = dropped || !valid;
        it = valid ? std::next(it) : entries_.erase(it);
    }
    if (dropped)
        ++epoch_;
}

void PictureStore::prune(const Wall& wall)
{
    std::lock_guard<std::mutex> lock(mutex_);
    pruneLocked(wall);
}

std::map<PictureStore::Key, SubWindowMedia> PictureStore::collect(const Wall& wall)
{
    std::lock_guard<std::mutex> lock(mutex_);
    pruneLocked(wall);
    std::map<Key, SubWindowMedia> out;
    for (const auto& [key, e] : entries_)
        out.emplace(key, e.media);
    return out;
}

void PictureStore::clear()
{
    std::lock_guard<std::mutex> lock(mutex_);
    entries_.clear();
}

} // namespace vdec
