#include "DecoderCore.h"

#include "FaultPlan.h"
#include "Journal.h"
#include "monitor/WallMimic.h"
#include "protocol/DiscoveryRequests.h"
#include "protocol/InputRequests.h"
#include "protocol/MaintenanceRequests.h"
#include "protocol/MediaRequests.h"
#include "protocol/OutputRequests.h"
#include "protocol/SceneRequests.h"
#include "protocol/SchemeRequests.h"
#include "protocol/SessionRequests.h"
#include "protocol/SourceRequests.h"
#include "protocol/WallRequests.h"
#include "protocol/WindowRequests.h"
#include "state/UsbStorage.h"
#include "state/WallJson.h"

#include "Messages.h"

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
    , frames_(pictures_, config.decodeAtShownSize, config.pictureIntervalMs)
    , video_(pictures_)
{
    SessionRequests::registerIn(router_);
    WallRequests::registerIn(router_);
    WindowRequests::registerIn(router_);
    SourceRequests::registerIn(router_);
    MediaRequests::registerIn(router_);
    SceneRequests::registerIn(router_);
    SchemeRequests::registerIn(router_);
    OutputRequests::registerIn(router_);
    InputRequests::registerIn(router_);
    unit_ = std::make_unique<DeviceUnit>(config_, mutex_,
        DeviceUnit::Hooks { [this] { return toJson(); }, [this](const QJsonObject& state) { return apply(state); },
            [this] { resetToFactory(); }, [this] { save(); } });
    MaintenanceRequests::registerIn(router_, *unit_);
    accounts_.setPassword(config.adminUser, config.adminPassword);
    if (!UsbStorage(config.stateDir).prepare())
        qWarning().noquote() << "no USB folder in" << config.stateDir;
    clock_.start([this](LoopClock::Clock::time_point now) {
        std::lock_guard<std::mutex> lock(mutex_);
        const auto next = wall_.loops().advance(wall_.windows(), wall_.schemes(), now, config_.turnUnitMs);
        video_.reconcile(wall_); // a loop that turned shows other streams
        return next;
    });
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
        || !unit_->fromJson(o) || !accounts_.fromJson(o.value("accounts").toArray())) {
        *why = QStringLiteral("%1: unusable state").arg(file_.path());
        return false;
    }
    if (dropped > 0)
        qWarning().noquote() << file_.path() << ": dropped" << dropped << "invalid windows";
    wall_ = std::move(wall);
    activated_ = o.value("activated").toBool(true);
    // Loops that ran before go on turning, from where the file left them.
    wall_.loops().resume(wall_.windows(), wall_.schemes(), LoopClock::Clock::now(), config_.turnUnitMs, true);
    video_.reconcile(wall_);
    clock_.wake();
    return true;
}

QJsonObject DecoderCore::toJson() const
{
    QJsonObject o {
        { "format", kStateFormat },
        { "deviceId", config_.deviceId },
        { "activated", activated_ },
        { "accounts", accounts_.toJson() },
        { "wall", WallJson::toJson(wall_) },
    };
    unit_->toJson(o);
    return o;
}

void DecoderCore::settle()
{
    // A request may have taken away windows that loops or the audio were using.
    wall_.loops().prune(wall_.windows(), wall_.schemes());
    wall_.outputs().prune(wall_.windows());
    pictures_.prune(wall_); // or showing pictures in
    video_.reconcile(wall_); // or playing streams in
}

void DecoderCore::halt()
{
    clock_.stop();
    unit_->stopJobs();
    video_.stopAll();
}

RequestContext DecoderCore::contextFor(Session& session)
{
    return RequestContext { session, wall_, accounts_, activated_, config_ };
}

void DecoderCore::resetToFactory()
{
    wall_ = Wall();
    accounts_ = AccountBook(config_.maxFailedLogins, config_.lockSeconds);
    accounts_.setPassword(config_.adminUser, config_.adminPassword);
    activated_ = false;
    settle();
    clock_.wake();
}

bool DecoderCore::apply(const QJsonObject& state)
{
    const QJsonObject previous = toJson();
    QString why;
    if (restore(state, &why))
        return true;
    // Restoring parses before it assigns, so nothing should have changed; this makes sure.
    restore(previous, &why);
    return false;
}

void DecoderCore::setPorts(quint16 control, quint16 discovery, quint16 http)
{
    std::lock_guard<std::mutex> lock(mutex_);
    unit_->setPorts(control, discovery, http);
}

