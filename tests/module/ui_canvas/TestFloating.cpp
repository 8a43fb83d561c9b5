#include "CanvasFixture.h"
#include "SuiteMain.h"

#include "ControlMatrixWt.h"
#include "FloatingGeometry.h"
#include "FloatingWt.h"
#include "MatrixPanelWt.h"
#include "MatrixSelectWt.h"
#include "MatrixSignals.h"

#include "KSingleton.h"

#include <QtTest>

using namespace kvms_matrix;

class TestFloating : public QObject {
    Q_OBJECT

private slots:
    void init() { canvastest::muteMessages(); }
    void cleanup() { canvastest::unmuteMessages(); }
    void dragFloating_data();
    void dragFloating();
    void resizeFloating();
};

namespace {

// A 1024 x 512 canvas of a 2 x 2 wall with a floating window at (256, 128) 512 x 256 pixels.
void floatingWall(ControlMatrixWt& canvas)
{
    canvastest::showCanvas(canvas, QSize(1024, 512));
    QList<MatrixWindowInfo> windows = canvastest::cellWall(2, 2);
    windows.append(canvastest::window(5, 8192, 8192, 16384, 16384, 1, 2));
    canvas.setWindowInfoList(windows, 2, 2);
}

void sendMove(QWidget* widget, const QPoint& local)
{
    QMouseEvent move(
        QEvent::MouseMove, local, widget->mapToGlobal(local), Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(widget, &move);
}

void checkFrame(const FloatingWt* floating)
{
    QVERIFY(floating->selectWt()->isVisible());
    QCOMPARE(floating->selectWt()->geometry(), floating->geometry().adjusted(-5, -5, 5, 5));
}

} // namespace

void TestFloating::dragFloating_data()
{
    QTest::addColumn<QPoint>("delta");
    QTest::addColumn<QPoint>("expected");

    // From (256, 128), 512 x 256 wide, on 1024 x 512: the right edge must stay 5 px in.
    QTest::newRow("right edge 6 px in") << QPoint(250, 0) << QPoint(506, 128);
    QTest::newRow("right edge 5 px in refused") << QPoint(251, 0) << QPoint(256, 128);
    QTest::newRow("hanging below") << QPoint(0, 272) << QPoint(256, 400);
    QTest::newRow("top edge on the bottom refused") << QPoint(0, 384) << QPoint(256, 128);
    QTest::newRow("left edge refused") << QPoint(-256, 0) << QPoint(256, 128);
    QTest::newRow("top edge refused") << QPoint(0, -128) << QPoint(256, 128);
}

void TestFloating::dragFloating()
{
    QFETCH(QPoint, delta);
    QFETCH(QPoint, expected);
    ControlMatrixWt canvas;
    floatingWall(canvas);
    FloatingWt* floating = canvas.floatingWt(5);
    QVERIFY(floating);
    QSignalSpy progress(KCOMMON::KSingleton<MatrixSignals>::instance(), &MatrixSignals::signalProgressBarShow);
    QSignalSpy moved(&canvas, &ControlMatrixWt::signalMoveFloatingWindow);
    QSignalSpy selected(&canvas, &ControlMatrixWt::signalWindowSelected);

    QTest::mousePress(floating, Qt::LeftButton, {}, QPoint(10, 10));
    QCOMPARE(progress.count(), 1);
    QCOMPARE(progress.first(), (QVariantList { false, 5, -1, 2, false }));
    QCOMPARE(selected.count(), 1);
    QCOMPARE(canvas.currentWindowType(), 2);
    checkFrame(floating);

    sendMove(floating, QPoint(10, 10) + delta);
    QCOMPARE(floating->pos(), expected);
    checkFrame(floating);
    QTest::mouseRelease(floating, Qt::LeftButton, {}, QPoint(10, 10));
    QCOMPARE(moved.count(), 1);
    const auto window = moved.first().first().value<MatrixWindowInfo>();
    QCOMPARE(QRect(window.x, window.y, window.w, window.h), QRect(expected.x() * 32, expected.y() * 64, 16384, 16384));
}

void TestFloating::resizeFloating()
{
    ControlMatrixWt canvas;
    floatingWall(canvas);
    FloatingWt* floating = canvas.floatingWt(5);
    QTest::mousePress(floating, Qt::LeftButton, {}, QPoint(100, 100));
    MatrixSelectWt* frame = floating->selectWt();
    QCOMPARE(frame->geometry(), QRect(251, 123, 522, 266));
    QSignalSpy moved(&canvas, &ControlMatrixWt::signalMoveFloatingWindow);

    // The bottom-right handle (511, 255) dragged by (30, 20): the corner follows 5 px inside.
    QTest::mousePress(frame, Qt::LeftButton, {}, QPoint(515, 259));
    QCOMPARE(frame->handle(), BottomRight);
    sendMove(frame, QPoint(545, 279));
    QCOMPARE(floating->geometry(), QRect(256, 128, 536, 270));
    checkFrame(floating);
    QCOMPARE(floating->panel()->geometry(), QRect(1, 1, 534, 268));
    QTest::mouseRelease(frame, Qt::LeftButton, {}, QPoint(545, 279));
    QCOMPARE(moved.count(), 1);
    const auto window = moved.first().first().value<MatrixWindowInfo>();
    QCOMPARE(QRect(window.x, window.y, window.w, window.h), QRect(8192, 8192, 17152, 17280));

    // A click elsewhere on the canvas drops the selection and its frame.
    QTest::mouseClick(&canvas, Qt::LeftButton, {}, QPoint(20, 300));
    QVERIFY(!frame->isVisible());
    QCOMPARE(canvas.currentWindowId(), 3);
}

KVMS_TEST_CLASS(TestFloating)
#include "TestFloating.moc"
