// A wall read through the worker (how each window lies on the grid), the call log lines of a
// session, and a new layout laid and read back.
#include "WallRig.h"

#include "QueuedSignalSpy.h"
#include "SuiteMain.h"

#include "TestTimeout.h"
#include "WireBuilders.h"

#include <QImage>
#include <QRegularExpression>
#include <QSettings>
#include <QtTest>

using namespace kvms_matrix;
using kvmstest::scaled;

class TestWallLayout : public QObject, public WallRig {
    Q_OBJECT

private slots:
    void initTestCase() { QVERIFY(enterWorkDirectory()); }
    void cleanup() { QVERIFY(settle()); }
    void cleanupTestCase() { QVERIFY(leaveWorkDirectory()); }
    void windowsReadBack_data();
    void windowsReadBack();
    void callLogLines();
    void layoutWithinWhatTheDecoderHolds_data();
    void layoutWithinWhatTheDecoderHolds();
};

void TestWallLayout::windowsReadBack_data()
{
    QTest::addColumn<int>("side"); // a wall of side x side cells
    QTest::addColumn<QList<int>>("covered"); // cell windows deleted before the window is added
    QTest::addColumn<QList<int>>("window"); // id, x, y, w, h, floating
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("spanRows");
    QTest::addColumn<QList<int>>("cells");

    QTest::newRow("4x4, 2x2 from cell 6")
        << 4 << QList<int> { 6, 7, 10, 11 } << QList<int> { 6, 8192, 8192, 16384, 16384, 0 } << 1 << 2
        << QList<int> { 6, 7, 10, 11 };
    QTest::newRow("3x3, to the wall's edge")
        << 3 << QList<int> { 8, 9 } << QList<int> { 8, 10922, 21844, 21846, 10922, 0 } << 1 << 1 << QList<int> { 8, 9 };
    QTest::newRow("floating, larger than a cell")
        << 2 << QList<int> {} << QList<int> { 9, 100, 100, 20000, 20000, 1 } << 2 << 1 << QList<int> {};
    QTest::newRow("smaller than its cell")
        << 2 << QList<int> { 4 } << QList<int> { 4, 16384, 16384, 8000, 8000, 0 } << 0 << 1 << QList<int> {};
}

void TestWallLayout::windowsReadBack()
{
    QFETCH(int, side);
    QFETCH(QList<int>, covered);
    QFETCH(QList<int>, window);
    QFETCH(int, type);
    QFETCH(int, spanRows);
    QFETCH(QList<int>, cells);
    const Handle h = wallOn(side, side);
    QVERIFY(h);
    const std::vector<uint32_t> ids(covered.begin(), covered.end());
    QVERIFY(ids.empty() || CMatrix_WindowDel(*sdk_, ids.data(), int(ids.size())) == CMATRIX_OK);
    const MatrixWindow_t record
        = kvmstest::window(uint32_t(window[0]), window[1], window[2], window[3], window[4], window[5] != 0);
    QCOMPARE(CMatrix_WindowAdd(*sdk_, &record, 1, false), CMATRIX_OK);

    int rows = 0;
    int cols = 0;
    const QList<MatrixWindowInfo> wall = readWall(h, &rows, &cols);
    QCOMPARE(QList<int>({ rows, cols, wall.size() }), QList<int>({ side, side, side * side - covered.size() + 1 }));
    const MatrixWindowInfo& w = wall.last(); // the decoder lists windows in creation order
    QCOMPARE(QList<int>({ w.windowId, w.x, w.y, w.w, w.h }), window.mid(0, 5));
    QCOMPARE(QList<int>({ w.windowIndex, w.windowType, w.spanRows, w.spanCols }),
        QList<int>({ window[0] - 1, type, spanRows, cells.isEmpty() ? 1 : cells.size() / spanRows }));
    QList<int> cellIds;
    for (int k = 0; k < w.cells.size(); ++k) {
        cellIds.append(w.cells[k].cellId);
        QCOMPARE(QList<int>({ w.cells[k].row, w.cells[k].column }), QList<int>({ k / w.spanCols, k % w.spanCols }));
    }
    QCOMPARE(cellIds, cells);
    // Floating windows stack above the others and do not number their sub-windows.
    QCOMPARE(w.layer > 0, type == 2);
    QCOMPARE(QList<int>({ w.subWindows.size(), w.subWindows[0].subWindowId }), QList<int>({ 1, type == 2 ? -1 : 1 }));
}

