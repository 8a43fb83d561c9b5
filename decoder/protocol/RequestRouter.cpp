#include "RequestRouter.h"

namespace vdec {

void RequestRouter::add(Type type, int flags, Handler handler)
{
    entries_[type] = Entry { flags, std::move(handler) };
}

RequestRouter::Result RequestRouter::route(RequestContext& context, const cmatrix::wire::Message& message) const
{
    auto it = entries_.find(cmatrix::wire::requestOf(message.type()));
    const bool isPublic = it != entries_.end() && (it->second.flags & Public);
    // Nothing, not even which requests exist, is told before a login.
    if (!context.session.loggedIn && !isPublic)
        return { status(CMATRIX_ERR_NOT_LOGGED_IN), false };
    if (it == entries_.end())
        return { status(CMATRIX_ERR_NOT_SUPPORTED), false };
    Outcome outcome = it->second.handler(context, message);
    const bool changed = outcome.status == CMATRIX_OK && (it->second.flags & Mutates);
    return { std::move(outcome), changed };
}

} // namespace vdec
