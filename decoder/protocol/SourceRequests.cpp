#include "SourceRequests.h"

#include "RequestRouter.h"
#include "state/Wall.h"

#include "Messages.h"

namespace vdec {

using namespace cmatrix::wire;

namespace {

Outcome add(RequestContext& c, const Message& m)
{
    return RequestRouter::with<WindowDevices>(m, [&](const WindowDevices& r) {
        return RequestRouter::status(
            c.wall.windows().addSources(r.windowId, r.devices, r.reset, c.config.uniqueCameras));
    });
}

Outcome del(RequestContext& c, const Message& m)
{
    return RequestRouter::with<WindowDevices>(m, [&](const WindowDevices& r) {
        return RequestRouter::status(c.wall.windows().removeSources(r.windowId, r.devices, r.reset));
    });
}

Outcome get(RequestContext& c, const Message& m)
{
    return RequestRouter::with<WindowIdRequest>(m, [&](const WindowIdRequest& r) {
        const Window* w = c.wall.windows().find(r.windowId);
        if (!w)
            return RequestRouter::status(CMATRIX_ERR_WINDOW_NOT_FOUND);
        WindowDevices answer;
        answer.windowId = r.windowId;
        for (const auto& [sub, device] : w->sources)
            answer.devices.push_back(device);
        return RequestRouter::answer(answer);
    });
}

} // namespace

void SourceRequests::registerIn(RequestRouter& router)
{
    router.add(MessageType::WindowDeviceAdd, RequestRouter::Mutates, add);
    router.add(MessageType::WindowDeviceDel, RequestRouter::Mutates, del);
    router.add(MessageType::WindowDeviceGet, RequestRouter::None, get);
}

} // namespace vdec
