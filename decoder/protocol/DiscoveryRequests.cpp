#include "DiscoveryRequests.h"

#include "core/DeviceUnit.h"
#include "state/AccountBook.h"
#include "state/PasswordPolicy.h"

#include "Messages.h"

namespace vdec {

using namespace cmatrix::wire;

namespace {

using Result = DiscoveryRequests::Result;

constexpr int32_t kMaxIdentifySeconds = 3600;

Result answered(const Outcome& outcome, bool changed = false)
{
    return Result { outcome, changed && outcome.status == CMATRIX_OK };
}

Result silent()
{
    return Result {};
}

// Checks the credentials a set-up request carries as a login would (a wrong password
// counts towards the lock-out); only the administrator may change a unit.
int32_t authenticate(RequestContext& c, const std::string& user, const std::string& password)
{
    if (!c.activated)
        return CMATRIX_ERR_NOT_ACTIVATED;
    const AccountBook::Verdict verdict
        = c.accounts.login(QString::fromStdString(user), QString::fromStdString(password), AccountBook::Clock::now());
    if (verdict.status == CMATRIX_ERR_USER_LOCKED)
        return CMATRIX_ERR_USER_LOCKED;
    if (verdict.status != CMATRIX_OK || QString::fromStdString(user) != c.config.adminUser)
        return CMATRIX_ERR_AUTH;
    return CMATRIX_OK;
}

bool isThisUnit(const DeviceUnit& unit, const std::string& devId)
{
    return !devId.empty() && QString::fromStdString(devId) == unit.config().deviceId;
}

template <class Body, class F> Result with(const Message& m, F&& f)
{
    // A body that does not parse may not even name this unit: dropped unanswered.
    Body body;
    if (!m.decode(body))
        return silent();
    return f(body);
}

Result probe(RequestContext& c, DeviceUnit& unit, const Message& m)
{
    return with<Empty>(m, [&](const Empty&) {
        return answered(RequestRouter::answer(DiscoveryAnswer { unit.discoveryAnswer(c.activated) }));
    });
}

Result getNetwork(DeviceUnit& unit, const Message& m)
{
    return with<DeviceIdRequest>(m, [&](const DeviceIdRequest& r) {
        if (!isThisUnit(unit, r.devId))
            return silent();
        return answered(RequestRouter::answer(NetworkRecord { unit.networkRecord() }));
    });
}

Result setupNetwork(RequestContext& c, DeviceUnit& unit, const Message& m)
{
    return with<SetupNetworkRequest>(m, [&](const SetupNetworkRequest& r) {
        if (!isThisUnit(unit, r.devId))
            return silent();
        int32_t rc = authenticate(c, r.user, r.password);
        if (rc == CMATRIX_OK)
            rc = unit.network().set(r.cfg);
        if (rc == CMATRIX_OK) {
            unit.record(LOG_TYPE_OPERATION, QString::fromStdString(r.user),
                QStringLiteral("Network settings changed, address %1").arg(unit.network().ipv4()));
        }
        unit.runLog().add(QStringLiteral("network settings change: result %1").arg(rc));
        return answered(RequestRouter::status(rc), true);
    });
}

Result activate(RequestContext& c, DeviceUnit& unit, const Message& m)
{
    return with<ActivateRequest>(m, [&](const ActivateRequest& r) {
        if (!isThisUnit(unit, r.devId) && (!r.devId.empty() || !unit.isAddressed(r.ip)))
            return silent();
        int32_t rc = CMATRIX_OK;
        if (c.activated)
            rc = CMATRIX_ERR_ALREADY_ACTIVE;
        else if (QString::fromStdString(r.user) != c.config.adminUser)
            rc = CMATRIX_ERR_AUTH;
        else if (!PasswordPolicy::accepts(r.password))
            rc = CMATRIX_ERR_WEAK_PASSWORD;
        if (rc == CMATRIX_OK) {
            c.accounts.setPassword(c.config.adminUser, QString::fromStdString(r.password));
            c.activated = true;
            unit.record(LOG_TYPE_OPERATION, c.config.adminUser, QStringLiteral("Unit activated"));
        }
        unit.runLog().add(QStringLiteral("activation: result %1").arg(rc));
        return answered(RequestRouter::status(rc), true);
    });
}

Result displayScreen(RequestContext& c, DeviceUnit& unit, const Message& m)
{
    return with<DisplayScreenRequest>(m, [&](const DisplayScreenRequest& r) {
        if (!unit.isAddressed(r.ip))
            return silent();
        int32_t rc = authenticate(c, r.user, r.password);
        if (rc == CMATRIX_OK && (r.seconds < 0 || r.seconds > kMaxIdentifySeconds || r.location < 0))
            rc = CMATRIX_ERR_INVALID_PARAM;
        if (rc == CMATRIX_OK) {
            unit.identify(r.location, r.seconds);
            unit.record(LOG_TYPE_OPERATION, QString::fromStdString(r.user),
                r.seconds > 0 ? QStringLiteral("Screen numbers shown for %1 s").arg(r.seconds)
                              : QStringLiteral("Screen numbers hidden"));
        }
        // Identification is not kept over a restart, but the log entry is.
        return answered(RequestRouter::status(rc), true);
    });
}

} // namespace

DiscoveryRequests::Result DiscoveryRequests::handle(RequestContext& c, DeviceUnit& unit, const Message& m)
{
    switch (requestOf(m.type())) {
    case MessageType::DiscoveryProbe:
        return probe(c, unit, m);
    case MessageType::GetNetwork:
        return getNetwork(unit, m);
    case MessageType::SetupNetwork:
        return setupNetwork(c, unit, m);
    case MessageType::Activate:
        return activate(c, unit, m);
    case MessageType::DisplayScreen:
        return displayScreen(c, unit, m);
    default:
        // Session requests have no business on this port; a stray one gets no answer,
        // so the port cannot be used to reflect traffic elsewhere.
        return silent();
    }
}

} // namespace vdec
