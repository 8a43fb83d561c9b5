#include "CanvasFixture.h"
#include "SystemAssistant.h"
#include "SuiteMain.h"

#include "ControlMatrixWt.h"
#include "FloatingWt.h"
#include "MatrixPanelWt.h"

#include <QMimeData>
#include <QtTest>

using namespace kvms_matrix;

class TestCanvas : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        SystemAssistant::clearRecentMessages();
        SystemAssistant::setMessageSink([](const QString&) {});
    }
    void cleanup() { SystemAssistant::setMessageSink({}); }
    void panelsFollowDivision_data();
    void panelsFollowDivision();
    void fullSubWindow();
    void bannerPlacement_data();
    void bannerPlacement();
    void splicedReplacesCells();
    void emptyWallPlacesNothing();
    void hostileWallIsBounded();
    void drops_data();
    void drops();
    void bannerDrag();
};

namespace {

QWidget* panelOf(const ControlMatrixWt& canvas, int windowId, int subWindowId, int windowType)
{
    return canvas.panel(ControlMatrixWt::panelKey(windowId, subWindowId, windowType));
}

} // namespace

void TestCanvas::panelsFollowDivision_data()
{
    QTest::addColumn<int>("division");
    QTest::addColumn<int>("placed");
    // The rectangles of every division are the geometry's; here: the panels shown for them.
    QTest::newRow("8: one large, seven small") << 8 << 8;
    QTest::newRow("3 is no division") << 3 << 0;
}

void TestCanvas::panelsFollowDivision()
{
    QFETCH(int, division);
    QFETCH(int, placed);
    ControlMatrixWt canvas;
    canvastest::showCanvas(canvas, QSize(960, 540));
    canvas.setWindowInfoList({ canvastest::cellWindow(5, 3, 3, division) }, 3, 3);

    int visible = 0;
    for (int sub = 1; sub <= division; ++sub) {
        QWidget* panel = panelOf(canvas, 5, sub, 0);
        QVERIFY(panel);
        visible += panel->isVisible() ? 1 : 0;
    }
    QCOMPARE(visible, placed);
    if (placed) {
        // Resizing recomputes every panel from wall units.
        const QRect before = panelOf(canvas, 5, division, 0)->geometry();
        canvas.resize(801, 451);
        QVERIFY(panelOf(canvas, 5, division, 0)->geometry() != before);
    }
}

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

void TestCanvas::bannerPlacement_data()
{
    QTest::addColumn<QRect>("banner");
    QTest::addColumn<QRect>("expected");
    QTest::addColumn<bool>("shown");
    // 801 x 451, T = 20: x 8192 x 801 / 32768 = 200, w 400, h 2048 x 451 / 32768 = 28.
    QTest::newRow("y is always T") << QRect(8192, 20000, 16384, 2048) << QRect(200, 20, 400, 28) << true;
    QTest::newRow("at the top") << QRect(0, 0, 32768, 4096) << QRect(0, 20, 801, 56) << true;
    QTest::newRow("width 0 hides") << QRect(8192, 0, 0, 2048) << QRect() << false;
}

