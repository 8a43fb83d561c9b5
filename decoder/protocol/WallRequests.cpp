#include "WallRequests.h"

#include "RequestRouter.h"
#include "state/Wall.h"

#include "Messages.h"

namespace vdec {

using namespace cmatrix::wire;

namespace {

Outcome getMatrix(RequestContext& c, const Message& m)
{
    return RequestRouter::with<Empty>(m, [&](const Empty&) {
        return RequestRouter::answer(MatrixGeometry { c.wall.cols(), c.wall.rows(), c.wall.name().toStdString() });
    });
}

Outcome setMatrix(RequestContext& c, const Message& m)
{
    return RequestRouter::with<MatrixGeometry>(
        m, [&](const MatrixGeometry& r) { return RequestRouter::status(c.wall.setGrid(r.cols, r.rows, r.name)); });
}

Outcome getScreens(RequestContext& c, const Message& m)
{
    return RequestRouter::with<Empty>(
        m, [&](const Empty&) { return RequestRouter::answer(ScreenList { c.wall.screens() }); });
}

Outcome setScreens(RequestContext& c, const Message& m)
{
    return RequestRouter::with<ScreenList>(
        m, [&](const ScreenList& r) { return RequestRouter::status(c.wall.setScreens(r.screens, r.reset)); });
}

Outcome setStatus(RequestContext& c, const Message& m)
{
    return RequestRouter::with<SetStatusRequest>(
        m, [&](const SetStatusRequest& r) { return RequestRouter::status(c.wall.setStatus(r.status, r.masterIp)); });
}

} // namespace

void WallRequests::registerIn(RequestRouter& router)
{
    router.add(MessageType::GetMatrix, RequestRouter::None, getMatrix);
    router.add(MessageType::SetMatrix, RequestRouter::Mutates, setMatrix);
    router.add(MessageType::GetScreens, RequestRouter::None, getScreens);
    router.add(MessageType::SetScreens, RequestRouter::Mutates, setScreens);
    router.add(MessageType::SetStatus, RequestRouter::Mutates, setStatus);
}

} // namespace vdec