void DecoderCore::note(const Session& session, const Message& message, const Outcome& outcome)
{
    const MessageType type = requestOf(message.type());
    const QString connection = QStringLiteral("connection %1: ").arg(session.connectionId);
    const QString result = outcome.status == CMATRIX_OK ? QStringLiteral("accepted")
                                                        : QStringLiteral("refused (%1)").arg(outcome.status);
    if (type == MessageType::Login) {
        LoginRequest login;
        message.decode(login);
        const QString user = QString::fromStdString(login.user).left(32);
        unit_->runLog().add(connection + QStringLiteral("login as %1 %2").arg(user, result));
    } else if (outcome.status != CMATRIX_OK) {
        unit_->runLog().add(connection + OperationLog::describe(uint16_t(type)) + ' ' + result);
    }
}

std::optional<std::vector<uint8_t>> DecoderCore::processDatagram(const std::vector<uint8_t>& datagram)
{
    WireHeader h;
    if (WireHeader::decode(datagram.data(), datagram.size(), h) != WireHeader::Parse::Ok
        || h.length != datagram.size() - WireHeader::kSize || isResponse(h.type))
        return std::nullopt;
    Message message;
    message.header = h;
    message.payload.assign(datagram.begin() + WireHeader::kSize, datagram.end());
    journal_.record(h.type, h.requestId, h.length, 0);

    Session nobody; // requests on this port carry their own credentials
    DiscoveryRequests::Result result;
    {
        std::lock_guard<std::mutex> lock(mutex_);
        RequestContext context = contextFor(nobody);
        result = DiscoveryRequests::handle(context, *unit_, message);
        if (result.changed)
            save();
    }
    if (!result.answer)
        return std::nullopt;
    return frame(uint16_t(h.type | kResponseFlag), h.requestId, result.answer->status, result.answer->payload);
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
    } else if (fault.payload) {
        outcome.payload = *fault.payload;
    } else if (requestOf(h.type) == MessageType::WallSnapshot) {
        outcome = wallSnapshot(session, message); // draws without the state lock
    } else if (FrameIngest::handles(requestOf(h.type))) {
        outcome = frames_.ingest(session, message, mutex_, wall_); // takes mutex_ only briefly
    } else {
        std::lock_guard<std::mutex> lock(mutex_);
        RequestContext context = contextFor(session);
        RequestRouter::Result result = router_.route(context, message);
        note(session, message, result.outcome);
        if (result.changed) {
            unit_->record(LOG_TYPE_OPERATION, QString::fromStdString(session.user),
                OperationLog::describe(uint16_t(requestOf(h.type))));
            settle();
            save();
            clock_.wake();
        }
        outcome = std::move(result.outcome);
    }
    if (unit_->takeRebootRequest() && rebootHook_)
        rebootHook_();
    Reply reply { Reply::Action::Send,
        frame(uint16_t(h.type | kResponseFlag), h.requestId, outcome.status, outcome.payload), fault.delayMs };
    if (fault.garbage)
        reply.bytes = FaultPlan::garble(*fault.garbage, reply.bytes);
    return reply;
}

Outcome DecoderCore::wallSnapshot(const Session& session, const Message& message) const
{
    if (!session.loggedIn)
        return RequestRouter::status(CMATRIX_ERR_NOT_LOGGED_IN);
    WallSnapshotRequest request;
    if (!message.decode(request))
        return RequestRouter::status(CMATRIX_ERR_PROTOCOL);
    if (!WallMimic::acceptable(request.width, request.height))
        return RequestRouter::status(CMATRIX_ERR_INVALID_PARAM);
    WallSnapshotAnswer answer;
    const QByteArray jpeg = WallMimic::jpeg(snapshot(), request.width, request.height);
    if (jpeg.isEmpty())
        return RequestRouter::status(CMATRIX_ERR_FAILED);
    answer.jpeg.assign(jpeg.begin(), jpeg.end());
    return RequestRouter::answer(answer);
}

DecoderSnapshot DecoderCore::snapshot() const
{
    frames_.decodePending(); // outside the state lock: decoding must not hold up requests
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
    unit_->fill(s);
    s.distributions = wall_.distributions().all();
    for (const auto& [id, scene] : wall_.scenes().scenes())
        s.scenes.push_back(scene);
    for (const auto& [id, scheme] : wall_.schemes().schemes())
        s.schemes.push_back(scheme);
    s.loops = wall_.loops().runs();
    s.banner = wall_.outputs().banner();
    s.screenColors = wall_.outputs().screenColors();
    s.audio = wall_.outputs().audio();
    s.media = pictures_.collect(wall_);
    s.video = video_.status();
    return s;
}

} // namespace vdec
