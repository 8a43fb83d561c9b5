#include "DecoderTests.h"
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

void DecoderTests::windowsKeepLayoutAndLayers()
{
    TestClient* c = fixture_.connectTo(fixture_.startDecoder(7));
    QVERIFY(c);
    const std::vector<MatrixWindow_t> sent = { window(1, 0, 0, 16384, 16384), window(2, 16384, 0, 16384, 16384),
        window(3, 100, 200, 3000, 4000, true), window(4, 500, 600, 7000, 8000, true) };
    QCOMPARE(c->call(MessageType::WindowAdd, WindowAddRequest { sent, false }), CMATRIX_OK);

    Message reply;
    QCOMPARE(c->callRaw(uint16_t(MessageType::WindowGet), {}, &reply), CMATRIX_OK);
    QCOMPARE(reply.payload.size(), size_t(4 + 4 * 36));
    WindowList list;
    QVERIFY(reply.decode(list));
    QCOMPARE(list.windows.size(), sent.size());
    const int32_t layers[] = { 0, 0, 1, 2 }; // floating windows stack in the order they came
    for (size_t i = 0; i < sent.size(); ++i) {
        QCOMPARE(bytesOf(list.windows[i].window), bytesOf(sent[i]));
        QCOMPARE(list.windows[i].layer, layers[i]);
        QCOMPARE(list.windows[i].sourceKind, 0);
    }

    DivisionList divisions;
    QCOMPARE(c->call(MessageType::WindowGetDivision, Empty {}, &divisions), CMATRIX_OK);
    QCOMPARE(divisions.divisions.size(), size_t(4));
    QCOMPARE(divisions.divisions[2].windowId, 3);
    QCOMPARE(divisions.divisions[2].division, 1);

    // A cell window moved out as a floating one goes on top.
    QCOMPARE(c->call(MessageType::WindowMove, WindowMoveRequest { window(1, 10, 20, 300, 400, true) }), CMATRIX_OK);
    QCOMPARE(c->call(MessageType::WindowGet, Empty {}, &list), CMATRIX_OK);
    QCOMPARE(bytesOf(list.windows[0].window), bytesOf(window(1, 10, 20, 300, 400, true)));
    QCOMPARE(list.windows[0].layer, 3);

    QCOMPARE(c->call(MessageType::WindowDel, IdList { { 2, 4 } }), CMATRIX_OK);
    QCOMPARE(c->call(MessageType::WindowGet, Empty {}, &list), CMATRIX_OK);
    QCOMPARE(list.windows.size(), size_t(2));
    QCOMPARE(list.windows[1].window.id, 3u);

    QCOMPARE(c->call(MessageType::WindowAdd, WindowAddRequest { { window(9, 0, 0, 32768, 32768) }, true }), CMATRIX_OK);
    QCOMPARE(c->call(MessageType::WindowGet, Empty {}, &list), CMATRIX_OK);
    QCOMPARE(list.windows.size(), size_t(1));
    QCOMPARE(list.windows[0].window.id, 9u);
}

void DecoderTests::sourcesReadBackByteForByte()
{
    vdec::VirtualDecoder* d = fixture_.startDecoder(8);
    TestClient* c = fixture_.connectTo(d);
    QVERIFY(c);
    QCOMPARE(c->call(MessageType::WindowAdd, WindowAddRequest { { window(5, 0, 0, 100, 100) }, false }), CMATRIX_OK);
    QCOMPARE(c->call(MessageType::WindowSetDivision, SetDivisionRequest { 5, 9 }), CMATRIX_OK);
    const DeviceInfo_t a = source(7, "cam-a", 1), b = source(2, "cam-b", 2), e = source(5, "cam-e", 3);
    QCOMPARE(c->call(MessageType::WindowDeviceAdd, WindowDevices { 5, { a, b, e }, false }), CMATRIX_OK);

    WindowDevices got;
    QCOMPARE(c->call(MessageType::WindowDeviceGet, WindowIdRequest { 5 }, &got), CMATRIX_OK);
    QCOMPARE(got.windowId, 5);
    QCOMPARE(got.devices.size(), size_t(3));
    // In sub-window order, every byte as sent.
    QCOMPARE(bytesOf(got.devices[0]), bytesOf(b));
    QCOMPARE(bytesOf(got.devices[1]), bytesOf(e));
    QCOMPARE(bytesOf(got.devices[2]), bytesOf(a));

    // Without reset, a source replaces the one in its sub-window and the others stay.
    const DeviceInfo_t e2 = source(5, "cam-e2", 4);
    QCOMPARE(c->call(MessageType::WindowDeviceAdd, WindowDevices { 5, { e2 }, false }), CMATRIX_OK);
    QCOMPARE(c->call(MessageType::WindowDeviceGet, WindowIdRequest { 5 }, &got), CMATRIX_OK);
    QCOMPARE(got.devices.size(), size_t(3));
    QCOMPARE(bytesOf(got.devices[1]), bytesOf(e2));

    const DeviceInfo_t only = source(1, "cam-only", 5);
    QCOMPARE(c->call(MessageType::WindowDeviceAdd, WindowDevices { 5, { only }, true }), CMATRIX_OK);
    QCOMPARE(c->call(MessageType::WindowDeviceGet, WindowIdRequest { 5 }, &got), CMATRIX_OK);
    QCOMPARE(got.devices.size(), size_t(1));
    QCOMPARE(bytesOf(got.devices[0]), bytesOf(only));
    QCOMPARE(bytesOf(d->snapshot().window(5)->sources.at(1)), bytesOf(only));
}

