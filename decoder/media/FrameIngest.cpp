#include "FrameIngest.h"

#include "KavFrame.h"
#include "PictureDecoder.h"
#include "state/SubWindowLayout.h"
#include "state/Wall.h"

#include "Messages.h"

#include <QtGlobal>

#include <algorithm>
#include <climits>
#include <cstring>

namespace vdec {

using namespace cmatrix::wire;

namespace {

constexpr uint32_t kVideoValid = 1;
constexpr uint32_t kStillPicture = 4; // video codec of JPEG pictures

bool textIs(const char* field, size_t size, const QString& text)
{
    return QString::fromUtf8(field, int(qstrnlen(field, size))) == text;
}

bool feeds(const DeviceInfo_t& source, const MediaDistribution& d)
{
    if (source.protocol == 8) // an empty sub-window
        return false;
    return textIs(source.mainUrl, sizeof source.mainUrl, d.url)
        || (source.channel == d.channel && textIs(source.devId, sizeof source.devId, d.sourceName));
}

} // namespace

FrameIngest::FrameIngest(PictureStore& store, bool decodeAtShownSize, int pictureIntervalMs)
    : store_(store)
    , decodeAtShownSize_(decodeAtShownSize)
    , pictureInterval_(std::max(0, pictureIntervalMs))
{
}

void FrameIngest::decodePending()
{
    for (const PictureStore::Pending& p : store_.pending()) {
        QImage picture;
        const bool ok = PictureDecoder::decode(reinterpret_cast<const uint8_t*>(p.jpeg.constData()),
            size_t(p.jpeg.size()), p.shown, decodeAtShownSize_, picture);
        store_.finish(p, ok, picture);
    }
}

bool FrameIngest::handles(MessageType type)
{
    return type == MessageType::MediaFrame || type == MessageType::DisplayFrame;
}

Outcome FrameIngest::ingest(const Session& session, const Message& message, std::mutex& stateMutex, Wall& wall)
{
    if (!session.loggedIn)
        return RequestRouter::status(CMATRIX_ERR_NOT_LOGGED_IN);
    std::vector<Target> targets;
    std::vector<uint8_t> frame;
    int32_t rc = CMATRIX_OK;
    quint64 epoch = 0;
    if (requestOf(message.type()) == MessageType::DisplayFrame) {
        DisplayFrameRequest r;
        if (!message.decode(r))
            return RequestRouter::status(CMATRIX_ERR_PROTOCOL);
        std::lock_guard<std::mutex> lock(stateMutex);
        rc = resolveDisplay(wall, r.windowId, r.channel, targets);
        epoch = store_.epoch();
        frame = std::move(r.frame);
    } else {
        MediaFrameRequest r;
        if (!message.decode(r))
            return RequestRouter::status(CMATRIX_ERR_PROTOCOL);
        std::lock_guard<std::mutex> lock(stateMutex);
        rc = resolveMedia(wall, r.mediaId, r.frame.size(), targets);
        epoch = store_.epoch();
        frame = std::move(r.frame);
    }
    if (rc != CMATRIX_OK)
        return RequestRouter::status(rc);
    return RequestRouter::status(deliver(frame, targets, epoch));
}

QSize FrameIngest::shownSize(const Wall& wall, const Window& window, int32_t sub)
{
    QRect shown = SubWindowLayout::shownRect(window, sub, wall.cols(), wall.rows(), kScreen);
    if (shown.isEmpty()) // hidden behind a full-screen neighbour: ready for when it returns
        shown = SubWindowLayout::rect(
            SubWindowLayout::windowRect(window, wall.cols(), wall.rows(), kScreen), window.division, sub);
    return shown.size();
}

FrameIngest::Target FrameIngest::targetOf(const Wall& wall, const Window& window, int32_t sub)
{
    return Target { { window.id, sub }, PictureStore::sourceKey(window, sub), shownSize(wall, window, sub) };
}

int32_t FrameIngest::resolveDisplay(const Wall& wall, int32_t windowId, int32_t sub, std::vector<Target>& targets)
{
    const Window* w = windowId > 0 ? wall.windows().find(windowId) : nullptr;
    if (!w)
        return CMATRIX_ERR_WINDOW_NOT_FOUND;
    if (sub < 1 || sub > w->division)
        return CMATRIX_ERR_SUBWINDOW;
    targets.push_back(targetOf(wall, *w, sub));
    return CMATRIX_OK;
}

int32_t FrameIngest::resolveMedia(Wall& wall, uint32_t mediaId, quint64 bytes, std::vector<Target>& targets)
{
    MediaDistribution* d = wall.distributions().find(mediaId);
    if (!d)
        return CMATRIX_ERR_MEDIA_NOT_FOUND;
    ++d->frames;
    d->bytes += bytes;
    for (const Window& w : wall.windows().windows()) {
        for (const auto& [sub, source] : w.sources) {
            if (sub >= 1 && sub <= w.division && feeds(source, *d))
                targets.push_back(targetOf(wall, w, sub));
        }
    }
    return CMATRIX_OK;
}

int32_t FrameIngest::deliverVideo(
    const KavFrame& kav, int codec, quint64 bytes, const std::vector<Target>& targets, quint64 epoch)
{
    // One decoder for the frames of a stream, whatever number of sub-windows show it.
    QSize shown;
    for (const Target& t : targets)
        shown = shown.expandedTo(t.shown);
    QImage picture;
    const PushedVideo::Result r = video_.decode(targets.front().key, targets.front().sourceKey, codec,
        reinterpret_cast<const uint8_t*>(kav.data), kav.size, shown, picture);
    if (r == PushedVideo::Result::NotVideo)
        return kNotVideo;
    const PictureStore::Result stored = r == PushedVideo::Result::Decoded ? PictureStore::Result::Decoded
        : r == PushedVideo::Result::Failed                                ? PictureStore::Result::Undecodable
                                                                          : PictureStore::Result::Counted;
    for (const Target& t : targets)
        store_.record(t.key, t.sourceKey, epoch, bytes, stored, codec, picture);
    // A picture that does not decode is counted, not refused: the frame itself arrived whole,
    // and the next key frame puts the stream right.
    return CMATRIX_OK;
}

int32_t FrameIngest::deliver(const std::vector<uint8_t>& frame, const std::vector<Target>& targets, quint64 epoch)
{
    const quint64 bytes = frame.size();
    KavFrame kav;
    KavStreamInfo info;
    std::memset(&kav, 0, sizeof kav);
    std::memset(&info, 0, sizeof info);
    // The unpacker checks the payload against the buffer without the extension blocks
    // in front of it; where the payload really ends is checked here.
    const bool intact = frame.size() <= size_t(INT_MAX)
        && KavUnpackFrame(frame.data(), int(frame.size()), &kav, &info) >= 0
        && size_t(kav.data - frame.data()) + kav.size <= frame.size();
    if (!intact) {
        for (const Target& t : targets)
            store_.record(t.key, t.sourceKey, epoch, bytes, PictureStore::Result::Failed, -1);
        return CMATRIX_ERR_FRAME;
    }
    const int codec = (info.flags & kVideoValid) ? int(info.videoCodec) : -1;
    if (codec != int(kStillPicture) && !targets.empty()) {
        const int32_t rc = deliverVideo(kav, codec, bytes, targets, epoch);
        if (rc != kNotVideo)
            return rc;
    }
    // Only still pictures are decoded, and only when someone is watching; other
    // codecs are counted as a decoder without them would.
    if (codec != int(kStillPicture) || targets.empty()) {
        for (const Target& t : targets)
            store_.record(t.key, t.sourceKey, epoch, bytes, PictureStore::Result::Counted, codec);
        return CMATRIX_OK;
    }
    QSize shown;
    std::vector<PictureStore::Key> keys;
    for (const Target& t : targets) {
        shown = shown.expandedTo(t.shown);
        keys.push_back(t.key);
    }
    const auto* jpeg = reinterpret_cast<const uint8_t*>(kav.data);
    if (store_.allDecodedWithin(keys, pictureInterval_)) {
        // Shown a moment ago: check the header now, decode when looked at or overtaken.
        if (!PictureDecoder::probe(jpeg, kav.size)) {
            for (const Target& t : targets)
                store_.record(t.key, t.sourceKey, epoch, bytes, PictureStore::Result::Failed, codec);
            return CMATRIX_ERR_DECODE;
        }
        const QByteArray kept(reinterpret_cast<const char*>(jpeg), int(kav.size));
        for (const Target& t : targets)
            store_.recordPending(t.key, t.sourceKey, epoch, bytes, codec, kept, shown);
        return CMATRIX_OK;
    }
    QImage picture;
    const bool ok = PictureDecoder::decode(jpeg, kav.size, shown, decodeAtShownSize_, picture);
    for (const Target& t : targets) {
        store_.record(t.key, t.sourceKey, epoch, bytes,
            ok ? PictureStore::Result::Decoded : PictureStore::Result::Failed, codec, picture);
    }
    return ok ? CMATRIX_OK : CMATRIX_ERR_DECODE;
}

} // namespace vdec
