#include "WorkerRig.h"

#include "LoopbackPool.h"
#include "TestTimeout.h"

#include "LogInfo.h"
#include "SystemAssistant.h"

#include <QtTest>

#include <climits>
#include <cstring>

using kvms_matrix::CSharedHandle;
using kvms_matrix::MatrixInfo;
using kvms_matrix::MatrixSdkWorker;
using kvmstest::scaled;

namespace {

template <size_t N> void putText(char (&field)[N], const QByteArray& text)
{
    std::memset(field, 0, N);
    std::memcpy(field, text.constData(), std::min(N, size_t(text.size())));
}

} // namespace

WorkerRig::Handle WorkerRig::rawConnection(const vdec::VirtualDecoder* decoder)
{
    Handle handle(new CSharedHandle(CMatrix_Create()));
    handle->setIp(decoder->address());
    const int rc = CMatrix_Connect(handle->handle(), decoder->address().toLatin1().constData(), decoder->port(),
        "admin", "admin123", scaled(3000));
    return rc == CMATRIX_OK ? handle : Handle();
}

QByteArray WorkerRig::targetOf(const vdec::VirtualDecoder* decoder)
{
    return QStringLiteral("%1:%2").arg(decoder->address()).arg(decoder->udpPort()).toLatin1();
}

QStringList WorkerRig::describe(const InfoMap& map)
{
    QStringList lines;
    for (auto it = map.begin(); it != map.end(); ++it) {
        const MatrixInfo& m = it.value();
        lines << QStringLiteral("%1: ip=%2 id=%3 type=%4 port=%5 manager=%6 screens=%7 status=%8 version=%9")
                     .arg(it.key(), m.ip, m.id)
                     .arg(m.type)
                     .arg(m.port)
                     .arg(m.manager_port)
                     .arg(m.screenCnt)
                     .arg(m.status)
                     .arg(m.version);
    }
    return lines;
}

bool WorkerRig::setUp()
{
    SystemAssistant::setMessageSink([](const QString&) {});
    if (!workDir_.isValid() || !worker())
        return false;
    vms_sdk::set_log_file(workDir_.filePath("client.log"));
    return true;
}

bool WorkerRig::settle()
{
    // The disconnect tasks run while the decoders still live.
    MatrixSdkWorker* w = worker();
    const bool settled = settleWorker();
    if (!w->isRunning() || !w->isWorkerRunning()) {
        for (const QString& ip : w->registeredHandles().keys())
            w->removeHandle(ip);
    }
    fixture_.cleanup();
    SystemAssistant::clearRecentMessages();
    return settled;
}

QString WorkerRig::spare(int index)
{
    while (spares_.size() <= index)
        spares_.append(kvmstest::LoopbackPool::claim());
    return spares_.at(index);
}

vdec::VirtualDecoder* WorkerRig::startQuiet(const kvmstest::DecoderFixture::Tweak& tweak)
{
    return fixture_.startDecoder(0, [&](vdec::DecoderConfig& c) {
        c.httpPort = -1;
        if (tweak)
            tweak(c);
    });
}

WorkerRig::InfoMap WorkerRig::search(const QByteArray& targets)
{
    if (Discovery_SetTargets(targets.constData()) != CMATRIX_OK) {
        qWarning() << "targets refused:" << targets;
        return {};
    }
    QueuedSignalSpy results(worker(), &MatrixSdkWorker::signalSearchMatrixResult);
    worker()->searchMatrix();
    if (!results.wait(scaled(6000))) {
        qWarning() << "no search result";
        return {};
    }
    return results.first().at(0).value<InfoMap>();
}

int WorkerRig::changeAddress(const vdec::VirtualDecoder* decoder, const QString& formerIp, const QString& newIp,
    int type, const QString& password, const QString& mask)
{
    MatrixInfo current;
    current.ip = formerIp;
    MatrixInfo target;
    target.id = decoder->config().deviceId;
    target.ip = formerIp;
    target.port = decoder->port();
    target.username = QStringLiteral("admin");
    target.password = password;
    DeviceNetworkCfg_t cfg {};
    putText(cfg.ipv4, newIp.toLatin1());
    putText(cfg.mask, mask.toLatin1());
    putText(cfg.gateway, "192.168.1.1");
    putText(cfg.dns, "192.168.1.2");
    putText(cfg.ipv6, "fe80::20");
    cfg.prefixV6 = 64;
    putText(cfg.gatewayV6, "fe80::1");

    QueuedSignalSpy results(worker(), &MatrixSdkWorker::signalSetMatrixNetworkResult);
    worker()->setMatrixNetworkConfig({}, current, target, cfg, type, nullptr);
    if (!results.wait(scaled(6000)))
        return INT_MIN;
    const QVariantList args = results.first();
    if (args.at(1).toString() != newIp || args.at(2).toString() != formerIp) {
        qWarning() << "addresses reported:" << args;
        return INT_MIN;
    }
    return args.at(0).toInt();
}