void DecoderTests::sourceRemoval_data()
{
    QTest::addColumn<std::vector<DeviceInfo_t>>("removed");
    QTest::addColumn<bool>("reset");
    QTest::addColumn<QList<int>>("left");

    QTest::newRow("by device id") << std::vector<DeviceInfo_t> { source(0, "A") } << false << QList<int> { 2, 4 };
    QTest::newRow("by sub-window") << std::vector<DeviceInfo_t> { source(3, "") } << false << QList<int> { 1, 2, 4 };
    QTest::newRow("device in one sub-window")
        << std::vector<DeviceInfo_t> { source(3, "A") } << false << QList<int> { 1, 2, 4 };
    QTest::newRow("device id not there") << std::vector<DeviceInfo_t> { source(0, "Z") } << false
                                         << QList<int> { 1, 2, 3, 4 };
    QTest::newRow("several records") << std::vector<DeviceInfo_t> { source(0, "C"), source(2, "") } << false
                                     << QList<int> { 1, 3 };
    QTest::newRow("reset") << std::vector<DeviceInfo_t> {} << true << QList<int> {};
}

void DecoderTests::sourceRemoval()
{
    QFETCH(std::vector<DeviceInfo_t>, removed);
    QFETCH(bool, reset);
    QFETCH(QList<int>, left);

    vdec::VirtualDecoder* d = fixture_.startDecoder(9);
    TestClient* c = fixture_.connectTo(d);
    QVERIFY(c);
    QCOMPARE(c->call(MessageType::WindowAdd, WindowAddRequest { { window(1, 0, 0, 100, 100) }, false }), CMATRIX_OK);
    QCOMPARE(c->call(MessageType::WindowSetDivision, SetDivisionRequest { 1, 4 }), CMATRIX_OK);
    const std::vector<DeviceInfo_t> four = { source(1, "A"), source(2, "B"), source(3, "A"), source(4, "C") };
    QCOMPARE(c->call(MessageType::WindowDeviceAdd, WindowDevices { 1, four, false }), CMATRIX_OK);

    QCOMPARE(c->call(MessageType::WindowDeviceDel, WindowDevices { 1, removed, reset }), CMATRIX_OK);
    QCOMPARE(subWindowsOf(d->snapshot(), 1), left);
}

void DecoderTests::divisionDropsSourcesBeyondIt()
{
    vdec::VirtualDecoder* d = fixture_.startDecoder(10);
    TestClient* c = fixture_.connectTo(d);
    QVERIFY(c);
    QCOMPARE(c->call(MessageType::WindowAdd, WindowAddRequest { { window(1, 0, 0, 100, 100) }, false }), CMATRIX_OK);
    QCOMPARE(c->call(MessageType::WindowSetDivision, SetDivisionRequest { 1, 9 }), CMATRIX_OK);
    QCOMPARE(c->call(MessageType::WindowDeviceAdd,
                 WindowDevices { 1, { source(1, "a"), source(4, "b"), source(9, "c") }, false }),
        CMATRIX_OK);
    QCOMPARE(c->call(MessageType::WindowSetFullScreen, FullScreenRequest { 1, 9, 1 }), CMATRIX_OK);
    QCOMPARE(d->snapshot().window(1)->fullScreenSub, 9);

    QCOMPARE(c->call(MessageType::WindowSetDivision, SetDivisionRequest { 1, 4 }), CMATRIX_OK);
    QCOMPARE(subWindowsOf(d->snapshot(), 1), (QList<int> { 1, 4 }));
    QCOMPARE(d->snapshot().window(1)->fullScreenSub, 0); // its sub-window is gone

    QCOMPARE(c->call(MessageType::WindowSetFullScreen, FullScreenRequest { 1, 4, 1 }), CMATRIX_OK);
    QCOMPARE(d->snapshot().window(1)->fullScreenSub, 4);
    QCOMPARE(c->call(MessageType::WindowSetFullScreen, FullScreenRequest { 1, 4, 0 }), CMATRIX_OK);
    QCOMPARE(d->snapshot().window(1)->fullScreenSub, 0);

    QCOMPARE(c->call(MessageType::WindowSetDivision, SetDivisionRequest { 1, 1 }), CMATRIX_OK);
    QCOMPARE(subWindowsOf(d->snapshot(), 1), QList<int> { 1 });
    DivisionList divisions;
    QCOMPARE(c->call(MessageType::WindowGetDivision, Empty {}, &divisions), CMATRIX_OK);
    QCOMPARE(divisions.divisions.at(0).division, 1);
}
