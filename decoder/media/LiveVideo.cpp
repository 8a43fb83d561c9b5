#include "LiveVideo.h"

#include "FrameIngest.h"
#include "StreamPlayer.h"
#include "StreamUrl.h"
#include "state/Wall.h"

#include <set>

extern "C" {
#include <libavutil/log.h>
}

namespace vdec {

namespace {

constexpr int kH264 = 1; // the media codec code the state reports for H.264 pictures

} // namespace

LiveVideo::LiveVideo(PictureStore& store)
    : store_(store)
{
    // A camera's bad pictures are counted in the state; the library's own lines about
    // them would only flood the daemon's output.
    static std::once_flag quiet;
    std::call_once(quiet, [] { av_log_set_level(AV_LOG_FATAL); });
}

LiveVideo::~LiveVideo()
{
    stopAll();
}

void LiveVideo::stopAll()
{
    std::vector<std::unique_ptr<StreamPlayer>> all;
    {
        std::lock_guard<std::mutex> lock(mutex_);
        for (auto& [key, live] : live_) {
            if (live.player)
                all.push_back(std::move(live.player));
        }
        live_.clear();
        for (auto& p : retiring_)
            all.push_back(std::move(p));
        retiring_.clear();
    }
    for (auto& p : all)
        p->stop();
    all.clear(); // joins, without the lock: a player may be delivering
}

void LiveVideo::retire(std::unique_ptr<StreamPlayer> player)
{
    if (!player)
        return;
    player->stop();
    retiring_.push_back(std::move(player));
}

void LiveVideo::reconcile(const Wall& wall)
{
    std::vector<std::unique_ptr<StreamPlayer>> done;
    {
        std::lock_guard<std::mutex> lock(mutex_);
        std::set<PictureStore::Key> wanted;
        int playing = 0;
        for (const auto& [key, live] : live_)
            playing += live.player ? 1 : 0;
        for (const Window& w : wall.windows().windows()) {
            for (const auto& [sub, source] : w.sources) {
                if (sub < 1 || sub > w.division || !StreamUrl::isLive(source))
                    continue;
                const PictureStore::Key key { w.id, sub };
                const QSize shown = FrameIngest::shownSize(wall, w, sub);
                const bool useSub = StreamUrl::wantsSub(source, shown);
                const QString url = StreamUrl::url(source, useSub);
                const QString sourceKey = PictureStore::sourceKey(w, sub);
                wanted.insert(key);
                Live& live = live_[key];
                if (live.url == url && live.sourceKey == sourceKey && (live.player || playing >= kMaxStreams)) {
                    if (live.player && live.shown != shown)
                        live.player->setShown(shown);
                    live.shown = shown;
                    continue;
                }
                if (live.player) {
                    retire(std::move(live.player));
                    --playing;
                }
                live.url = url;
                live.sourceKey = sourceKey;
                live.shown = shown;
                live.refused = VideoStatus {};
                live.refused.sub = useSub;
                live.refused.url = StreamUrl::withoutCredentials(url);
                if (playing >= kMaxStreams) {
                    live.refused.state = VideoStatus::State::NoSignal;
                    live.refused.reason = QStringLiteral("the decoder plays %1 streams at most").arg(kMaxStreams);
                    continue;
                }
                live.player = std::make_unique<StreamPlayer>(
                    url, useSub, shown, [this, key](const StreamPlayer& p, const QImage& picture, quint64 bytes) {
                        deliver(key, p, picture, bytes);
                    });
                live.player->start();
                ++playing;
            }
        }
        for (auto it = live_.begin(); it != live_.end();) {
            if (wanted.count(it->first)) {
                ++it;
                continue;
            }
            retire(std::move(it->second.player));
            it = live_.erase(it);
        }
        for (auto it = retiring_.begin(); it != retiring_.end();) {
            if ((*it)->finished()) {
                done.push_back(std::move(*it));
                it = retiring_.erase(it);
            } else {
                ++it;
            }
        }
    }
    // Finished threads join at once; done outside the lock all the same.
    done.clear();
}

void LiveVideo::deliver(const PictureStore::Key& key, const StreamPlayer& player, const QImage& picture, quint64 bytes)
{
    std::lock_guard<std::mutex> lock(mutex_);
    const auto it = live_.find(key);
    if (it == live_.end() || it->second.player.get() != &player)
        return; // replaced meanwhile
    store_.record(key, it->second.sourceKey, store_.epoch(), bytes, PictureStore::Result::Decoded, kH264, picture);
}

std::map<PictureStore::Key, VideoStatus> LiveVideo::status() const
{
    std::lock_guard<std::mutex> lock(mutex_);
    std::map<PictureStore::Key, VideoStatus> out;
    for (const auto& [key, live] : live_)
        out.emplace(key, live.player ? live.player->status() : live.refused);
    return out;
}

} // namespace vdec
