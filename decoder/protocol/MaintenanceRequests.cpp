#include "MaintenanceRequests.h"

#include "RequestRouter.h"
#include "core/DeviceUnit.h"
#include "state/AccountBook.h"
#include "state/PasswordPolicy.h"
#include "state/Wall.h"

#include "Messages.h"

namespace vdec {

using namespace cmatrix::wire;

namespace {

// The most entries one answer carries (the log holds no more anyway).
constexpr size_t kMaxLogAnswer = OperationLog::kCapacity;

int32_t outputsOf(const Wall& wall)
{
    return wall.cols() * wall.rows();
}

Outcome passwordModify(RequestContext& c, const Message& m)
{
    return RequestRouter::with<PasswordModifyRequest>(m, [&](const PasswordModifyRequest& r) {
        // The old password is checked as a login is, lock-out included, so this is no
        // way around it.
        const QString user = QString::fromStdString(r.user);
        const AccountBook::Verdict verdict
            = c.accounts.login(user, QString::fromStdString(r.oldPassword), AccountBook::Clock::now());
        if (verdict.status != CMATRIX_OK)
            return RequestRouter::status(verdict.status);
        if (!PasswordPolicy::accepts(r.newPassword))
            return RequestRouter::status(CMATRIX_ERR_WEAK_PASSWORD);
        c.accounts.setPassword(user, QString::fromStdString(r.newPassword));
        return RequestRouter::status(CMATRIX_OK);
    });
}

} // namespace

void MaintenanceRequests::registerIn(RequestRouter& router, DeviceUnit& unit)
{
    using R = RequestRouter;
    router.add(MessageType::FirmwareUpload, R::Mutates, [&unit](RequestContext& c, const Message& m) {
        return R::with<FileTransfer>(
            m, [&](const FileTransfer& r) { return R::status(unit.upgrade(r.content, c.session.outbox)); });
    });
    router.add(MessageType::FactoryReset, R::Mutates, [&unit](RequestContext&, const Message& m) {
        return R::with<Empty>(m, [&](const Empty&) { return R::status(unit.factoryReset()); });
    });
    router.add(MessageType::GetResolution, R::None, [&unit](RequestContext& c, const Message& m) {
        return R::with<ResolutionRecord>(m, [&](const ResolutionRecord& r) {
            ResolutionRecord answer;
            const int32_t rc = unit.resolution().get(r.resolution.outputIndex, outputsOf(c.wall), answer.resolution);
            return rc == CMATRIX_OK ? R::answer(answer) : R::status(rc);
        });
    });
    router.add(MessageType::SetResolution, R::Mutates, [&unit](RequestContext& c, const Message& m) {
        return R::with<ResolutionRecord>(m, [&](const ResolutionRecord& r) {
            return R::status(unit.resolution().set(r.resolution, r.setAll != 0, outputsOf(c.wall)));
        });
    });
    router.add(MessageType::PasswordModify, R::Mutates, passwordModify);
    router.add(MessageType::ExportConfig, R::None, [&unit](RequestContext&, const Message& m) {
        return R::with<Empty>(m, [&](const Empty&) {
            const QByteArray file = unit.exportConfig();
            return R::answer(FileTransfer { "config.json", Bytes(file.begin(), file.end()) });
        });
    });
    router.add(MessageType::ImportConfig, R::Mutates, [&unit](RequestContext&, const Message& m) {
        return R::with<FileTransfer>(m, [&](const FileTransfer& r) {
            const QByteArray file(reinterpret_cast<const char*>(r.content.data()), int(r.content.size()));
            return R::status(unit.importConfig(file));
        });
    });
    router.add(MessageType::GetLog, R::None, [&unit](RequestContext&, const Message& m) {
        return R::with<LogQuery>(m, [&](const LogQuery& r) {
            if (r.type < LOG_TYPE_ALL || r.type > LOG_TYPE_SYSTEM || r.begin > r.end)
                return R::status(CMATRIX_ERR_INVALID_PARAM);
            LogList answer { unit.operations().query(r.type, r.begin, r.end) };
            if (answer.logs.size() > kMaxLogAnswer) // the newest are the ones asked for
                answer.logs.erase(answer.logs.begin(), answer.logs.end() - kMaxLogAnswer);
            return R::answer(answer);
        });
    });
    router.add(MessageType::GetRunLog, R::None, [&unit](RequestContext&, const Message& m) {
        return R::with<Empty>(m, [&](const Empty&) {
            const QByteArray text = unit.runLog().text();
            return R::answer(FileTransfer { "run.log", Bytes(text.begin(), text.end()) });
        });
    });
}

} // namespace vdec
