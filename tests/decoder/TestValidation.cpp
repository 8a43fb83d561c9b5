#include "DecoderTests.h"
#include "WireRecords.h"

#include <QtTest>

using namespace cmatrix::wire;
using namespace wirerecords;
using kvmstest::TestClient;

namespace {

template <class Body> QByteArray body(const Body& b)
{
    const TestClient::Bytes bytes = TestClient::encodeBody(b);
    return QByteArray(reinterpret_cast<const char*>(bytes.data()), int(bytes.size()));
}

QByteArray chopped(QByteArray bytes, int n)
{
    bytes.chop(n);
    return bytes;
}

void row(const char* name, MessageType type, const QByteArray& payload, int status)
{
    QTest::newRow(name) << int(type) << payload << status;
}

std::vector<MatrixWindow_t> manyWindows(uint32_t firstId, int count)
{
    std::vector<MatrixWindow_t> list;
    for (int i = 0; i < count; ++i)
        list.push_back(window(firstId + uint32_t(i), 0, 0, 100, 100));
    return list;
}

} // namespace

void DecoderTests::badRequests_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QByteArray>("payload");
    QTest::addColumn<int>("status");
    using T = MessageType;

    row("grid 0 columns", T::SetMatrix, body(MatrixGeometry { 0, 2, "W" }), CMATRIX_ERR_INVALID_PARAM);
    row("grid 17 rows", T::SetMatrix, body(MatrixGeometry { 2, 17, "W" }), CMATRIX_ERR_INVALID_PARAM);
    row("grid empty name", T::SetMatrix, body(MatrixGeometry { 2, 2, "" }), CMATRIX_ERR_NAME);
    row("grid 64-byte name", T::SetMatrix, body(MatrixGeometry { 2, 2, std::string(64, 'n') }), CMATRIX_ERR_NAME);
    row("grid name not UTF-8", T::SetMatrix, body(MatrixGeometry { 2, 2, "\xff\xfe" }), CMATRIX_ERR_NAME);

    row("time month 13", T::SetTime, body(SetTimeRequest { 2024, 13, 1, 0, 0, 0 }), CMATRIX_ERR_INVALID_PARAM);
    row("time 30 February", T::SetTime, body(SetTimeRequest { 2024, 2, 30, 0, 0, 0 }), CMATRIX_ERR_INVALID_PARAM);
    row("time hour 24", T::SetTime, body(SetTimeRequest { 2024, 1, 1, 24, 0, 0 }), CMATRIX_ERR_INVALID_PARAM);
    row("time year 1999", T::SetTime, body(SetTimeRequest { 1999, 1, 1, 0, 0, 0 }), CMATRIX_ERR_INVALID_PARAM);

    row("status 3", T::SetStatus, body(SetStatusRequest { 3, "" }), CMATRIX_ERR_INVALID_PARAM);
    row("secondary without master", T::SetStatus, body(SetStatusRequest { 2, "" }), CMATRIX_ERR_INVALID_PARAM);
    row("master not an address", T::SetStatus, body(SetStatusRequest { 2, "1.2.3" }), CMATRIX_ERR_INVALID_PARAM);

    ScreenInfo_t unterminated = screen(1, "s");
    memset(unterminated.ip, '1', sizeof unterminated.ip);
    row("screen outside grid", T::SetScreens, body(ScreenList { { screen(16, "s") }, false }),
        CMATRIX_ERR_INVALID_PARAM);
    row("two screens one position", T::SetScreens, body(ScreenList { { screen(3, "a"), screen(3, "b") }, true }),
        CMATRIX_ERR_INVALID_PARAM);
    row("screen text unterminated", T::SetScreens, body(ScreenList { { unterminated }, false }),
        CMATRIX_ERR_INVALID_PARAM);

    row("window id 0", T::WindowAdd, body(WindowAddRequest { { window(0, 0, 0, 10, 10) }, false }),
        CMATRIX_ERR_INVALID_PARAM);
    row("window id taken", T::WindowAdd, body(WindowAddRequest { { window(1, 0, 0, 10, 10) }, false }),
        CMATRIX_ERR_WINDOW_EXISTS);
    row("window id twice", T::WindowAdd,
        body(WindowAddRequest { { window(7, 0, 0, 10, 10), window(7, 0, 0, 20, 20) }, true }),
        CMATRIX_ERR_WINDOW_EXISTS);
    row("window width 0", T::WindowAdd, body(WindowAddRequest { { window(7, 0, 0, 0, 10) }, false }),
        CMATRIX_ERR_GEOMETRY);
    row("window past the edge", T::WindowAdd, body(WindowAddRequest { { window(7, 1, 0, 32768, 10) }, false }),
        CMATRIX_ERR_GEOMETRY);
    row("window at x -1", T::WindowAdd, body(WindowAddRequest { { window(7, -1, 0, 10, 10) }, false }),
        CMATRIX_ERR_GEOMETRY);
    row("window size wrapping", T::WindowAdd, body(WindowAddRequest { { window(7, 10, 0, INT32_MAX, 10) }, false }),
        CMATRIX_ERR_GEOMETRY);
    MatrixWindow_t oddFloating = window(7, 0, 0, 10, 10);
    oddFloating.floating = 2;
    row("window floating 2", T::WindowAdd, body(WindowAddRequest { { oddFloating }, false }),
        CMATRIX_ERR_INVALID_PARAM);
    row("windows beyond the limit", T::WindowAdd, body(WindowAddRequest { manyWindows(10, 63), false }),
        CMATRIX_ERR_LIMIT);
    row("replace beyond the limit", T::WindowAdd, body(WindowAddRequest { manyWindows(10, 65), true }),
        CMATRIX_ERR_LIMIT);

    row("delete unknown among known", T::WindowDel, body(IdList { { 1, 99 } }), CMATRIX_ERR_WINDOW_NOT_FOUND);
    row("delete nothing", T::WindowDel, body(IdList {}), CMATRIX_ERR_INVALID_PARAM);
    row("move unknown", T::WindowMove, body(WindowMoveRequest { window(99, 0, 0, 10, 10) }),
        CMATRIX_ERR_WINDOW_NOT_FOUND);
    row("move off the wall", T::WindowMove, body(WindowMoveRequest { window(1, 0, 32000, 10, 800) }),
        CMATRIX_ERR_GEOMETRY);

    row("full screen unknown window", T::WindowSetFullScreen, body(FullScreenRequest { 99, 1, 1 }),
        CMATRIX_ERR_WINDOW_NOT_FOUND);
    row("full screen sub-window 0", T::WindowSetFullScreen, body(FullScreenRequest { 1, 0, 1 }), CMATRIX_ERR_SUBWINDOW);
    row("full screen sub-window 5 of 4", T::WindowSetFullScreen, body(FullScreenRequest { 1, 5, 1 }),
        CMATRIX_ERR_SUBWINDOW);
    row("full screen flag 2", T::WindowSetFullScreen, body(FullScreenRequest { 1, 1, 2 }), CMATRIX_ERR_INVALID_PARAM);

    row("division 5", T::WindowSetDivision, body(SetDivisionRequest { 1, 5 }), CMATRIX_ERR_DIVISION);
    row("division 0", T::WindowSetDivision, body(SetDivisionRequest { 1, 0 }), CMATRIX_ERR_DIVISION);
    row("division unknown window", T::WindowSetDivision, body(SetDivisionRequest { 99, 4 }),
        CMATRIX_ERR_WINDOW_NOT_FOUND);

    row("source unknown window", T::WindowDeviceAdd, body(WindowDevices { 99, { source(1, "c") }, false }),
        CMATRIX_ERR_WINDOW_NOT_FOUND);
    row("source sub-window 0", T::WindowDeviceAdd, body(WindowDevices { 1, { source(0, "c") }, false }),
        CMATRIX_ERR_SUBWINDOW);
    row("source sub-window 5 of 4", T::WindowDeviceAdd, body(WindowDevices { 1, { source(5, "c") }, false }),
        CMATRIX_ERR_SUBWINDOW);
    row("five sources for four", T::WindowDeviceAdd,
        body(WindowDevices {
            1, { source(1, "a"), source(2, "b"), source(3, "c"), source(4, "d"), source(4, "e") }, true }),
        CMATRIX_ERR_LIMIT);
    row("two sources one sub-window", T::WindowDeviceAdd,
        body(WindowDevices { 1, { source(3, "a"), source(3, "b") }, false }), CMATRIX_ERR_INVALID_PARAM);
    row("remove from sub-window 7 of 4", T::WindowDeviceDel, body(WindowDevices { 1, { source(7, "") }, false }),
        CMATRIX_ERR_SUBWINDOW);
    row("remove from unknown window", T::WindowDeviceDel, body(WindowDevices { 99, {}, true }),
        CMATRIX_ERR_WINDOW_NOT_FOUND);
    row("sources of unknown window", T::WindowDeviceGet, body(WindowIdRequest { 99 }), CMATRIX_ERR_WINDOW_NOT_FOUND);

    // Payloads that do not parse exactly.
    QByteArray hugeCount = body(IdList { { 1 } });
    hugeCount[0] = '\xff';
    QByteArray hugeName = body(MatrixGeometry { 2, 2, "W" });
    hugeName[8] = '\x7f';
    row("payload one byte short", T::SetMatrix, chopped(body(MatrixGeometry { 2, 2, "W" }), 1), CMATRIX_ERR_PROTOCOL);
    row("payload one byte long", T::GetMatrix, QByteArray(1, '\0'), CMATRIX_ERR_PROTOCOL);
    row("list count past the payload", T::WindowDel, hugeCount, CMATRIX_ERR_PROTOCOL);
    row("text length past the payload", T::SetMatrix, hugeName, CMATRIX_ERR_PROTOCOL);
    row("record cut short", T::WindowMove, chopped(body(WindowMoveRequest { window(1, 0, 0, 10, 10) }), 4),
        CMATRIX_ERR_PROTOCOL);
}

void DecoderTests::badRequests()
{
    QFETCH(int, type);
    QFETCH(QByteArray, payload);
    QFETCH(int, status);

    vdec::VirtualDecoder* d = nullptr;
    TestClient* c = standardWall(&d);
    QVERIFY(c);
    const QString before = stateText(d->snapshot());
    QCOMPARE(c->callRaw(uint16_t(type), TestClient::Bytes(payload.begin(), payload.end())), status);
    QCOMPARE(stateText(d->snapshot()), before);
    // The connection stays usable.
    MatrixGeometry geometry;
    QCOMPARE(c->call(MessageType::GetMatrix, Empty {}, &geometry), CMATRIX_OK);
    QCOMPARE(geometry.name, std::string("Lobby"));
}
