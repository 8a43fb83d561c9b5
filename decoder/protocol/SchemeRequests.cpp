#include "SchemeRequests.h"

#include "RequestRouter.h"
#include "state/Wall.h"

#include "Messages.h"

namespace vdec {

using namespace cmatrix::wire;

namespace {

Outcome set(RequestContext& c, const Message& m)
{
    return RequestRouter::with<SchemeRecord>(
        m, [&](const SchemeRecord& r) { return RequestRouter::status(c.wall.schemes().set(r.scheme)); });
}

Outcome get(RequestContext& c, const Message& m)
{
    return RequestRouter::with<Empty>(
        m, [&](const Empty&) { return RequestRouter::answer(SchemeList { c.wall.schemes().list() }); });
}

Outcome del(RequestContext& c, const Message& m)
{
    return RequestRouter::with<IdList>(m, [&](const IdList& r) {
        const int32_t rc = c.wall.schemes().remove(r.ids);
        if (rc == CMATRIX_OK) // windows that turned them stop, and are left empty
            c.wall.loops().prune(c.wall.windows(), c.wall.schemes());
        return RequestRouter::status(rc);
    });
}

Outcome addDevices(RequestContext& c, const Message& m)
{
    return RequestRouter::with<SchemeDevices>(m, [&](const SchemeDevices& r) {
        const int32_t rc = c.wall.schemes().addDevices(r.schemeId, r.devices, r.reset);
        if (rc == CMATRIX_OK) // a scheme left without sources stops turning
            c.wall.loops().prune(c.wall.windows(), c.wall.schemes());
        return RequestRouter::status(rc);
    });
}

Outcome getDevices(RequestContext& c, const Message& m)
{
    return RequestRouter::with<IdRequest>(m, [&](const IdRequest& r) {
        const Scheme* scheme = c.wall.schemes().find(r.id);
        if (!scheme)
            return RequestRouter::status(CMATRIX_ERR_SCHEME_NOT_FOUND);
        return RequestRouter::answer(SchemeDevices { r.id, scheme->devices, false });
    });
}

Outcome select(RequestContext& c, const Message& m)
{
    return RequestRouter::with<SchemeSelectRequest>(m, [&](const SchemeSelectRequest& r) {
        return RequestRouter::status(c.wall.loops().select(c.wall.windows(), c.wall.schemes(), r.windowId, r.schemeId,
            r.startIndex, LoopTable::Clock::now(), c.config.turnUnitMs));
    });
}

Outcome displayInTurn(RequestContext& c, const Message& m)
{
    return RequestRouter::with<DisplayInTurnRequest>(m, [&](const DisplayInTurnRequest& r) {
        return RequestRouter::status(c.wall.loops().setEnabled(c.wall.windows(), r.windowId, r.enable));
    });
}

} // namespace

void SchemeRequests::registerIn(RequestRouter& router)
{
    router.add(MessageType::SchemeSet, RequestRouter::Mutates, set);
    router.add(MessageType::SchemeGet, RequestRouter::None, get);
    router.add(MessageType::SchemeDel, RequestRouter::Mutates, del);
    router.add(MessageType::SchemeAddDevices, RequestRouter::Mutates, addDevices);
    router.add(MessageType::SchemeGetDevices, RequestRouter::None, getDevices);
    router.add(MessageType::SchemeSelect, RequestRouter::Mutates, select);
    router.add(MessageType::WindowSetDisplayInTurn, RequestRouter::Mutates, displayInTurn);
}

} // namespace vdec
