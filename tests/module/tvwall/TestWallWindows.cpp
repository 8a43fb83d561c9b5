// Windows through the worker: spliced and floating windows, divisions, clearing, full screen,
// moving.
#include "WallRig.h"

#include "QueuedSignalSpy.h"
#include "SuiteMain.h"

#include "TestTimeout.h"
#include "WireBuilders.h"

#include <QtTest>

using namespace kvms_matrix;
using kvmstest::scaled;

namespace {

QList<int> rectOf(const vdec::Window* w)
{
    return w ? QList<int> { w->x, w->y, w->w, w->h } : QList<int> {};
}

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
    void addWindow_data();
    void addWindow();
    void removingASplicedWindowGivesItsCellsBack();
    void split_data();
    void split();
    void clearingOneSubWindowRewritesTheOthers();
    void clearingAWholeWindowStopsItsLoop();
    void fullScreenAndMove();
};

void TestWallWindows::addWindow_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QList<int>>("window"); // id, x, y, w, h
    QTest::addColumn<QList<int>>("cells");
    QTest::addColumn<int>("ret");
    QTest::addColumn<int>("windowsAfter");

    QTest::newRow("spliced over the top row")
        << 1 << QList<int> { 1, 0, 0, 32768, 16384 } << QList<int> { 1, 2 } << 0 << 3;
    QTest::newRow("floating") << 2 << QList<int> { 9, 100, 100, 5000, 5000 } << QList<int> {} << 0 << 5;
    QTest::newRow("a normal window is not created")
        << 0 << QList<int> { 9, 0, 0, 100, 100 } << QList<int> {} << -1 << 4;
    QTest::newRow("spliced over a cell that is not there")
        << 1 << QList<int> { 1, 0, 0, 32768, 16384 } << QList<int> { 1, 7 } << int(CMATRIX_ERR_WINDOW_NOT_FOUND) << 4;
}

void TestWallWindows::addWindow()
{
    QFETCH(int, type);
    QFETCH(QList<int>, window);
    QFETCH(QList<int>, cells);
    QFETCH(int, ret);
    QFETCH(int, windowsAfter);
    const Handle h = wallOn(2, 2);
    QVERIFY(h);
    MatrixWindowInfo info;
    info.windowType = type;
    info.windowId = window[0];
    info.x = window[1];
    info.y = window[2];
    info.w = window[3];
    info.h = window[4];
    for (int id : cells)
        info.cells.append(MatrixCellInfo { id, 0, 0 });
    QueuedSignalSpy added(worker(), &MatrixSdkWorker::signalAddWindowInfoResult);
    worker()->addWindowInfo(h, info);
    QVERIFY(added.wait(scaled(5000)));
    QCOMPARE(added.at(0).at(0).toInt(), ret);

    const vdec::DecoderSnapshot s = decoder_->snapshot();
    QCOMPARE(int(s.windows.size()), windowsAfter);
    if (ret == CMATRIX_OK) {
        QCOMPARE(rectOf(s.window(uint32_t(window[0]))), window.mid(1));
        QCOMPARE(s.window(uint32_t(window[0]))->floating, type == 2);
        QCOMPARE(s.window(2) == nullptr, type == 1); // a covered cell is gone
    }
}

void TestWallWindows::removingASplicedWindowGivesItsCellsBack()
{
    const Handle h = wallOn(4, 4);
    QVERIFY(h);
    const std::vector<uint32_t> block { 6, 7, 10, 11 };
    QCOMPARE(CMatrix_WindowDel(*sdk_, block.data(), 4), CMATRIX_OK);
    const MatrixWindow_t spliced = kvmstest::window(6, 8192, 8192, 16384, 16384);
    QCOMPARE(CMatrix_WindowAdd(*sdk_, &spliced, 1, false), CMATRIX_OK);

    const QList<MatrixWindowInfo> wall = readWall(h); // the window as the form has it
    QCOMPARE(wall.last().windowId, 6);
    QueuedSignalSpy removed(worker(), &MatrixSdkWorker::signalRemoveWindowResult);
    worker()->removeWindow(h, wall.last());
    QVERIFY(removed.wait(scaled(5000)));
    QCOMPARE(removed.at(0), QVariantList({ 0, 6, 1 }));

    const vdec::DecoderSnapshot s = decoder_->snapshot();
    QCOMPARE(s.windows.size(), size_t(16));
    for (uint32_t id : block) {
        const int row = int(id - 1) / 4;
        const int col = int(id - 1) % 4;
        QCOMPARE(rectOf(s.window(id)), QList<int>({ col * 8192, row * 8192, 8192, 8192 }));
    }
}

