#include "WindowRequests.h"

#include "RequestRouter.h"
#include "state/Wall.h"

#include "Messages.h"

namespace vdec {

using namespace cmatrix::wire;

namespace {

Outcome add(RequestContext& c, const Message& m)
{
    return RequestRouter::with<WindowAddRequest>(m,
        [&](const WindowAddRequest& r) { return RequestRouter::status(c.wall.windows().add(r.windows, r.replace)); });
}

Outcome del(RequestContext& c, const Message& m)
{
    return RequestRouter::with<IdList>(
        m, [&](const IdList& r) { return RequestRouter::status(c.wall.windows().remove(r.ids)); });
}

Outcome get(RequestContext& c, const Message& m)
{
    return RequestRouter::with<Empty>(
        m, [&](const Empty&) { return RequestRouter::answer(WindowList { c.wall.windows().statusList() }); });
}

Outcome move(RequestContext& c, const Message& m)
{
    return RequestRouter::with<WindowMoveRequest>(
        m, [&](const WindowMoveRequest& r) { return RequestRouter::status(c.wall.windows().move(r.window)); });
}

Outcome fullScreen(RequestContext& c, const Message& m)
{
    return RequestRouter::with<FullScreenRequest>(m, [&](const FullScreenRequest& r) {
        return RequestRouter::status(c.wall.windows().setFullScreen(r.windowId, r.subWindowId, r.full));
    });
}

Outcome getDivision(RequestContext& c, const Message& m)
{
    return RequestRouter::with<Empty>(
        m, [&](const Empty&) { return RequestRouter::answer(DivisionList { c.wall.windows().divisions() }); });
}

Outcome setDivision(RequestContext& c, const Message& m)
{
    return RequestRouter::with<SetDivisionRequest>(m, [&](const SetDivisionRequest& r) {
        return RequestRouter::status(c.wall.windows().setDivision(r.windowId, r.division));
    });
}

} // namespace

void WindowRequests::registerIn(RequestRouter& router)
{
    router.add(MessageType::WindowAdd, RequestRouter::Mutates, add);
    router.add(MessageType::WindowDel, RequestRouter::Mutates, del);
    router.add(MessageType::WindowGet, RequestRouter::None, get);
    router.add(MessageType::WindowMove, RequestRouter::Mutates, move);
    router.add(MessageType::WindowSetFullScreen, RequestRouter::Mutates, fullScreen);
    router.add(MessageType::WindowGetDivision, RequestRouter::None, getDivision);
    router.add(MessageType::WindowSetDivision, RequestRouter::Mutates, setDivision);
}

} // namespace vdec
