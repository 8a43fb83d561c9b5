#include "SessionRequests.h"

#include "RequestRouter.h"
#include "state/AccountBook.h"
#include "state/Wall.h"

#include "Messages.h"

namespace vdec {

using namespace cmatrix::wire;

namespace {

Outcome login(RequestContext& c, const Message& m)
{
    return RequestRouter::with<LoginRequest>(m, [&](const LoginRequest& r) {
        c.session.loggedIn = false;
        if (!c.activated)
            return Outcome { CMATRIX_ERR_NOT_ACTIVATED,
                RequestRouter::answer(LoginFailure { R"({"ERRCODE":"DEVNOACTIVE","PARAM":{}})" }).payload };
        const AccountBook::Verdict verdict = c.accounts.login(
            QString::fromStdString(r.user), QString::fromStdString(r.password), AccountBook::Clock::now());
        if (verdict.status != CMATRIX_OK)
            return Outcome { verdict.status, RequestRouter::answer(LoginFailure { verdict.errorJson }).payload };
        c.session.loggedIn = true;
        c.session.user = r.user;
        return RequestRouter::status(CMATRIX_OK);
    });
}

Outcome logout(RequestContext& c, const Message& m)
{
    return RequestRouter::with<Empty>(m, [&](const Empty&) {
        c.session.loggedIn = false;
        c.session.user.clear();
        return RequestRouter::status(CMATRIX_OK);
    });
}

Outcome setTime(RequestContext& c, const Message& m)
{
    return RequestRouter::with<SetTimeRequest>(m, [&](const SetTimeRequest& r) {
        return RequestRouter::status(c.wall.setTime(r.year, r.month, r.day, r.hour, r.minute, r.second));
    });
}

} // namespace

void SessionRequests::registerIn(RequestRouter& router)
{
    router.add(MessageType::Login, RequestRouter::Public, login);
    router.add(MessageType::Logout, RequestRouter::None, logout);
    router.add(MessageType::SetTime, RequestRouter::Mutates, setTime);
}

} // namespace vdec
