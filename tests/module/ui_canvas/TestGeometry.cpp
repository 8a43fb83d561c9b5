#include "CanvasFixture.h"
#include "SuiteMain.h"

#include "CanvasGeometry.h"
#include "FloatingGeometry.h"

#include <QtTest>

using namespace kvms_matrix;

using RectList = QList<QRect>;

class TestGeometry : public QObject {
    Q_OBJECT

private slots:
    void init() { canvastest::muteMessages(); }
    void cleanup() { canvastest::unmuteMessages(); }
    void panelRects_data();
    void panelRects();
    void conversions_data();
    void conversions();
    void floatingCreation();
};

// Expected rectangles worked out by hand from the layout rules: the first panel, the second
// (the first small one when there is a large cell) and the last, and how many there are. The
// sizes and divisions are those where rounding or the large cell's rule differ.
void TestGeometry::panelRects_data()
{
    QTest::addColumn<QSize>("canvas");
    QTest::addColumn<QRect>("wall");
    QTest::addColumn<int>("division");
    QTest::addColumn<int>("count");
    QTest::addColumn<RectList>("expected"); // first, second, last

    // Centre cell of a 3 x 3 wall on 960 x 540: window at (319, 179), 319 x 179; T = 24.
    const QRect centre(10922, 10922, 10922, 10922);
    const QSize even(960, 540);
    QTest::newRow("960x540 d1") << even << centre << 1 << 1
                                << RectList { QRect(320, 204, 317, 153), QRect(320, 204, 317, 153),
                                       QRect(320, 204, 317, 153) };
    QTest::newRow("960x540 d6") << even << centre << 6 << 6
                                << RectList { QRect(320, 204, 210, 108), QRect(532, 204, 104, 49),
                                       QRect(532, 306, 104, 49) };
    // Large cell of 8: 44 x 3 - 2 - 3 x 6 - 1 = 111 high, 2 x 6 + 1 below the ordinary rule.
    QTest::newRow("960x540 d8") << even << centre << 8 << 8
                                << RectList { QRect(320, 204, 235, 111), QRect(557, 204, 77, 36),
                                       QRect(557, 318, 77, 36) };
    QTest::newRow("960x540 d25") << even << centre << 25 << 25
                                 << RectList { QRect(320, 204, 61, 29), QRect(383, 204, 61, 29),
                                        QRect(572, 324, 61, 29) };

    // The whole wall on an odd 801 x 451 canvas: one column as wide as the canvas is one pixel
    // narrower (800), one row as high as it one pixel lower (450); T = 20.
    const QRect whole(0, 0, 32768, 32768);
    const QSize odd(801, 451);
    QTest::newRow("801x451 d1") << odd << whole << 1 << 1
                                << RectList { QRect(1, 21, 798, 428), QRect(1, 21, 798, 428), QRect(1, 21, 798, 428) };
    QTest::newRow("801x451 d8") << odd << whole << 8 << 8
                                << RectList { QRect(1, 21, 598, 318), QRect(601, 21, 198, 105),
                                       QRect(601, 342, 198, 105) };

    // A 1 x 2 spliced column on a small odd canvas: window at (221, 0), 111 x 124; T = 8.
    const QRect column(21844, 0, 10924, 21844);
    const QSize small(333, 187);
    QTest::newRow("333x187 d8") << small << column << 8 << 8
                                << RectList { QRect(222, 9, 79, 84), QRect(303, 9, 25, 27), QRect(303, 96, 25, 27) };

    QTest::newRow("division 3") << even << centre << 3 << 0 << RectList {};
    QTest::newRow("division 0") << odd << whole << 0 << 0 << RectList {};
}

void TestGeometry::panelRects()
{
    QFETCH(QSize, canvas);
    QFETCH(QRect, wall);
    QFETCH(int, division);
    QFETCH(int, count);
    QFETCH(RectList, expected);

    const MatrixWindowInfo info = canvastest::window(1, wall.x(), wall.y(), wall.width(), wall.height(), division);
    const QVector<QRect> rects = CanvasGeometry::panelRects(info, canvas);
    QCOMPARE(rects.size(), count);
    if (count == 0)
        return;
    QCOMPARE(rects.first(), expected.at(0));
    if (count > 1)
        QCOMPARE(rects.at(1), expected.at(1));
    QCOMPARE(rects.last(), expected.at(2));
}

void TestGeometry::conversions_data()
{
    QTest::addColumn<QSize>("canvas");
    QTest::addColumn<QRect>("wall");
    QTest::addColumn<QRect>("full");
    QTest::addColumn<int>("title");

    // The full panel is not narrowed like a one-column cell.
    QTest::newRow("801x451 whole") << QSize(801, 451) << QRect(0, 0, 32768, 32768) << QRect(1, 21, 799, 429) << 20;
    QTest::newRow("960x540 centre") << QSize(960, 540) << QRect(10922, 10922, 10922, 10922) << QRect(320, 204, 317, 153)
                                    << 24;
    QTest::newRow("333x187 column") << QSize(333, 187) << QRect(21844, 0, 10924, 21844) << QRect(222, 9, 109, 114) << 8;
}

void TestGeometry::conversions()
{
    QFETCH(QSize, canvas);
    QFETCH(QRect, wall);
    QFETCH(QRect, full);
    QFETCH(int, title);

    QCOMPARE(CanvasGeometry::titleHeight(canvas.height()), title);
    const MatrixWindowInfo info = canvastest::window(1, wall.x(), wall.y(), wall.width(), wall.height(), 4);
    QCOMPARE(CanvasGeometry::fullPanelRect(info, canvas), full);
}

void TestGeometry::floatingCreation()
{
    // 801 x 451: (200, 112) 400 x 225 pixels; in units 200 x 32768 / 801 = 8181 and so on.
    const MatrixWindowInfo created = FloatingGeometry::creationWindow(QSize(801, 451), 3, 3, 10);
    QCOMPARE(QRect(created.x, created.y, created.w, created.h), QRect(8181, 8137, 16363, 16347));
    QCOMPARE(created.windowType, 2);
    QCOMPARE(created.cells.size(), 9);
    QCOMPARE(created.spanRows, 3);
    QCOMPARE(created.spanCols, 3);

    // On a 2 x 4 wall of 8192 x 16384 cells, 1024 x 512: (256, 128) 512 x 256 covers columns 1 and 2.
    const MatrixWindowInfo wide = FloatingGeometry::creationWindow(QSize(1024, 512), 2, 4, 9);
    QCOMPARE(QRect(wide.x, wide.y, wide.w, wide.h), QRect(8192, 8192, 16384, 16384));
    QCOMPARE(wide.cells.size(), 4);
    QCOMPARE(wide.cells.first().cellId, 2);
    QCOMPARE(wide.cells.last().cellId, 7);
    QCOMPARE(wide.cells.last().row, 1);
    QCOMPARE(wide.cells.last().column, 1);
}

KVMS_TEST_CLASS(TestGeometry)
#include "TestGeometry.moc"
