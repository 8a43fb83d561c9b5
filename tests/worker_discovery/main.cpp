#include "WorkerDiscoveryTests.h"

#include "FakeAnswerer.h"
#include "QueuedSignalSpy.h"
#include "TestMain.h"
#include "TestTimeout.h"

#include "KSingleton.h"
#include "LogInfo.h"
#include "SystemAssistant.h"

#include <climits>
#include <cstring>

using kvms_matrix::MatrixInfo;
using kvms_matrix::MatrixSdkWorker;
using kvmstest::scaled;

namespace {

// A discovery round lasts 320 ms: waiting this long past a result shows whether another follows.
constexpr int kPastOneRoundMs = 450;

template <size_t N> void putText(char (&field)[N], const QByteArray& text)
{
    std::memset(field, 0, N);
    std::memcpy(field, text.constData(), std::min(N, size_t(text.size())));
}

} // namespace

MatrixSdkWorker* TestWorkerDiscovery::worker()
{
    return KCOMMON::KSingleton<MatrixSdkWorker>::instance();
}

QByteArray TestWorkerDiscovery::targetOf(const vdec::VirtualDecoder* decoder)
{
    return QStringLiteral("%1:%2").arg(decoder->address()).arg(decoder->udpPort()).toLatin1();
}

QStringList TestWorkerDiscovery::describe(const InfoMap& map)
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

vdec::VirtualDecoder* TestWorkerDiscovery::startDecoder(int host, const kvmstest::DecoderFixture::Tweak& tweak)
{
    return fixture_.startDecoder(host, [&](vdec::DecoderConfig& c) {
        c.httpPort = -1;
        if (tweak)
            tweak(c);
    });
}

TestWorkerDiscovery::InfoMap TestWorkerDiscovery::search(const QByteArray& targets, int* published)
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
    if (published) {
        QTest::qWait(kPastOneRoundMs);
        *published = results.count();
    }
    return results.first().at(0).value<InfoMap>();
}

int TestWorkerDiscovery::changeAddress(const vdec::VirtualDecoder* decoder, const QString& formerIp,
    const QString& newIp, int type, const QString& password, const QString& mask)
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

void TestWorkerDiscovery::initTestCase()
{
    QVERIFY(dir_.isValid());
    vms_sdk::set_log_file(dir_.filePath("client.log"));
    SystemAssistant::setMessageSink([](const QString&) {});
    // The network tasks do not start the worker's thread; a first search does, as for an operator.
    // Nobody answers, and the result still comes, once, after all three rounds of three probes.
    FakeAnswerer mute(QStringLiteral("127.0.0.183"), QStringLiteral("127.0.0.184"),
        [](uint32_t) { return std::vector<FakeAnswerer::Datagram>(); });
    QVERIFY(mute.isValid());
    int published = 0;
    QVERIFY(search(mute.target(), &published).isEmpty());
    QCOMPARE(published, 1);
    QCOMPARE(mute.probes(), 9);
    QVERIFY(worker()->isWorkerRunning());
}

void TestWorkerDiscovery::cleanup()
{
    // Logins made after an activation leave connections: ended while their decoders still run.
    worker()->disconnectAllMatrix();
    QTRY_VERIFY_WITH_TIMEOUT(
        worker()->registeredHandles().isEmpty() && worker()->pendingTaskCount() == 0, scaled(10000));
    fixture_.cleanup();
    SystemAssistant::clearRecentMessages();
}

KVMS_TEST_MAIN(TestWorkerDiscovery)
