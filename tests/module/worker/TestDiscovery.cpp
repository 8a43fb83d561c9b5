// Searching: three rounds, one result, the found-device map and what it must not take.
#include "FakeAnswerer.h"
#include "WorkerRig.h"

#include "LogInfo.h"
#include "QueuedSignalSpy.h"
#include "SuiteMain.h"
#include "TestTimeout.h"

#include "Messages.h"

#include <QtTest>

#include <cstring>

using cmatrix::wire::MessageType;
using kvms_matrix::MatrixSdkWorker;
using kvmstest::scaled;

using Replies = FakeAnswerer::Replies;
Q_DECLARE_METATYPE(Replies)

namespace {

constexpr int kProbesPerSearch = 9; // three rounds of three probes

QStringList keysOf(std::initializer_list<const vdec::VirtualDecoder*> decoders)
{
    QStringList keys;
    for (const vdec::VirtualDecoder* d : decoders)
        keys << d->address();
    keys.sort();
    return keys;
}

} // namespace

class TestDiscovery : public QObject, public WorkerRig {
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup() { QVERIFY(settle()); }
    void foundRecordsTakeTheDescriptorFields();
    void answersTheMapMustNotTake_data();
    void answersTheMapMustNotTake();
    void strayCallbacksAfterTheSearch_data();
    void strayCallbacksAfterTheSearch();
};

void TestDiscovery::initTestCase()
{
    QVERIFY(setUp());
    // Nobody answers, and the result still comes, once, after all three rounds of three probes:
    // a second search shows no round of the first was left running.
    FakeAnswerer mute(spare(0), spare(1), [](uint32_t) { return std::vector<FakeAnswerer::Datagram>(); });
    QVERIFY(mute.isValid());
    QueuedSignalSpy results(worker(), &MatrixSdkWorker::signalSearchMatrixResult);
    QVERIFY(search(mute.target()).isEmpty());
    QCOMPARE(mute.probes(), kProbesPerSearch);
    QVERIFY(search(mute.target()).isEmpty());
    QCOMPARE(results.count(), 2);
    QCOMPARE(mute.probes(), 2 * kProbesPerSearch);
    QVERIFY(worker()->isWorkerRunning());
}

void TestDiscovery::foundRecordsTakeTheDescriptorFields()
{
    struct Row {
        int modelClass;
        int kind;
    };
    const QVector<Row> rows = { { 0, 3 }, { 1, 1 }, { 2, 1 }, { 3, 3 }, { 4, 3 }, { -1, 3 }, { 99, 3 } };
    const auto describeRow = [](int i) {
        DeviceInfo_t d = FakeAnswerer::descriptor(
            qPrintable(QStringLiteral("FK-%1").arg(i)), qPrintable(QStringLiteral("127.0.1.%1").arg(i + 1)));
        d.port = 5000 + i;
        d.modelSub = 10 + i;
        d.flag = uint8_t(i % 2);
        std::strcpy(d.name, qPrintable(QStringLiteral("fw %1").arg(i)));
        return d;
    };
    FakeAnswerer fake(spare(0), spare(1), [&](uint32_t id) {
        std::vector<FakeAnswerer::Datagram> out;
        for (int i = 0; i < rows.size(); ++i) {
            DeviceInfo_t d = describeRow(i);
            d.modelClass = rows[i].modelClass;
            out.push_back({ FakeAnswerer::answer(id, d) });
        }
        // One unit answering twice per probe: the later answer is the one kept.
        for (const char* version : { "first", "second" }) {
            DeviceInfo_t twice = FakeAnswerer::descriptor("FK-twice", "127.0.2.1");
            std::strcpy(twice.name, version);
            out.push_back({ FakeAnswerer::answer(id, twice) });
        }
        return out;
    });
    QVERIFY(fake.isValid());

    const InfoMap found = search(fake.target());
    QStringList expected;
    for (int i = 0; i < rows.size(); ++i) {
        expected << QStringLiteral("127.0.1.%1: ip=127.0.1.%1 id=FK-%2 type=%3 port=%4 manager=28000 screens=%5 "
                                   "status=%6 version=fw %2")
                        .arg(i + 1)
                        .arg(i)
                        .arg(rows[i].kind)
                        .arg(5000 + i)
                        .arg(10 + i)
                        .arg(i % 2);
    }
    expected << QStringLiteral(
        "127.0.2.1: ip=127.0.2.1 id=FK-twice type=1 port=28000 manager=28000 screens=16 status=1 version=second");
    QCOMPARE(describe(found), expected);
}