void TestCanvas::bannerPlacement()
{
    QFETCH(QRect, banner);
    QFETCH(QRect, expected);
    QFETCH(bool, shown);
    ControlMatrixWt canvas;
    canvastest::showCanvas(canvas, QSize(801, 451));
    canvas.setWindowInfoList(canvastest::cellWall(3, 3), 3, 3);
    MatrixBannerInfo info;
    info.message = QStringLiteral("Evacuation drill at 14:00");
    info.x = banner.x();
    info.y = banner.y();
    info.w = banner.width();
    info.h = banner.height();
    canvas.setBannerInfo(info);
    QCOMPARE(canvas.bannerWidget()->isVisible(), shown);
    if (shown)
        QCOMPARE(canvas.bannerWidget()->geometry(), expected);
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

void TestCanvas::emptyWallPlacesNothing()
{
    ControlMatrixWt canvas;
    canvastest::showCanvas(canvas, QSize(640, 360));
    canvas.setWindowInfoList(canvastest::cellWall(2, 2, 4), 2, 2);
    canvas.setWindowInfoList({}, 2, 2);
    QTRY_COMPARE(canvas.findChildren<MatrixPanelWt*>().size(), 0);
    QVERIFY(canvas.windowInfoList().isEmpty());
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

void TestCanvas::drops_data()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QPoint>("point");
    QTest::addColumn<bool>("entered");
    QTest::addColumn<QVariantList>("source"); // empty when no source drop is expected
    QTest::addColumn<QVariantList>("loop");

    const QString model = QStringLiteral("application/x-qabstractitemmodeldatalist");
    const QString item = QStringLiteral("matrixlistitem");
    // 960 x 540, 3 x 3 wall of division 4. A source dropped on a panel: the page's end-to-end suite.
    QTest::newRow("source on a title strip")
        << model << QByteArray("x") << QPoint(400, 190) << true << QVariantList { 5, 1, 0 } << QVariantList {};
    QTest::newRow("loop item") << item << QByteArray("12") << QPoint(330, 290) << true << QVariantList {}
                               << QVariantList { 5, 3, 0, 12 };
    QTest::newRow("loop item without an id")
        << item << QByteArray("loop") << QPoint(330, 290) << true << QVariantList {} << QVariantList {};
    QTest::newRow("plain text refused") << QStringLiteral("text/plain") << QByteArray("5") << QPoint(500, 220) << false
                                        << QVariantList {} << QVariantList {};
}

void TestCanvas::drops()
{
    QFETCH(QString, format);
    QFETCH(QByteArray, bytes);
    QFETCH(QPoint, point);
    QFETCH(bool, entered);
    QFETCH(QVariantList, source);
    QFETCH(QVariantList, loop);

    ControlMatrixWt canvas;
    canvastest::showCanvas(canvas, QSize(960, 540));
    canvas.setWindowInfoList(canvastest::cellWall(3, 3, 4), 3, 3);
    QSignalSpy sourceDrops(&canvas, &ControlMatrixWt::signalVideoPanelDropEvent);
    QSignalSpy loopDrops(&canvas, &ControlMatrixWt::signalLoopListDropEvent);

    QMimeData data;
    data.setData(format, bytes);
    QDragEnterEvent enter(point, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&canvas, &enter);
    QCOMPARE(enter.isAccepted(), entered);
    if (!entered)
        return;
    QDropEvent drop(point, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&canvas, &drop);
    QCOMPARE(sourceDrops.isEmpty() ? QVariantList {} : sourceDrops.first(), source);
    QCOMPARE(loopDrops.isEmpty() ? QVariantList {} : loopDrops.first(), loop);
}

void TestCanvas::bannerDrag()
{
    ControlMatrixWt canvas;
    canvastest::showCanvas(canvas, QSize(1024, 512));
    canvas.setWindowInfoList(canvastest::cellWall(2, 2), 2, 2);
    MatrixBannerInfo info;
    info.message = QStringLiteral("Welcome");
    info.x = 8192;
    info.w = 16384;
    info.h = 2048;
    canvas.setBannerInfo(info);
    QWidget* banner = canvas.bannerWidget();
    QCOMPARE(banner->geometry(), QRect(256, 23, 512, 32));
    QSignalSpy set(&canvas, &ControlMatrixWt::signalSetBanner);
    QSignalSpy config(&canvas, &ControlMatrixWt::signalBannerConfig);

    QTest::mousePress(banner, Qt::LeftButton, {}, QPoint(10, 10));
    QMouseEvent move(QEvent::MouseMove, QPoint(74, 42), banner->mapToGlobal(QPoint(74, 42)), Qt::NoButton,
        Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(banner, &move);
    QTest::mouseRelease(banner, Qt::LeftButton, {}, QPoint(10, 10));
    // Moved by (64, 32) pixels to (320, 55): 10240 and 3520 units; the size stays as it was.
    QCOMPARE(set.count(), 1);
    QCOMPARE(set.first(), (QVariantList { 10240, 3520, 16384, 2048 }));

    QTest::mouseDClick(banner, Qt::LeftButton, {}, QPoint(10, 10));
    QCOMPARE(config.count(), 1);
}

KVMS_TEST_CLASS(TestCanvas)
#include "TestCanvas.moc"
