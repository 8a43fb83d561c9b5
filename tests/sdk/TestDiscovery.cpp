// Discovery and set-up over UDP, through the real SDK, against in-process decoders.

#include "DecoderFixture.h"
#include "LoopbackPool.h"
#include "RawUdp.h"
#include "SuiteMain.h"
#include "TestTimeout.h"

#include "Messages.h"

#include <QtTest>

#include <algorithm>
#include <atomic>
#include <mutex>

using namespace cmatrix::wire;
using kvmstest::scaled;

namespace {

// Rounds long enough for the first probe's answers to arrive on a loaded machine;
// exact counts of answers are only asserted on longer rounds.
constexpr int kRoundCentis = 25;

QByteArray targetOf(const vdec::VirtualDecoder* d)
{
    return QStringLiteral("%1:%2").arg(d->address()).arg(d->udpPort()).toLatin1();
}

// What discovery rounds report through the SDK's callback, which comes on an SDK thread.
class SearchCollector {
public:
    int start(int waitCentis, int probes) { return Discovery_Start(waitCentis, probes, &callback, this); }
    int finished() const { return finished_; }
    int oddCalls() const { return odd_; } // finished with a device, or neither
    std::vector<DeviceInfo_t> answers() const
    {
        std::lock_guard<std::mutex> lock(mutex_);
        return answers_;
    }

private:
    static void callback(bool finished, const DeviceInfo_t* device, void* user)
    {
        auto* self = static_cast<SearchCollector*>(user);
        std::lock_guard<std::mutex> lock(self->mutex_);
        self->odd_ += finished == (device != nullptr);
        if (device)
            self->answers_.push_back(*device);
        self->finished_ += finished;
    }

    mutable std::mutex mutex_;
    std::vector<DeviceInfo_t> answers_;
    std::atomic<int> finished_ { 0 };
    std::atomic<int> odd_ { 0 };
};

} // namespace

class TestDiscovery : public QObject {
    Q_OBJECT

    kvmstest::DecoderFixture fixture_;

    // A decoder that is the only discovery target; nullptr if it would not start.
    vdec::VirtualDecoder* target()
    {
        vdec::VirtualDecoder* d = fixture_.startDecoder();
        return d && Discovery_SetTargets(targetOf(d)) == CMATRIX_OK ? d : nullptr;
    }
    static QByteArray id(const vdec::VirtualDecoder* d) { return d->config().deviceId.toLatin1(); }

    // One round against the current targets, waited for.
    static bool search(SearchCollector& collector)
    {
        if (collector.start(kRoundCentis, 3) != CMATRIX_OK)
            return false;
        return QTest::qWaitFor([&] { return collector.finished() == 1; }, scaled(5000));
    }

private slots:
    void cleanup()
    {
        fixture_.cleanup();
        Discovery_SetTargets(nullptr);
    }

    void roundsEndEvenWithoutAnswers_data()
    {
        QTest::addColumn<QByteArray>("targets");
        // A loopback port nobody listens on (the SDK's own default is not used: another
        // process on this machine might listen there).
        QTest::newRow("nobody at the target") << (kvmstest::LoopbackPool::claim() + ":9").toLatin1();
        QTest::newRow("the default from a bad environment") << QByteArray();
    }

    void roundsEndEvenWithoutAnswers()
    {
        QFETCH(QByteArray, targets);
        if (targets.isEmpty()) {
            // A variable naming a LAN address gives no targets at all, not a guess.
            qputenv("CMATRIX_DISCOVERY_TARGETS", "192.168.1.30:37020");
            QCOMPARE(Discovery_SetTargets(nullptr), CMATRIX_OK);
            qunsetenv("CMATRIX_DISCOVERY_TARGETS");
        } else {
            QCOMPARE(Discovery_SetTargets(targets), CMATRIX_OK);
        }
        SearchCollector collector;
        QVERIFY(search(collector));
        QCOMPARE(int(collector.answers().size()), 0);
        QCOMPARE(collector.oddCalls(), 0);
        DeviceNetworkCfg_t cfg {};
        QCOMPARE(Discovery_GetNetworkBC("VD00000102", &cfg, 200), CMATRIX_ERR_DEVICE_NOT_FOUND);
    }

