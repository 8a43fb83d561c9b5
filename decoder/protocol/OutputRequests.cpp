#include "OutputRequests.h"

#include "RequestRouter.h"
#include "state/Wall.h"

#include "Messages.h"

namespace vdec {

using namespace cmatrix::wire;

namespace {

Outcome displayBanner(RequestContext& c, const Message& m)
{
    return RequestRouter::with<BannerRecord>(
        m, [&](const BannerRecord& r) { return RequestRouter::status(c.wall.outputs().setBanner(r.banner)); });
}

Outcome getBanner(RequestContext& c, const Message& m)
{
    return RequestRouter::with<Empty>(
        m, [&](const Empty&) { return RequestRouter::answer(BannerRecord { c.wall.outputs().banner() }); });
}

Outcome getColor(RequestContext& c, const Message& m)
{
    return RequestRouter::with<ScreenColorRecord>(m, [&](const ScreenColorRecord& r) {
        ScreenColorRecord answer { r.col, r.row, {} };
        const int32_t rc = c.wall.outputs().screenColor({ r.col, r.row }, c.wall.cols(), c.wall.rows(), answer.color);
        return rc == CMATRIX_OK ? RequestRouter::answer(answer) : RequestRouter::status(rc);
    });
}

Outcome setColor(RequestContext& c, const Message& m)
{
    return RequestRouter::with<ScreenColorRecord>(m, [&](const ScreenColorRecord& r) {
        return RequestRouter::status(
            c.wall.outputs().setScreenColor({ r.col, r.row }, c.wall.cols(), c.wall.rows(), r.color));
    });
}

Outcome getAudio(RequestContext& c, const Message& m)
{
    return RequestRouter::with<Empty>(
        m, [&](const Empty&) { return RequestRouter::answer(AudioRecord { c.wall.outputs().audio() }); });
}

Outcome setAudio(RequestContext& c, const Message& m)
{
    return RequestRouter::with<AudioRecord>(m, [&](const AudioRecord& r) {
        return RequestRouter::status(c.wall.outputs().setAudio(r.audio, c.wall.windows()));
    });
}

} // namespace

void OutputRequests::registerIn(RequestRouter& router)
{
    router.add(MessageType::DisplayBanner, RequestRouter::Mutates, displayBanner);
    router.add(MessageType::GetBanner, RequestRouter::None, getBanner);
    router.add(MessageType::GetScreenColor, RequestRouter::None, getColor);
    router.add(MessageType::SetScreenColor, RequestRouter::Mutates, setColor);
    router.add(MessageType::GetAudioStatus, RequestRouter::None, getAudio);
    router.add(MessageType::SetAudioStatus, RequestRouter::Mutates, setAudio);
}

} // namespace vdec
