#include "PushedVideo.h"

#include <algorithm>

namespace vdec {

std::shared_ptr<PushedVideo::Stream> PushedVideo::streamFor(
    const PictureStore::Key& key, const QString& sourceKey, int codec)
{
    std::lock_guard<std::mutex> lock(mutex_);
    auto it = streams_.find(key);
    if (it != streams_.end() && it->second->sourceKey != sourceKey) { // another source: start afresh
        streams_.erase(it);
        it = streams_.end();
    }
    if (it == streams_.end()) {
        if (codec != kH264 && codec != kHevc)
            return nullptr; // a following frame with no key frame before it
        if (int(streams_.size()) >= kMaxStreams) {
            const auto oldest = std::min_element(streams_.begin(), streams_.end(),
                [](const auto& a, const auto& b) { return a.second->lastFed < b.second->lastFed; });
            streams_.erase(oldest);
        }
        auto s = std::make_shared<Stream>();
        s->sourceKey = sourceKey;
        it = streams_.emplace(key, std::move(s)).first;
    }
    it->second->lastFed = Clock::now();
    return it->second;
}

PushedVideo::Result PushedVideo::decode(const PictureStore::Key& key, const QString& sourceKey, int codec,
    const uint8_t* data, size_t size, QSize shown, QImage& picture)
{
    if (codec != kH264 && codec != kHevc && codec != -1)
        return Result::NotVideo;
    const std::shared_ptr<Stream> s = streamFor(key, sourceKey, codec);
    if (!s)
        return Result::NotVideo;
    std::lock_guard<std::mutex> lock(s->mutex);
    if (codec != -1 && (codec != s->codec || !s->decoder.isOpen())) {
        s->codec = codec;
        s->decoder.setShownSize(shown);
        if (!s->decoder.open(codec == kH264 ? VideoDecoder::Codec::H264 : VideoDecoder::Codec::Hevc))
            return Result::Failed;
    }
    if (!s->decoder.isOpen())
        return Result::NotVideo;
    bool failed = false;
    if (!s->decoder.decode(data, size, 0, &failed))
        return failed ? Result::Failed : Result::Counted;
    const Clock::time_point now = Clock::now();
    if (now - s->lastShown < std::chrono::milliseconds(kShowEveryMs))
        return Result::Counted;
    if (!s->decoder.toImage(shown, picture))
        return Result::Failed;
    s->lastShown = now;
    return Result::Decoded;
}

} // namespace vdec
