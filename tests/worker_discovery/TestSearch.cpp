// Searching: three rounds, one result, the found-device map and what it must not take.
#include "WorkerDiscoveryTests.h"

#include "FakeAnswerer.h"
#include "QueuedSignalSpy.h"
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

void TestWorkerDiscovery::decoderAnsweringEveryRoundIsListedOnce()
{
    vdec::VirtualDecoder* small = startDecoder(180, [](vdec::DecoderConfig& c) {
        c.model = QStringLiteral("VD-800");
        c.firmwareVersion = QStringLiteral("V1.1.0 build 240301");
    });
    vdec::VirtualDecoder* medium = startDecoder(181);
    vdec::VirtualDecoder* large = startDecoder(182, [](vdec::DecoderConfig& c) {
        c.model = QStringLiteral("VD-3200");
        c.factoryNew = true;
    });
    QVERIFY(small && medium && large);

    int published = 0;
    const InfoMap found = search(targetOf(small) + "," + targetOf(medium) + "," + targetOf(large), &published);
    QCOMPARE(published, 1);
    // Each unit answered all nine probes, and is listed once.
    for (vdec::VirtualDecoder* d : { small, medium, large })
        QCOMPARE(d->journal().count(MessageType::DiscoveryProbe), kProbesPerSearch);
    const QString line
        = QStringLiteral("%1: ip=%1 id=%2 type=%3 port=%4 manager=28000 screens=%5 status=%6 version=%7");
    QCOMPARE(describe(found),
        QStringList({
            line.arg("127.0.0.180", "VD00000180", "1").arg(small->port()).arg(8).arg(1).arg("V1.1.0 build 240301"),
            line.arg("127.0.0.181", "VD00000181", "1").arg(medium->port()).arg(16).arg(1).arg("V1.0.0 build 240101"),
            line.arg("127.0.0.182", "VD00000182", "3").arg(large->port()).arg(32).arg(0).arg("V1.0.0 build 240101"),
        }));
    QCOMPARE(describe(worker()->foundMatrixMap()), describe(found));
}

void TestWorkerDiscovery::foundRecordsTakeTheDescriptorFields()
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
    FakeAnswerer fake(QStringLiteral("127.0.0.185"), QStringLiteral("127.0.0.186"), [&](uint32_t id) {
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

void TestWorkerDiscovery::answersTheMapMustNotTake_data()
{
    QTest::addColumn<Replies>("replies");
    QTest::addColumn<bool>("listed");
    using Datagrams = std::vector<FakeAnswerer::Datagram>;
    const auto device = [](int32_t type = 9) { return FakeAnswerer::descriptor("FK-185", "127.0.0.185", type); };
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

void TestWorkerDiscovery::answersTheMapMustNotTake()
{
    QFETCH(Replies, replies);
    QFETCH(bool, listed);
    vdec::VirtualDecoder* real = startDecoder(187);
    QVERIFY(real);
    FakeAnswerer fake(QStringLiteral("127.0.0.185"), QStringLiteral("127.0.0.186"), replies);
    QVERIFY(fake.isValid());

    const InfoMap found = search(fake.target() + "," + targetOf(real));
    QStringList keys = keysOf({ real });
    if (listed)
        keys.prepend(QStringLiteral("127.0.0.185"));
    QCOMPARE(found.keys(), keys);
    QCOMPARE(fake.probes(), kProbesPerSearch);
    QCOMPARE(found.value(real->address()).id, real->config().deviceId);
}

void TestWorkerDiscovery::newSearchStartsAfresh()
{
    vdec::VirtualDecoder* a = startDecoder(188);
    vdec::VirtualDecoder* b = startDecoder(189);
    QVERIFY(a && b);
    const QByteArray targets = targetOf(a) + "," + targetOf(b);
    QCOMPARE(search(targets).keys(), keysOf({ a, b }));

    b->stop();
    QueuedSignalSpy results(worker(), &MatrixSdkWorker::signalSearchMatrixResult);
    worker()->searchMatrix();
    QVERIFY(!worker()->foundMatrixMap().contains(b->address())); // cleared at once, not by the rounds
    QVERIFY(results.wait(scaled(6000)));
    QCOMPARE(results.first().at(0).value<InfoMap>().keys(), keysOf({ a }));
}

void TestWorkerDiscovery::strayCallbacksAfterTheSearch_data()
{
    QTest::addColumn<bool>("finished");
    QTest::addColumn<bool>("withDevice");
    QTest::addColumn<bool>("withWorker");
    QTest::newRow("an answer") << false << true << true;
    QTest::newRow("an end of round") << true << false << true;
    QTest::newRow("an answer ending a round") << true << true << true;
    QTest::newRow("an answer without the worker") << false << true << false;
}

void TestWorkerDiscovery::strayCallbacksAfterTheSearch()
{
    QFETCH(bool, finished);
    QFETCH(bool, withDevice);
    QFETCH(bool, withWorker);
    vdec::VirtualDecoder* d = startDecoder(190);
    QVERIFY(d);
    const InfoMap found = search(targetOf(d));
    QCOMPARE(found.keys(), keysOf({ d }));
    const int probes = d->journal().count(MessageType::DiscoveryProbe);

    QueuedSignalSpy results(worker(), &MatrixSdkWorker::signalSearchMatrixResult);
    const DeviceInfo_t stray = FakeAnswerer::descriptor("VD-STRAY", "127.0.0.191");
    MatrixSdkWorker::searchMatrixCallback(finished, withDevice ? &stray : nullptr, withWorker ? worker() : nullptr);
    QTest::qWait(450); // longer than a round: time for a wrongly started one to probe
    QCOMPARE(results.count(), 0);
    // A late decoder answer joins the map (a new search clears it); nothing else changes it.
    InfoMap expected = found;
    if (withDevice && withWorker)
        expected.insert(QStringLiteral("127.0.0.191"), worker()->foundMatrixMap().value(QStringLiteral("127.0.0.191")));
    QCOMPARE(describe(worker()->foundMatrixMap()), describe(expected));
    QCOMPARE(worker()->foundMatrixMap().value(QStringLiteral("127.0.0.191")).id,
        withDevice && withWorker ? QStringLiteral("VD-STRAY") : QString(QChar(0xFFFF)));
    QCOMPARE(d->journal().count(MessageType::DiscoveryProbe), probes);
}
