#pragma once

#include "PictureStore.h"
#include "VideoStatus.h"

#include <QSize>
#include <QString>

#include <map>
#include <memory>
#include <mutex>
#include <vector>

namespace vdec {

class StreamPlayer;
class Wall;

// The live streams of the wall: one player per sub-window bound to a camera or an
// RTSP source, started, switched (another source, main and sub stream) and stopped
// as the wall changes. Pictures go to the picture store under this object's lock,
// and only from a player that is still the sub-window's, so none lands after its
// source was replaced. Stopping a player never waits: it is asked to end and joined
// later, or when this object goes.
class LiveVideo {
public:
    static constexpr int kMaxStreams = 64; // what one decoder decodes at once

    explicit LiveVideo(PictureStore& store);
    ~LiveVideo();
    LiveVideo(const LiveVideo&) = delete;
    LiveVideo& operator=(const LiveVideo&) = delete;

    // Brings the players in line with the wall; the caller holds the state lock.
    void reconcile(const Wall& wall);
    std::map<PictureStore::Key, VideoStatus> status() const;
    void stopAll();

private:
    struct Live {
        std::unique_ptr<StreamPlayer> player; // null: over capacity
        QString url;
        QString sourceKey;
        QSize shown;
        VideoStatus refused; // the status of a stream not played
    };

    void deliver(const PictureStore::Key& key, const StreamPlayer& player, const QImage& picture, quint64 bytes);
    void retire(std::unique_ptr<StreamPlayer> player);

    PictureStore& store_;
    mutable std::mutex mutex_;
    std::map<PictureStore::Key, Live> live_;
    std::vector<std::unique_ptr<StreamPlayer>> retiring_;
};

} // namespace vdec