    void targets_data()
    {
        QTest::addColumn<QByteArray>("targets");
        QTest::addColumn<int>("result");
        QTest::newRow("LAN address") << QByteArray("192.168.1.30:37020") << CMATRIX_ERR_INVALID_PARAM;
        QTest::newRow("broadcast") << QByteArray("255.255.255.255:37020") << CMATRIX_ERR_INVALID_PARAM;
        QTest::newRow("host name") << QByteArray("example.com:37020") << CMATRIX_ERR_INVALID_PARAM;
        QTest::newRow("localhost") << QByteArray("localhost:37020") << CMATRIX_OK;
        QTest::newRow("loopback range, spaced") << QByteArray(" 127.0.0.2:1 , 127.255.255.254:65535") << CMATRIX_OK;
    }

    void targets()
    {
        QFETCH(QByteArray, targets);
        QFETCH(int, result);
        vdec::VirtualDecoder* d = target();
        QVERIFY(d);
        QCOMPARE(Discovery_SetTargets(targets.constData()), result);
        if (result == CMATRIX_OK)
            return;
        // A refused list leaves the previous one in place.
        SearchCollector collector;
        QVERIFY(search(collector));
        const std::vector<DeviceInfo_t> answers = collector.answers();
        QVERIFY(std::any_of(answers.begin(), answers.end(), [&](const DeviceInfo_t& a) { return id(d) == a.devId; }));
    }

    void badDatagramsAreDropped_data()
    {
        QTest::addColumn<QByteArray>("datagram");
        const auto bytes
            = [](const RawUdp::Bytes& b) { return QByteArray(reinterpret_cast<const char*>(b.data()), int(b.size())); };
        const RawUdp::Bytes probe = RawUdp::message(uint16_t(MessageType::DiscoveryProbe), 7, 0, {});
        const RawUdp::Bytes idBody = RawUdp::body(DeviceIdRequest { "VD00000111" });
        RawUdp::Bytes truncated = RawUdp::message(uint16_t(MessageType::GetNetwork), 7, 0, idBody);
        truncated.resize(truncated.size() - 3);
        RawUdp::Bytes badMagic = probe;
        badMagic[0] ^= 0xff;
        RawUdp::Bytes oversized = RawUdp::message(uint16_t(MessageType::DiscoveryProbe), 7, 0, RawUdp::Bytes(9000, 0));

        QTest::newRow("payload cut short") << bytes(truncated);
        QTest::newRow("bad magic") << bytes(badMagic);
        QTest::newRow("oversized") << bytes(oversized);
        QTest::newRow("an answer, not a request")
            << bytes(RawUdp::message(responseOf(MessageType::DiscoveryProbe), 7, 0, {}));
        QTest::newRow("a session request") << bytes(
            RawUdp::message(uint16_t(MessageType::Login), 7, 0, RawUdp::body(LoginRequest { "admin", "admin123" })));
    }

    void badDatagramsAreDropped()
    {
        QFETCH(QByteArray, datagram);
        vdec::VirtualDecoder* d = fixture_.startDecoder();
        QVERIFY(d);
        RawUdp socket;
        QVERIFY(socket.isValid());
        const RawUdp::Peer decoder { d->address(), d->udpPort() };
        QVERIFY(socket.sendTo(decoder, RawUdp::Bytes(datagram.begin(), datagram.end())));
        QVERIFY(socket.sendTo(decoder, RawUdp::message(uint16_t(MessageType::DiscoveryProbe), 42, 0, {})));

        // The first thing back answers the good probe: the bad datagram got nothing.
        Message answer;
        RawUdp::Peer from;
        QVERIFY(socket.receiveMessage(answer, from, scaled(2000)));
        QCOMPARE(answer.header.type, responseOf(MessageType::DiscoveryProbe));
        QCOMPARE(answer.header.requestId, 42u);
        DiscoveryAnswer body;
        QVERIFY(answer.decode(body));
        QCOMPARE(QByteArray(body.device.devId), id(d));
        QCOMPARE(from.port, d->udpPort());
        // Nor later: the next thing back answers the next probe.
        QVERIFY(socket.sendTo(decoder, RawUdp::message(uint16_t(MessageType::DiscoveryProbe), 43, 0, {})));
        QVERIFY(socket.receiveMessage(answer, from, scaled(2000)));
        QCOMPARE(answer.header.requestId, 43u);
        QVERIFY(d->isRunning());
    }
};

KVMS_TEST_CLASS(TestDiscovery)
#include "TestDiscovery.moc"
