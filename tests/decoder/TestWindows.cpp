#include "DecoderFixture.h"
#include "SuiteMain.h"
#include "WireRecords.h"

#include <QtTest>

using namespace cmatrix::wire;
using namespace wirerecords;
using kvmstest::TestClient;

Q_DECLARE_METATYPE(std::vector<DeviceInfo_t>)

namespace {

QList<int> subWindowsOf(const vdec::DecoderSnapshot& s, uint32_t windowId)
{
    QList<int> subs;
    if (const vdec::Window* w = s.window(windowId)) {
        for (const auto& [sub, device] : w->sources)
            subs << sub;
    }
    return subs;
}

} // namespace

class TestWindows : public QObject {
    Q_OBJECT

    kvmstest::DecoderFixture fixture_;

private slots:
    void cleanup() { fixture_.cleanup(); }

    void sourceRemoval_data()
    {
        QTest::addColumn<std::vector<DeviceInfo_t>>("removed");
        QTest::addColumn<bool>("reset");
        QTest::addColumn<QList<int>>("left");

        QTest::newRow("by device id") << std::vector<DeviceInfo_t> { source(0, "A") } << false << QList<int> { 2, 4 };
        QTest::newRow("by sub-window") << std::vector<DeviceInfo_t> { source(3, "") } << false
                                       << QList<int> { 1, 2, 4 };
        QTest::newRow("device id not there")
            << std::vector<DeviceInfo_t> { source(0, "Z") } << false << QList<int> { 1, 2, 3, 4 };
        QTest::newRow("reset") << std::vector<DeviceInfo_t> {} << true << QList<int> {};
    }

    void sourceRemoval()
    {
        QFETCH(std::vector<DeviceInfo_t>, removed);
        QFETCH(bool, reset);
        QFETCH(QList<int>, left);

        vdec::VirtualDecoder* d = fixture_.startDecoder();
        TestClient* c = fixture_.connectTo(d);
        QVERIFY(c);
        QCOMPARE(
            c->call(MessageType::WindowAdd, WindowAddRequest { { window(1, 0, 0, 100, 100) }, false }), CMATRIX_OK);
        QCOMPARE(c->call(MessageType::WindowSetDivision, SetDivisionRequest { 1, 4 }), CMATRIX_OK);
        const std::vector<DeviceInfo_t> four = { source(1, "A"), source(2, "B"), source(3, "A"), source(4, "C") };
        QCOMPARE(c->call(MessageType::WindowDeviceAdd, WindowDevices { 1, four, false }), CMATRIX_OK);

        QCOMPARE(c->call(MessageType::WindowDeviceDel, WindowDevices { 1, removed, reset }), CMATRIX_OK);
        QCOMPARE(subWindowsOf(d->snapshot(), 1), left);
    }

    void divisionDropsSourcesBeyondIt()
    {
        vdec::VirtualDecoder* d = fixture_.startDecoder();
        TestClient* c = fixture_.connectTo(d);
        QVERIFY(c);
        QCOMPARE(
            c->call(MessageType::WindowAdd, WindowAddRequest { { window(1, 0, 0, 100, 100) }, false }), CMATRIX_OK);
        QCOMPARE(c->call(MessageType::WindowSetDivision, SetDivisionRequest { 1, 9 }), CMATRIX_OK);
        QCOMPARE(c->call(MessageType::WindowDeviceAdd,
                     WindowDevices { 1, { source(1, "a"), source(4, "b"), source(9, "c") }, false }),
            CMATRIX_OK);
        QCOMPARE(c->call(MessageType::WindowSetFullScreen, FullScreenRequest { 1, 9, 1 }), CMATRIX_OK);
        QCOMPARE(d->snapshot().window(1)->fullScreenSub, 9);

        QCOMPARE(c->call(MessageType::WindowSetDivision, SetDivisionRequest { 1, 4 }), CMATRIX_OK);
        QCOMPARE(subWindowsOf(d->snapshot(), 1), (QList<int> { 1, 4 }));
        QCOMPARE(d->snapshot().window(1)->fullScreenSub, 0); // its sub-window is gone

        QCOMPARE(c->call(MessageType::WindowSetDivision, SetDivisionRequest { 1, 1 }), CMATRIX_OK);
        QCOMPARE(subWindowsOf(d->snapshot(), 1), QList<int> { 1 });
        DivisionList divisions;
        QCOMPARE(c->call(MessageType::WindowGetDivision, Empty {}, &divisions), CMATRIX_OK);
        QCOMPARE(divisions.divisions.at(0).division, 1);
    }
};

KVMS_TEST_CLASS(TestWindows)
#include "TestWindows.moc"
