// Loops through the worker: ids, edits, the sources as the decoder stores them.
#include "WallRig.h"

#include "QueuedSignalSpy.h"
#include "SuiteMain.h"

#include "SchemeDeviceRecord.h"
#include "TestTimeout.h"

#include "MessageType.h"

#include <QtTest>

#include <cstring>

using namespace kvms_matrix;
using cmatrix::wire::MessageType;
using kvmstest::scaled;

namespace {

MatrixLoopInfo loopOf(int id, const QString& name, const QStringList& cameraIds)
{
    MatrixLoopInfo loop;
    loop.loopId = id;
    loop.loopName = name;
    loop.loopInterval = 1;
    for (int i = 0; i < cameraIds.size(); ++i) {
        MatrixDeviceInfo device;
        device.deviceId = cameraIds.at(i);
        device.deviceName = cameraIds.at(i);
        device.channel = i + 1;
        loop.devices.append(device);
    }
    return loop;
}

QStringList sourceIdsOf(const vdec::Scheme* scheme)
{
    QStringList ids;
    for (const SchemeDevice_t& d : scheme->devices)
        ids.append(QString::fromLatin1(d.devId));
    return ids;
}

} // namespace

class TestLoops : public QObject, public WallRig {
    Q_OBJECT

private slots:
    void initTestCase() { QVERIFY(enterWorkDirectory()); }
    void cleanup() { QVERIFY(settle()); }
    void cleanupTestCase() { QVERIFY(leaveWorkDirectory()); }
    void savingALoop_data();
    void savingALoop();
    void protocolNames_data();
    void protocolNames();
};

void TestLoops::savingALoop_data()
{
    QTest::addColumn<QList<int>>("existing"); // schemes "old" of Cam-1, Cam-2, Cam-3
    QTest::addColumn<int>("loopId"); // 0: a new loop
    QTest::addColumn<int>("deleteFault"); // 0: none
    QTest::addColumn<int>("expectedId");
    const QList<int> four { 4 };
    QTest::newRow("new: first free between 1 and 3") << QList<int> { 1, 3 } << 0 << 0 << 2;
    QTest::newRow("replaced under the same id") << four << 4 << 0 << 4;
    QTest::newRow("delete refused, nothing written") << four << 4 << int(CMATRIX_ERR_BUSY) << 4;
}

void TestLoops::savingALoop()
{
    QFETCH(QList<int>, existing);
    QFETCH(int, loopId);
    QFETCH(int, deleteFault);
    QFETCH(int, expectedId);
    const Handle h = decoderOn();
    QVERIFY(h);
    for (int id : existing)
        QCOMPARE(createScheme(uint32_t(id), "old", { "Cam-1", "Cam-2", "Cam-3" }), CMATRIX_OK);
    if (deleteFault)
        decoder_->faults().failNext(MessageType::SchemeDel, deleteFault);

    QueuedSignalSpy set(worker(), &MatrixSdkWorker::signalSetLoopInfoResult);
    worker()->setLoopInfo(h, loopOf(loopId, QStringLiteral("Lobby"), { "Cam-a", "Cam-b" }));
    QVERIFY(set.wait(scaled(5000)));
    QCOMPARE(set.at(0).at(0).toInt(), deleteFault ? deleteFault : CMATRIX_OK);
    QCOMPARE(set.at(0).at(1).value<MatrixLoopInfo>().loopId, expectedId);

    const vdec::DecoderSnapshot s = decoder_->snapshot();
    const vdec::Scheme* scheme = s.scheme(uint32_t(expectedId));
    QVERIFY(scheme);
    QCOMPARE(QVariantList({ scheme->info.name, scheme->info.kind, scheme->info.interval }),
        QVariantList({ deleteFault ? "old" : "Lobby", 4, 1u }));
    QCOMPARE(sourceIdsOf(scheme),
        deleteFault ? QStringList({ "Cam-1", "Cam-2", "Cam-3" }) : QStringList({ "Cam-a", "Cam-b" }));
    QCOMPARE(int(s.schemes.size()), existing.size() + (loopId ? 0 : 1));
}

void TestLoops::protocolNames_data()
{
    QTest::addColumn<int>("protocol");
    QTest::addColumn<QString>("name");
    QTest::newRow("0") << 0 << "kst1.0";
    QTest::newRow("2") << 2 << "onvif";
    QTest::newRow("7") << 7 << "rtspPlayback";
    QTest::newRow("6 local source") << 6 << "";
    QTest::newRow("negative") << -1 << "";
}

void TestLoops::protocolNames()
{
    QFETCH(int, protocol);
    QFETCH(QString, name);
    DeviceInfo_t d {};
    d.protocol = protocol;
    // A device id that fills its whole field, with no NUL, must not run into the next field.
    std::memset(d.devId, 'D', sizeof d.devId);
    std::memset(d.name, 'N', sizeof d.name);
    std::strcpy(d.ip, "127.0.0.9");
    std::strcpy(d.mainUrl, "rtsp://127.0.0.9/0");
    d.channel = 3;
    d.stream = 1;
    d.port = 554;
    const SchemeDevice_t record = SchemeDeviceRecord::fromDescriptor(d);
    QCOMPARE(QString::fromLatin1(record.protocolName), name);
    QCOMPARE(QByteArray(record.devId), QByteArray(31, 'D'));
    QCOMPARE(QByteArray(record.name), QByteArray(99, 'N'));
    QCOMPARE(QByteArrayList({ record.ip, record.mainUrl }), QByteArrayList({ "127.0.0.9", "rtsp://127.0.0.9/0" }));
    QCOMPARE(QList<int>({ record.channel, record.stream, record.port }), QList<int>({ 3, 1, 554 }));
}

KVMS_TEST_CLASS(TestLoops)
#include "TestLoops.moc"