void TestDiscovery::answersTheMapMustNotTake_data()
{
    QTest::addColumn<Replies>("replies");
    QTest::addColumn<bool>("listed");
    using Datagrams = std::vector<FakeAnswerer::Datagram>;
    const QByteArray fakeIp = spare(0).toLatin1();
    const auto device = [=](int32_t type = 9) { return FakeAnswerer::descriptor("FK-1", fakeIp.constData(), type); };
    const auto ofType = [&](int32_t type) {
        return Replies([=](uint32_t id) { return Datagrams { { FakeAnswerer::answer(id, device(type)) } }; });
    };
    // The SDK's own suite sends every kind of malformed answer; here: the types the map refuses,
    // and an address without its terminator, which would otherwise become a key of the map.
    const Replies unterminated([=](uint32_t id) {
        RawUdp::Bytes body = FakeAnswerer::answerBody(device());
        std::memset(body.data() + 148, '7', 16);
        return Datagrams { { RawUdp::message(cmatrix::wire::responseOf(MessageType::DiscoveryProbe), id, 0, body) } };
    });
    QTest::newRow("a decoder, for comparison") << ofType(9) << true;
    QTest::newRow("type 8") << ofType(8) << false;
    QTest::newRow("type 10") << ofType(10) << false;
    QTest::newRow("address without terminator") << unterminated << false;
}

void TestDiscovery::answersTheMapMustNotTake()
{
    QFETCH(Replies, replies);
    QFETCH(bool, listed);
    vdec::VirtualDecoder* real = startQuiet();
    QVERIFY(real);
    FakeAnswerer fake(spare(0), spare(1), replies);
    QVERIFY(fake.isValid());

    const InfoMap found = search(fake.target() + "," + targetOf(real));
    QStringList keys = keysOf({ real });
    if (listed)
        keys.append(spare(0));
    keys.sort();
    QCOMPARE(found.keys(), keys);
    QCOMPARE(fake.probes(), kProbesPerSearch);
    QCOMPARE(found.value(real->address()).id, real->config().deviceId);
}

void TestDiscovery::strayCallbacksAfterTheSearch_data()
{
    QTest::addColumn<bool>("finished");
    QTest::addColumn<bool>("withDevice");
    QTest::addColumn<bool>("withWorker");
    QTest::newRow("an answer") << false << true << true;
    QTest::newRow("an end of round") << true << false << true;
    QTest::newRow("an answer ending a round") << true << true << true;
    QTest::newRow("an answer without the worker") << false << true << false;
}

void TestDiscovery::strayCallbacksAfterTheSearch()
{
    QFETCH(bool, finished);
    QFETCH(bool, withDevice);
    QFETCH(bool, withWorker);
    vdec::VirtualDecoder* d = startQuiet();
    QVERIFY(d);
    const InfoMap found = search(targetOf(d));
    QCOMPARE(found.keys(), keysOf({ d }));
    const int probes = d->journal().count(MessageType::DiscoveryProbe);

    const QString strayIp = spare(2);
    const DeviceInfo_t stray = FakeAnswerer::descriptor("VD-STRAY", strayIp.toLatin1().constData());
    const auto roundsStarted = [] { return logText().count(QStringLiteral("Discovery_Start")); };
    const int rounds = roundsStarted();
    QVERIFY(rounds >= 3); // the search's own
    // Called on this thread: a round it wrongly started, or a result it published, is there on return.
    QSignalSpy direct(worker(), &MatrixSdkWorker::signalSearchMatrixResult);
    MatrixSdkWorker::searchMatrixCallback(finished, withDevice ? &stray : nullptr, withWorker ? worker() : nullptr);
    QCOMPARE(direct.count(), 0);
    QCOMPARE(roundsStarted(), rounds);
    // A late decoder answer joins the map (a new search clears it); nothing else changes it.
    InfoMap expected = found;
    if (withDevice && withWorker)
        expected.insert(strayIp, worker()->foundMatrixMap().value(strayIp));
    QCOMPARE(describe(worker()->foundMatrixMap()), describe(expected));
    QCOMPARE(worker()->foundMatrixMap().value(strayIp).id,
        withDevice && withWorker ? QStringLiteral("VD-STRAY") : QString(QChar(0xFFFF)));
    QCOMPARE(d->journal().count(MessageType::DiscoveryProbe), probes);
}

KVMS_TEST_CLASS(TestDiscovery)
#include "TestDiscovery.moc"
