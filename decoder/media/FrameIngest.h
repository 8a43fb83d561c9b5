#pragma once

#include "PictureStore.h"
#include "PushedVideo.h"
#include "protocol/RequestRouter.h"

#include "Message.h"

#include <QSize>

#include <chrono>
#include <mutex>
#include <vector>

struct KavFrame;

namespace vdec {

class Wall;

// MediaFrame and DisplayFrame requests. They skip the request router: the state lock
// is held only to find which sub-windows a frame is for, while unpacking and decoding
// run without it, so a large picture never holds up a control request on another
// connection.
//
// A MediaFrame goes to every sub-window whose bound source is its distribution: a
// source (not an empty one) whose main URL is the distribution's URL, or whose device
// id and channel are the distribution's source name and channel. A DisplayFrame goes
// to the sub-window it names (channel = 1-based sub-window number).
class FrameIngest {
public:
    static constexpr QSize kScreen { 1920, 1080 }; // pixels of one screen of the wall

    FrameIngest(PictureStore& store, bool decodeAtShownSize, int pictureIntervalMs);

    static bool handles(cmatrix::wire::MessageType type);
    Outcome ingest(const Session& session, const cmatrix::wire::Message& message, std::mutex& stateMutex, Wall& wall);
    // Decodes the pictures kept compressed, so that what is looked at is the latest.
    // Called without the state lock.
    void decodePending();
    // The pixels a sub-window takes on the wall (its whole place while a full-screen
    // neighbour hides it). The caller holds the state lock.
    static QSize shownSize(const Wall& wall, const Window& window, int32_t sub);

private:
    struct Target {
        PictureStore::Key key;
        QString sourceKey;
        QSize shown; // pixels it takes on the wall
    };

    static int32_t resolveDisplay(const Wall& wall, int32_t windowId, int32_t sub, std::vector<Target>& targets);
    static int32_t resolveMedia(Wall& wall, uint32_t mediaId, quint64 bytes, std::vector<Target>& targets);
    static Target targetOf(const Wall& wall, const Window& window, int32_t sub);
    int32_t deliver(const std::vector<uint8_t>& frame, const std::vector<Target>& targets, quint64 epoch);
    static constexpr int32_t kNotVideo = 1;
    int32_t deliverVideo(
        const KavFrame& kav, int codec, quint64 bytes, const std::vector<Target>& targets, quint64 epoch);

    PictureStore& store_;
    PushedVideo video_;
    const bool decodeAtShownSize_;
    const std::chrono::milliseconds pictureInterval_; // a sub-window decodes at most one picture per interval
};

} // namespace vdec
