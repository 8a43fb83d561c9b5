// Reading a wall through the worker: how each window lies on the grid, what each bound source
// is taken for, and the call log lines of a read.
#include "WallRig.h"

#include "QueuedSignalSpy.h"
#include "TestSuiteMain.h"

#include "WireBuilders.h"

#include <QRegularExpression>
#include <QtTest>

using namespace kvms_matrix;

class TestWallReading : public QObject, public WallRig {
    Q_OBJECT

private slots:
    void initTestCase() { QVERIFY(enterWorkDirectory()); }
    void cleanup() { QVERIFY(settle()); }
    void cleanupTestCase() { QVERIFY(leaveWorkDirectory()); }
    void windowsReadBack_data();
    void windowsReadBack();
    void readingIsLogged();
};

void TestWallReading::windowsReadBack_data()
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

void TestWallReading::windowsReadBack()
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
    QCOMPARE(w.windowIndex, window[0] - 1);
    QCOMPARE(w.windowType, type);
    QCOMPARE(w.spanRows, spanRows);
    QCOMPARE(w.spanCols, cells.isEmpty() ? 1 : cells.size() / spanRows);
    QList<int> cellIds;
    for (int k = 0; k < w.cells.size(); ++k) {
        cellIds.append(w.cells[k].cellId);
        QCOMPARE(QList<int>({ w.cells[k].row, w.cells[k].column }), QList<int>({ k / w.spanCols, k % w.spanCols }));
    }
    QCOMPARE(cellIds, cells);
    // Floating windows stack above the others and do not number their sub-windows.
    QCOMPARE(w.layer > 0, type == 2);
    QCOMPARE(w.subWindows.size(), 1);
    QCOMPARE(w.subWindows[0].subWindowId, type == 2 ? -1 : 1);
}

void TestWallReading::readingIsLogged()
{
    const Handle h = wallOn(1, 2);
    QVERIFY(h);
    QCOMPARE(CMatrix_WindowSetDivision(*sdk_, 2, 4), CMATRIX_OK);
    QCOMPARE(readWall(h).size(), 2);

    const QString log = logText();
    const QString handle
        = QRegularExpression::escape(QStringLiteral("0x") + QString::number(quintptr(h->handle()), 16));
    const QString end = QStringLiteral("time = [-0-9: ]+ ,  Elapsed = \\d+ \\}");
    const QStringList expected {
        "\\{ funcName = CMatrix_GetMatrix , params\\{ mHandle = %1 , layoutCol = 2 , layoutRow = 1 \\} , ret = 0 , %2",
        "\\{ funcName = CMatrix_WindowGetDivision , params\\{ mHandle = %1 , windId = 1,2 , division = 1,4 \\} , "
        "ret = 2 , %2",
        "\\{ funcName = CMatrix_WindowDeviceGet , params \\{ mHandle = %1 ,windowId = 2 \\} , ret = 0  , time = "
        "[-0-9: ]+  , Elapsed = \\d+ \\}\\n[-0-9:. ]+\\{\"deviceList\":\\[\\],\"windowId\":2\\}",
        "\\{ funcName = CMatrix_Free , params\\{ mHandle = %1 \\} , ret = 0 , %2",
    };
    for (const QString& pattern : expected)
        QVERIFY2(QRegularExpression(pattern.arg(handle, end)).match(log).hasMatch(), qPrintable(pattern));
}

KVMS_TEST_CLASS(TestWallReading)
#include "TestWallReading.moc"
