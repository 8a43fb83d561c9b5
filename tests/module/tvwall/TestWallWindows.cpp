// Windows through the worker: windows refused, cells given back, clearing. Joining cells,
// dividing, full screen and the roaming window are driven from the page in its end-to-end suites.
#include "WallRig.h"

#include "QueuedSignalSpy.h"
#include "SuiteMain.h"

#include "TestTimeout.h"
#include "WireBuilders.h"

#include <QtTest>

using namespace kvms_matrix;
using kvmstest::scaled;

namespace {

MatrixDeviceInfo camera(const QString& id)
{
    MatrixDeviceInfo d;
    d.deviceId = id;
    d.deviceName = id;
    d.ip = QStringLiteral("127.0.0.9");
    d.port = 8000;
    d.channel = 1;
    d.userName = QStringLiteral("viewer");
    d.password = QStringLiteral("secret");
    return d;
}

} // namespace

class TestWallWindows : public QObject, public WallRig {
    Q_OBJECT

private slots:
    void initTestCase() { QVERIFY(enterWorkDirectory()); }
    void cleanup() { QVERIFY(settle()); }
    void cleanupTestCase() { QVERIFY(leaveWorkDirectory()); }
    void clearingOneSubWindowRewritesTheOthers();
    void clearingAWholeWindowStopsItsLoop();
};

void TestWallWindows::clearingOneSubWindowRewritesTheOthers()
{
    const Handle h = wallOn(2, 2);
    QVERIFY(h);
    QCOMPARE(CMatrix_WindowSetDivision(*sdk_, 2, 4), CMATRIX_OK);
    MatrixWindowInfo window = windowInfo(2, 4);
    window.subWindows[0].device = camera(QStringLiteral("AB1"));
    window.subWindows[1].device.deviceType = 4; // a desktop picture keeps its name and channel
    window.subWindows[1].device.deviceId = QStringLiteral("cap_pc");
    window.subWindows[1].device.displayName = QStringLiteral("Operator");
    window.subWindows[1].device.channel = 2;
    window.subWindows[2].device = camera(QStringLiteral("7"));
    window.subWindows[3].device.deviceType = 9;
    window.subWindows[3].device.deviceId = QStringLiteral("door");
    window.subWindows[3].device.mainUrl = QStringLiteral("rtsp://127.0.0.9/door");
    window.subWindows[3].device.streamIndex = 1;
    QCOMPARE(bind(h, window, 1), CMATRIX_OK);
    const std::map<int32_t, DeviceInfo_t> before = decoder_->snapshot().window(2)->sources;

    QueuedSignalSpy cleared(worker(), &MatrixSdkWorker::signalClearWindowResult);
    worker()->clearWindow(h, 2, 3, 0);
    QVERIFY(cleared.wait(scaled(5000)));
    QCOMPARE(cleared.at(0), QVariantList({ 0, 2, 3, 0 }));

    const std::map<int32_t, DeviceInfo_t> after = decoder_->snapshot().window(2)->sources;
    QCOMPARE(after.size(), size_t(4));
    for (int sub : { 1, 2, 4 })
        QCOMPARE(kvmstest::bytesOf(after.at(sub)), kvmstest::bytesOf(before.at(sub)));
    const DeviceInfo_t& emptied = after.at(3);
    QCOMPARE(QByteArray(emptied.devId), QByteArray("emp_2"));
    QCOMPARE(QList<int>({ emptied.protocol, emptied.channel, emptied.stream }), QList<int>({ 8, 3, -1 }));
}

void TestWallWindows::clearingAWholeWindowStopsItsLoop()
{
    const Handle h = wallOn(2, 2);
    QVERIFY(h);
    SchemeInfo_t scheme {};
    scheme.id = 1;
    kvmstest::setText(scheme.name, "Gates");
    scheme.kind = 4;
    scheme.interval = 1;
    SchemeDevice_t sources[2] {};
    kvmstest::setText(sources[0].devId, "AB1");
    kvmstest::setText(sources[1].devId, "AB2");
    QCOMPARE(CMatrix_SchemeSet(*sdk_, &scheme), CMATRIX_OK);
    QCOMPARE(CMatrix_SchemeAddDevices(*sdk_, 1, sources, 2, true), CMATRIX_OK);
    QCOMPARE(CMatrix_SchemeSelect(*sdk_, 2, 1, 0), CMATRIX_OK);
    QVERIFY(decoder_->snapshot().loops.count(2));

    QueuedSignalSpy cleared(worker(), &MatrixSdkWorker::signalClearWindowResult);
    worker()->clearWindow(h, 2, -1, 0);
    QVERIFY(cleared.wait(scaled(5000)));
    QCOMPARE(cleared.at(0), QVariantList({ 0, 2, -1, 0 }));
    const vdec::DecoderSnapshot s = decoder_->snapshot();
    QVERIFY(!s.loops.count(2)); // a turning window would put a source back
    QVERIFY(s.window(2)->sources.empty());
    QVERIFY(s.scheme(1)); // only the loop stops
}

KVMS_TEST_CLASS(TestWallWindows)
#include "TestWallWindows.moc"
