#include "SceneRequests.h"

#include "RequestRouter.h"
#include "state/Wall.h"

#include "Messages.h"

namespace vdec {

using namespace cmatrix::wire;

namespace {

Outcome create(RequestContext& c, const Message& m)
{
    return RequestRouter::with<SceneCreateRequest>(m, [&](const SceneCreateRequest& r) {
        return RequestRouter::status(
            c.wall.scenes().create(r.id, r.name, c.wall.windows().windows(), c.wall.loops().runs()));
    });
}

Outcome get(RequestContext& c, const Message& m)
{
    return RequestRouter::with<Empty>(
        m, [&](const Empty&) { return RequestRouter::answer(SceneList { c.wall.scenes().list() }); });
}

Outcome apply(RequestContext& c, const Message& m)
{
    return RequestRouter::with<IdRequest>(m, [&](const IdRequest& r) {
        const Scene* scene = c.wall.scenes().find(r.id);
        if (!scene)
            return RequestRouter::status(CMATRIX_ERR_SCENE_NOT_FOUND);
        // The wall as it was, loops included; a loop whose scheme has gone since
        // leaves its window showing what it showed then.
        c.wall.windows().restore(scene->windows);
        c.wall.loops().adopt(scene->loops);
        c.wall.loops().resume(c.wall.windows(), c.wall.schemes(), LoopTable::Clock::now(), c.config.turnUnitMs, false);
        return RequestRouter::status(CMATRIX_OK);
    });
}

Outcome del(RequestContext& c, const Message& m)
{
    return RequestRouter::with<IdList>(
        m, [&](const IdList& r) { return RequestRouter::status(c.wall.scenes().remove(r.ids)); });
}

} // namespace

void SceneRequests::registerIn(RequestRouter& router)
{
    router.add(MessageType::SceneCreate, RequestRouter::Mutates, create);
    router.add(MessageType::SceneGet, RequestRouter::None, get);
    router.add(MessageType::SceneApply, RequestRouter::Mutates, apply);
    router.add(MessageType::SceneDelete, RequestRouter::Mutates, del);
}

} // namespace vdec
