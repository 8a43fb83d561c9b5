#include "SessionRequests.h"

#include "RequestRouter.h"
#include "state/AccountBook.h"
#include "state/DistributionBook.h"
#include "state/OperationLog.h"
#include "state/SceneBook.h"
#include "state/SchemeBook.h"
#include "state/UsbStorage.h"
#include "state/Wall.h"
#include "state/WindowTable.h"

#include "Messages.h"
#include "PayloadWriter.h"

namespace vdec {

using namespace cmatrix::wire;

namespace {

// What this unit holds, told to the client with every accepted login, so a client can refuse
// a layout before it deletes anything, and refuse any list longer than this.
MatrixCapacity_t declaredCapacity()
{
    MatrixCapacity_t c {};
    c.maxCols = Wall::kMaxGrid;
    c.maxRows = Wall::kMaxGrid;
    c.maxWindows = WindowTable::kMaxWindows;
    c.maxDivision = 25;
    c.maxScreens = Wall::kMaxGrid * Wall::kMaxGrid;
    c.maxScenes = SceneBook::kMaxScenes;
    c.maxSchemes = SchemeBook::kMaxSchemes;
    c.maxSchemeDevices = SchemeBook::kMaxDevices;
    c.maxFiles = UsbStorage::kMaxEntries;
    c.maxLogs = int32_t(OperationLog::kCapacity);
    c.maxDistributions = DistributionBook::kMaxDistributions;
    return c;
}

// The answer of every accepted login. Room is made first: growing from empty, GCC 12 takes the
// record's copy for an overflow (-Wstringop-overflow), which it is not.
Outcome accepted()
{
    Outcome out;
    out.payload.reserve(sizeof(MatrixCapacity_t));
    PayloadWriter writer(out.payload);
    LoginAccepted { declaredCapacity() }.visit(writer);
    return out;
}

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
        return accepted();
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
