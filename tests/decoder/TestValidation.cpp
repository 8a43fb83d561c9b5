#include "DecoderFixture.h"
#include "SuiteMain.h"
#include "WireRecords.h"
#include "state/WindowTable.h"

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

QByteArray adding(const std::vector<MatrixWindow_t>& windows, bool replace = false)
{
    return body(WindowAddRequest { windows, replace });
}

QByteArray sources(int32_t windowId, const std::vector<DeviceInfo_t>& devices, bool reset = false)
{
    return body(WindowDevices { windowId, devices, reset });
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

class TestValidation : public QObject {
    Q_OBJECT

    kvmstest::DecoderFixture fixture_;

private slots:
    void cleanup() { fixture_.cleanup(); }

    void badRequests_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<QByteArray>("payload");
        QTest::addColumn<int>("status");
        using T = MessageType;
        const int invalid = CMATRIX_ERR_INVALID_PARAM, badName = CMATRIX_ERR_NAME, limit = CMATRIX_ERR_LIMIT;
        const int noWindow = CMATRIX_ERR_WINDOW_NOT_FOUND, exists = CMATRIX_ERR_WINDOW_EXISTS;
        const int geometry = CMATRIX_ERR_GEOMETRY, subWindow = CMATRIX_ERR_SUBWINDOW, division = CMATRIX_ERR_DIVISION;
        const int protocol = CMATRIX_ERR_PROTOCOL;

        // One row per way of refusing.
        row("grid 0 columns", T::SetMatrix, body(MatrixGeometry { 0, 2, "W" }), invalid);
        row("grid 64-byte name", T::SetMatrix, body(MatrixGeometry { 2, 2, std::string(64, 'n') }), badName);

        row("status 3", T::SetStatus, body(SetStatusRequest { 3, "" }), invalid);
        row("screen outside grid", T::SetScreens, body(ScreenList { { screen(16, "s") }, false }), invalid);

        row("window id 0", T::WindowAdd, adding({ window(0, 0, 0, 10, 10) }), invalid);
        row("window id taken", T::WindowAdd, adding({ window(1, 0, 0, 10, 10) }), exists);
        row("window past the edge", T::WindowAdd, adding({ window(7, 1, 0, 32768, 10) }), geometry);
        row("window size wrapping", T::WindowAdd, adding({ window(7, 10, 0, INT32_MAX, 10) }), geometry);
        row("windows beyond the limit", T::WindowAdd, adding(manyWindows(10, vdec::WindowTable::kMaxWindows - 1)),
            limit);

        row("delete unknown among known", T::WindowDel, body(IdList { { 1, 99 } }), noWindow);

        row("full screen sub-window 5 of 4", T::WindowSetFullScreen, body(FullScreenRequest { 1, 5, 1 }), subWindow);

        row("division 5", T::WindowSetDivision, body(SetDivisionRequest { 1, 5 }), division);

        row("source sub-window 5 of 4", T::WindowDeviceAdd, sources(1, { device(5, "c") }), subWindow);
        row("five sources for four", T::WindowDeviceAdd,
            sources(1, { device(1, "a"), device(2, "b"), device(3, "c"), device(4, "d"), device(4, "e") }, true),
            limit);

        // Payloads that do not parse exactly.
        QByteArray hugeCount = body(IdList { { 1 } });
        hugeCount[0] = '\xff';
        row("payload one byte short", T::SetMatrix, chopped(body(MatrixGeometry { 2, 2, "W" }), 1), protocol);
        row("list count past the payload", T::WindowDel, hugeCount, protocol);
        row("record cut short", T::WindowMove, chopped(body(WindowMoveRequest { window(1, 0, 0, 10, 10) }), 4),
            protocol);
    }

    void badRequests()
    {
        QFETCH(int, type);
        QFETCH(QByteArray, payload);
        QFETCH(int, status);

        vdec::VirtualDecoder* d = nullptr;
        TestClient* c = standardWall(fixture_, &d);
        QVERIFY(c);
        const QString before = statePrint(d->snapshot());
        QCOMPARE(c->callRaw(uint16_t(type), TestClient::Bytes(payload.begin(), payload.end())), status);
        QCOMPARE(statePrint(d->snapshot()), before);
        // The connection stays usable.
        MatrixGeometry geometry;
        QCOMPARE(c->call(MessageType::GetMatrix, Empty {}, &geometry), CMATRIX_OK);
        QCOMPARE(geometry.name, std::string("Lobby"));
    }
};

KVMS_TEST_CLASS(TestValidation)
#include "TestValidation.moc"