void TestWallWindows::split_data()
{
    QTest::addColumn<int>("windowId");
    QTest::addColumn<int>("split");
    QTest::addColumn<int>("ret");

    QTest::newRow("25") << 1 << 25 << 0;
    QTest::newRow("3 is refused") << 1 << 3 << int(CMATRIX_ERR_DIVISION);
    QTest::newRow("unknown window") << 77 << 4 << int(CMATRIX_ERR_WINDOW_NOT_FOUND);
}

void TestWallWindows::split()
{
    QFETCH(int, windowId);
    QFETCH(int, split);
    QFETCH(int, ret);
    const Handle h = wallOn(2, 2);
    QVERIFY(h);
    QCOMPARE(CMatrix_WindowSetDivision(*sdk_, 1, 9), CMATRIX_OK);
    const DeviceInfo_t bound = kvmstest::device(2, "AB2");
    QCOMPARE(CMatrix_WindowDeviceAdd(*sdk_, 1, &bound, 1, true), CMATRIX_OK);

    QueuedSignalSpy divided(worker(), &MatrixSdkWorker::signalSetWindowSplitResult);
    worker()->setWindowSplit(h, windowId, split);
    QVERIFY(divided.wait(scaled(5000)));
    QCOMPARE(divided.at(0).mid(0, 2), QVariantList({ ret, windowId }));
    const QList<MatrixSubWindowInfo> subs = divided.at(0).at(2).value<QList<MatrixSubWindowInfo>>();
    QCOMPARE(subs.size(), ret == CMATRIX_OK ? split : 0);
    for (int k = 0; k < subs.size(); ++k) {
        QCOMPARE(subs[k].subWindowId, k + 1);
        QCOMPARE(subs[k].sourceState, k == 1 ? 1 : 0); // the source of sub-window 2 stays
    }
    QCOMPARE(decoder_->snapshot().window(1)->division, ret == CMATRIX_OK ? split : 9);
}

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

void TestWallWindows::fullScreenAndMove()
{
    const Handle h = wallOn(2, 2);
    QVERIFY(h);
    QCOMPARE(CMatrix_WindowSetDivision(*sdk_, 1, 4), CMATRIX_OK);
    const MatrixWindow_t floating = kvmstest::window(9, 0, 0, 1000, 1000, true);
    QCOMPARE(CMatrix_WindowAdd(*sdk_, &floating, 1, false), CMATRIX_OK);

    QueuedSignalSpy full(worker(), &MatrixSdkWorker::signalSetFullWindowResult);
    worker()->setFullWindow(h, 1, 3, true);
    worker()->setFullWindow(h, 1, 5, true); // past the division
    QTRY_COMPARE_WITH_TIMEOUT(full.size(), 2, scaled(5000));
    QCOMPARE(full.at(0), QVariantList({ 0, 1, 3 }));
    QCOMPARE(full.at(1), QVariantList({ int(CMATRIX_ERR_SUBWINDOW), 1, 5 }));
    QCOMPARE(decoder_->snapshot().window(1)->fullScreenSub, 3);

    MatrixWindowInfo moved = windowInfo(9, 1);
    moved.windowType = 2;
    moved.x = 2000;
    moved.y = 3000;
    moved.w = 4000;
    moved.h = 5000;
    worker()->moveFloatingWindow(h, moved); // no result signal: the next task's tells it is done
    worker()->setFullWindow(h, 1, 3, false);
    QTRY_COMPARE_WITH_TIMEOUT(full.size(), 3, scaled(5000));
    const vdec::DecoderSnapshot s = decoder_->snapshot();
    QCOMPARE(rectOf(s.window(9)), QList<int>({ 2000, 3000, 4000, 5000 }));
    QVERIFY(s.window(9)->floating);
    QCOMPARE(s.window(1)->fullScreenSub, 0);
}

KVMS_TEST_CLASS(TestWallWindows)
#include "TestWallWindows.moc"