// The call log lines support staff search for, byte for byte, from one session of common tasks.
void TestWallLayout::callLogLines()
{
    const Handle h = wallOn(1, 2);
    QVERIFY(h);
    QCOMPARE(CMatrix_WindowSetDivision(*sdk_, 2, 4), CMATRIX_OK);
    QCOMPARE(readWall(h).size(), 2);
    QueuedSignalSpy saved(worker(), &MatrixSdkWorker::signalSaveSceneResult);
    worker()->saveScene(h, -1, QStringLiteral("seven"), nullptr);
    QVERIFY(saved.wait(scaled(5000)));
    QueuedSignalSpy listed(worker(), &MatrixSdkWorker::signalGetSceneInfoResult);
    worker()->getScene(h);
    QVERIFY(listed.wait(scaled(5000)));
    QCOMPARE(createScheme(3, "turn", { "Cam-0", "Cam-1" }), CMATRIX_OK);
    MatrixLoopInfo loop;
    loop.loopId = 3;
    loop.loopName = QStringLiteral("turn");
    using RestoreSignal = void (MatrixSdkWorker::*)(int, int, int, const QList<MatrixSubWindowInfo>&);
    QueuedSignalSpy restored(worker(), static_cast<RestoreSignal>(&MatrixSdkWorker::signalRestoreLoopInfoResult));
    worker()->restoreLoopInfo(h, -1, 1, loop);
    QVERIFY(restored.wait(scaled(5000)));
    QCOMPARE(worker()->stopMatrixLoop(h, 1), CMATRIX_OK);
    QImage image(64, 48, QImage::Format_RGB32);
    image.fill(Qt::red);
    const QString path = workDir_.filePath(QStringLiteral("sea.jpg"));
    QVERIFY(image.save(path, "JPG"));
    MatrixWindowInfo window = windowInfo(2, 4);
    MatrixDeviceInfo& picture = window.subWindows[1].device;
    picture.deviceType = 3;
    picture.deviceId = QStringLiteral("pic_sea");
    picture.mainUrl = path;
    picture.channel = 2;
    QCOMPARE(bind(h, window, 2), CMATRIX_OK);

    const QString handle
        = QRegularExpression::escape(QStringLiteral("0x") + QString::number(quintptr(h->handle()), 16));
    const QString stamp = QStringLiteral("[-0-9: ]+");
    const QString end = QStringLiteral("time = %1 ,  Elapsed = \\d+ \\}").arg(stamp);
    const QStringList expected {
        "\\{ funcName = CMatrix_GetMatrix , params\\{ mHandle = %1 , layoutCol = 2 , layoutRow = 1 \\} , ret = 0 , %2",
        "\\{ funcName = CMatrix_WindowGetDivision , params\\{ mHandle = %1 , windId = 1,2 , division = 1,4 \\} , "
        "ret = 2 , %2",
        "\\{ funcName = CMatrix_WindowDeviceGet , params \\{ mHandle = %1 ,windowId = 2 \\} , ret = 0  , time = "
        "%3  , Elapsed = \\d+ \\}\\n[-0-9:. ]+\\{\"deviceList\":\\[\\],\"windowId\":2\\}",
        // Every list goes back to the SDK logged.
        "\\{ funcName = CMatrix_Free , params\\{ mHandle = %1 \\} , ret = 0 , %2",
        "funcName = getMatrixScenes , params \\{ mHandle = .* , ret = "
        "\\{\"ret\":\\[\\{\"sceneId\":1,\"sceneName\":\"seven\"\\}\\]\\}  , time = ",
        // Starting and stopping a loop are both logged under the removal's name.
        "\\{ funcName = removeMatrixLoopInfo , params \\{ mHandle = %1 , windowId = 1 \\} , ret = 0 , time = ",
        "\\{ funcName = removeMatrixLoopInfo , params \\{ mHandle = %1 , windowId = \\d{4}-\\d\\d-\\d\\d "
        "\\d\\d:\\d\\d:\\d\\d , loopId = 3 \\} , ret = 0 , time = ",
        "\\{ funcName = sendDeviceDisplayFrame , params\\{ windowId = 2 , device = %4 \\} ,ret = 0, time = %3 , "
        "elapsd = \\d+ \\}",
    };
    const QString log = logText();
    for (const QString& pattern : expected) {
        const QString filled = QString(pattern)
                                   .replace(QLatin1String("%1"), handle)
                                   .replace(QLatin1String("%2"), end)
                                   .replace(QLatin1String("%3"), stamp)
                                   .replace(QLatin1String("%4"), QRegularExpression::escape(path));
        QVERIFY2(QRegularExpression(filled).match(log).hasMatch(), qPrintable(pattern));
    }
}

void TestWallLayout::layoutWithinWhatTheDecoderHolds_data()
{
    QTest::addColumn<int>("side");
    QTest::addColumn<int>("ret");
    QTest::newRow("16 x 16, the largest grid") << 16 << CMATRIX_OK;
    QTest::newRow("17 x 17, refused untouched") << 17 << CMATRIX_ERR_LIMIT;
}

void TestWallLayout::layoutWithinWhatTheDecoderHolds()
{
    QFETCH(int, side);
    QFETCH(int, ret);
    const Handle h = wallOn(2, 2);
    QVERIFY(h);
    QCOMPARE(CMatrix_SceneCreate(*sdk_, 1, "Day"), CMATRIX_OK);
    QueuedSignalSpy laid(worker(), &MatrixSdkWorker::signalSetLayoutResult);
    worker()->setLayout(QStringLiteral("Big"), 0, side, side, {}, decoder_->address());
    QVERIFY(laid.wait(scaled(10000)));
    QCOMPARE(laid.at(0).at(0).toInt(), ret);
    const vdec::DecoderSnapshot s = decoder_->snapshot();
    QCOMPARE(int(s.windows.size()), ret == CMATRIX_OK ? side * side : 4);
    QCOMPARE(s.scenes.size(), size_t(ret == CMATRIX_OK ? 0 : 1));
}

KVMS_TEST_CLASS(TestWallLayout)
#include "TestWallLayout.moc"
