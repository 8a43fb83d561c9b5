#include "CanvasFixture.h"
#include "SuiteMain.h"

#include "ControlMatrixWt.h"
#include "MatrixPanelWt.h"

#include <QtTest>

using namespace kvms_matrix;

class TestCanvas : public QObject {
    Q_OBJECT

private slots:
    void init() { canvastest::muteMessages(); }
    void cleanup() { canvastest::unmuteMessages(); }
    void fullSubWindow();
    void splicedReplacesCells();
    void hostileWallIsBounded();
};

namespace {

QWidget* panelOf(const ControlMatrixWt& canvas, int windowId, int subWindowId, int windowType)
{
    return canvas.panel(ControlMatrixWt::panelKey(windowId, subWindowId, windowType));
}

} // namespace

void TestCanvas::fullSubWindow()
{
    ControlMatrixWt canvas;
    canvastest::showCanvas(canvas, QSize(960, 540));
    canvas.setWindowInfoList({ canvastest::cellWindow(5, 3, 3, 4) }, 3, 3);

    canvas.toggleFullSubWindow(5, 3);
    QCOMPARE(panelOf(canvas, 5, 3, 0)->geometry(), QRect(320, 204, 317, 153));
    QVERIFY(!panelOf(canvas, 5, 1, 0)->isVisible());
    QVERIFY(!panelOf(canvas, 5, 4, 0)->isVisible());

    // The second toggle returns to the grid whatever sub-window it names.
    canvas.toggleFullSubWindow(5, 1);
    QCOMPARE(canvas.fullSubWindowIndex(5, 0), -1);
    QCOMPARE(panelOf(canvas, 5, 3, 0)->geometry(), QRect(320, 281, 157, 75));
    QVERIFY(panelOf(canvas, 5, 1, 0)->isVisible());
}

void TestCanvas::splicedReplacesCells()
{
    ControlMatrixWt canvas;
    canvastest::showCanvas(canvas, QSize(960, 540));
    canvas.setWindowInfoList(canvastest::cellWall(3, 3), 3, 3);
    QSignalSpy selected(&canvas, &ControlMatrixWt::signalWindowSelected);

    canvas.setWindowInfo(canvastest::splicedWindow(1, 2, 2, 3, 3, 4));
    QCOMPARE(canvas.windowInfoList().size(), 6);
    // Other forms find panels by this text.
    QCOMPARE(ControlMatrixWt::panelKey(1, 4, 1), QStringLiteral("windowid:1~subwindowid:4~windowtype:1"));
    QVERIFY(canvas.panel(QStringLiteral("windowid:1~subwindowid:4~windowtype:1")));
    for (int covered : { 2, 4, 5 }) {
        QVERIFY(!canvas.windowInfo(covered, 0, nullptr));
        QVERIFY(!panelOf(canvas, covered, 1, 0));
    }
    QVERIFY(canvas.windowInfo(3, 0, nullptr));
    QCOMPARE(canvas.currentWindowId(), 1);
    QCOMPARE(canvas.currentWindowType(), 1);
    // 2 x 2 cells from (0, 0): 639 x 359 pixels, the first of four panels below the title strip.
    QCOMPARE(panelOf(canvas, 1, 1, 1)->geometry(), QRect(1, 25, 317, 165));

    // A click on the spliced window's last panel selects that sub-window.
    QTest::mouseClick(&canvas, Qt::LeftButton, {}, QPoint(500, 300));
    QCOMPARE(selected.count(), 1);
    QCOMPARE(selected.first(), (QVariantList { 1, 4, 1 }));

    // Unjoined, the cells are windows again under their own ids.
    canvas.removeWindowInfo(1, 1);
    QCOMPARE(canvas.windowInfoList().size(), 9);
    MatrixWindowInfo cell;
    QVERIFY(canvas.windowInfo(5, 0, &cell));
    QCOMPARE(QRect(cell.x, cell.y, cell.w, cell.h), QRect(10922, 10922, 10922, 10922));
    QVERIFY(panelOf(canvas, 5, 1, 0));
    QCOMPARE(canvas.currentWindowId(), -1);
}

void TestCanvas::hostileWallIsBounded()
{
    // A decoder that claims a huge grid and a window of 5000 sub-windows at absurd coordinates.
    ControlMatrixWt canvas;
    canvastest::showCanvas(canvas, QSize(640, 360));
    MatrixWindowInfo huge = canvastest::window(1, 2000000000, -2000000000, 2000000000, 2000000000, 25);
    for (int k = 25; k < 5000; ++k)
        huge.subWindows.append(huge.subWindows.first());
    canvas.setWindowInfoList({ huge }, 1 << 30, 1 << 30);
    QCOMPARE(canvas.rows(), 64);
    QCOMPARE(canvas.cols(), 64);
    QVERIFY(canvas.findChildren<MatrixPanelWt*>().size() <= 25);
    canvas.repaint();
}

KVMS_TEST_CLASS(TestCanvas)
#include "TestCanvas.moc"
