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

SubWindowMedia& PictureStore::entry(const Key& key, const QString& sourceKey)
{
    SubWindowMedia& e = entries_[key];
    if (e.sourceKey != sourceKey) { // a new source starts afresh
        e = SubWindowMedia {};
        e.sourceKey = sourceKey;
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
    SubWindowMedia& e = entry(key, sourceKey);
    ++e.frames;
    e.bytes += bytes;
    if (result == Result::Decoded) {
        ++e.decoded;
        e.picture = picture;
    } else if (result == Result::Failed)
        ++e.failed;
    if (result != Result::Failed)
        e.lastCodec = codec;
}

void PictureStore::pruneLocked(const Wall& wall)
{
    bool dropped = false;
    for (auto it = entries_.begin(); it != entries_.end();) {
        const Window* w = wall.windows().find(it->first.first);
        const bool valid = w && it->first.second >= 1 && it->first.second <= w->division
            && sourceKey(*w, it->first.second) == it->second.sourceKey;
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
    return entries_;
}

void PictureStore::clear()
{
    std::lock_guard<std::mutex> lock(mutex_);
    entries_.clear();
}

} // namespace vdec
