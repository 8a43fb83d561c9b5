#include "MediaRequests.h"

#include "RequestRouter.h"
#include "state/Wall.h"

#include "Messages.h"

namespace vdec {

using namespace cmatrix::wire;

namespace {

Outcome start(RequestContext& c, const Message& m)
{
    return RequestRouter::with<StartMediaRequest>(m, [&](const StartMediaRequest& r) {
        MediaDistribution d;
        if (const int32_t rc = c.wall.distributions().start(r.sourceName, r.channel, c.config.address, d))
            return RequestRouter::status(rc);
        return RequestRouter::answer(StartMediaAnswer { d.id, d.url.toStdString() });
    });
}

Outcome stop(RequestContext& c, const Message& m)
{
    return RequestRouter::with<IdRequest>(
        m, [&](const IdRequest& r) { return RequestRouter::status(c.wall.distributions().stop(r.id)); });
}

} // namespace

void MediaRequests::registerIn(RequestRouter& router)
{
    router.add(MessageType::StartMediaDistribute, RequestRouter::Mutates, start);
    router.add(MessageType::StopMediaDistribute, RequestRouter::Mutates, stop);
}

} // namespace vdec
