#include "DecoderCore.h"

#include "FaultPlan.h"
#include "Journal.h"
#include "protocol/SessionRequests.h"
#include "protocol/SourceRequests.h"
#include "protocol/WallRequests.h"
#include "protocol/WindowRequests.h"
#include "state/WallJson.h"

#include <QJsonArray>
#include <QtDebug>

namespace vdec {

using namespace cmatrix::wire;

namespace {

constexpr int kStateFormat = 1;

std::vector<uint8_t> frame(uint16_t type, uint32_t requestId, int32_t status, const std::vector<uint8_t>& payload)
{
    std::vector<uint8_t> out(WireHeader::kSize);
    WireHeader h;
    h.type = type;
    h.requestId = requestId;
    h.status = status;
    h.length = uint32_t(payload.size());
    h.encode(out.data());
    out.insert(out.end(), payload.begin(), payload.end());
    return out;
}

} // namespace

DecoderCore::DecoderCore(const DecoderConfig& config, Journal& journal, FaultPlan& faults)
    : config_(config)
    , journal_(journal)
    , faults_(faults)
    , accounts_(config.maxFailedLogins, config.lockSeconds)
    , activated_(!config.factoryNew)
    , file_(config.stateDir)
{
    SessionRequests::registerIn(router_);
    WallRequests::registerIn(router_);
    WindowRequests::registerIn(router_);
    SourceRequests::registerIn(router_);
    accounts_.setPassword(config.adminUser, config.adminPassword);
}

bool DecoderCore::load(QString* error)
{
    std::lock_guard<std::mutex> lock(mutex_);
    QJsonObject o;
    QString why;
    const StateFile::Load result = file_.load(o, &why);
    if (result == StateFile::Load::Loaded && restore(o, &why))
        return true;
    if (result != StateFile::Load::Missing) {
        // As a unit with a broken configuration would: back to factory settings.
        qWarning().noquote() << why << "- starting factory-fresh";
        file_.setAside();
    }
    // Written at once, so the directory shows what the unit starts with, and a
    // directory that cannot be written is found now rather than at the first change.
    return file_.save(toJson(), error);
}

bool DecoderCore::restore(const QJsonObject& o, QString* why)
{
    Wall wall;
    int dropped = 0;
    if (o.value("format").toInt() != kStateFormat || !WallJson::fromJson(o.value("wall").toObject(), wall, &dropped)
        || !accounts_.fromJson(o.value("accounts").toArray())) {
        *why = QStringLiteral("%1: unusable state").arg(file_.path());
        return false;
    }
    if (dropped > 0)
        qWarning().noquote() << file_.path() << ": dropped" << dropped << "invalid windows";
    wall_ = std::move(wall);
    activated_ = o.value("activated").toBool(true);
    return true;
}

QJsonObject DecoderCore::toJson() const
{
    return QJsonObject {
        { "format", kStateFormat },
        { "deviceId", config_.deviceId },
        { "activated", activated_ },
        { "accounts", accounts_.toJson() },
        { "wall", WallJson::toJson(wall_) },
    };
}

void DecoderCore::save()
{
    QString error;
    if (!file_.save(toJson(), &error))
        qWarning().noquote() << "state not saved:" << error;
}

Reply DecoderCore::process(Session& session, const Message& message)
{
    const WireHeader& h = message.header;
    journal_.record(h.type, h.requestId, h.length, session.connectionId);
    // Heartbeats need no answer, and neither does anything the client sends as an answer.
    if (isResponse(h.type) || requestOf(h.type) == MessageType::Heartbeat)
        return {};

    const FaultPlan::Decision fault = faults_.onRequest(requestOf(h.type));
    if (fault.close)
        return Reply { Reply::Action::Close, {}, 0 };
    if (fault.swallow)
        return {};

    Outcome outcome;
    if (fault.failWith) {
        outcome.status = *fault.failWith;
    } else {
        std::lock_guard<std::mutex> lock(mutex_);
        RequestContext context { session, wall_, accounts_, activated_, config_ };
        RequestRouter::Result result = router_.route(context, message);
        if (result.changed)
            save();
        outcome = std::move(result.outcome);
    }
    Reply reply { Reply::Action::Send,
        frame(uint16_t(h.type | kResponseFlag), h.requestId, outcome.status, outcome.payload), fault.delayMs };
    if (fault.garbage)
        reply.bytes = FaultPlan::garble(*fault.garbage, reply.bytes);
    return reply;
}

DecoderSnapshot DecoderCore::snapshot() const
{
    std::lock_guard<std::mutex> lock(mutex_);
    DecoderSnapshot s;
    s.cols = wall_.cols();
    s.rows = wall_.rows();
    s.name = wall_.name();
    s.screens = wall_.screens();
    s.windows = wall_.windows().windows();
    s.clockOffsetSecs = wall_.clockOffsetSecs();
    s.lastSetTime = wall_.lastSetTime();
    s.status = wall_.status();
    s.masterIp = wall_.masterIp();
    s.activated = activated_;
    s.accounts = accounts_.states(AccountBook::Clock::now());
    return s;
}

} // namespace vdec
