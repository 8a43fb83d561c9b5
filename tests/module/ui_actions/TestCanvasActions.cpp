// The canvas's context menu and keys, on crafted windows.
#include "CanvasFixture.h"
#include "SuiteMain.h"
#include "SystemAssistant.h"
#include "TestMain.h"

#include "CanvasMenu.h"
#include "ControlMatrixWt.h"
#include "MatrixSignals.h"

#include "KSingleton.h"

#include <QAction>
#include <QMenu>
#include <QSignalSpy>

using namespace kvms_matrix;

// The canvas's menu and keys on a canvas given crafted windows (no decoder).
class CanvasActionsTest : public QObject {
    Q_OBJECT

private slots:
    void init();
    void menuSendsTheCodeOfEachEntry_data();
    void menuSendsTheCodeOfEachEntry();
    void divisionLeavesFullDisplayFirst();
    void keysClearAndLeaveFull();
};

namespace {

// A 2 x 2 wall: window 1 divided in 4 with a camera in its first sub-window, window 2 empty,
// and the bottom row spliced into window 3 with a camera.
bool showFilled(ControlMatrixWt& canvas)
{
    QList<MatrixWindowInfo> windows { canvastest::cellWindow(1, 2, 2, 4), canvastest::cellWindow(2, 2, 2),
        canvastest::splicedWindow(3, 1, 2, 2, 2, 1) };
    for (int k : { 0, 2 }) {
        MatrixDeviceInfo& camera = windows[k].subWindows[0].device;
        camera.deviceType = 1;
        camera.deviceId = QStringLiteral("CAM0001&1");
        camera.deviceName = QStringLiteral("Lobby");
    }
    canvas.resize(800, 450);
    canvas.show();
    canvas.setWindowInfoList(windows, 2, 2);
    return QTest::qWaitForWindowExposed(&canvas);
}

// A point inside a window's first sub-window.
QPoint pointIn(const ControlMatrixWt& canvas, int windowId, int windowType, int subWindowId = 1)
{
    const QWidget* panel = canvas.panel(ControlMatrixWt::panelKey(windowId, subWindowId, windowType));
    return panel ? panel->geometry().center() : QPoint();
}

QMenu* openMenu(ControlMatrixWt& canvas, const QPoint& at)
{
    QContextMenuEvent event(QContextMenuEvent::Mouse, at, canvas.mapToGlobal(at));
    QApplication::sendEvent(&canvas, &event);
    for (QMenu* menu : { canvas.contextMenu()->menu(), canvas.contextMenu()->joinMenu() })
        if (menu->isVisible())
            return menu;
    return nullptr;
}

QAction* entry(QMenu* menu, const QString& text)
{
    for (QAction* action : menu->actions())
        if (action->isVisible() && action->text() == text)
            return action;
    return nullptr;
}

// Chooses an entry the way the operator does, through the division sub-menu if it is there.
bool choose(QMenu* menu, const QString& text)
{
    QAction* action = entry(menu, text);
    QMenu* sub = nullptr;
    if (!action) {
        for (QAction* a : menu->actions())
            if (a->menu() && a->isVisible() && entry(a->menu(), text))
                sub = a->menu(), action = a;
        if (!sub)
            return false;
        QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(action).center());
        if (!QTest::qWaitFor([sub] { return sub->isVisible(); }, 2000))
            return false;
        menu = sub;
        action = entry(sub, text);
    }
    QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(action).center());
    return true;
}

QList<int> args(const QList<QVariant>& signal)
{
    QList<int> out;
    for (const QVariant& v : signal)
        out.append(v.toInt());
    return out;
}

} // namespace

void CanvasActionsTest::init()
{
    canvastest::muteMessages();
}

void CanvasActionsTest::menuSendsTheCodeOfEachEntry_data()
{
    QTest::addColumn<int>("windowId");
    QTest::addColumn<int>("windowType");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QList<int>>("sent"); // window, sub-window, window type, code, type
    QTest::newRow("playback") << 1 << 0 << "playback" << QList<int> { 1, 1, 0, 1, 0 };
    QTest::newRow("clear") << 1 << 0 << "window clear" << QList<int> { 1, 1, 0, 2, 0 };
    QTest::newRow("full") << 1 << 0 << "fullScreen" << QList<int> { 1, 1, 0, 12, 1 };
    QTest::newRow("division 1") << 1 << 0 << "1" << QList<int> { 1, -1, 0, 0, 1 };
    QTest::newRow("division 25") << 1 << 0 << "25" << QList<int> { 1, -1, 0, 0, 25 };
    QTest::newRow("grab screen") << 1 << 0 << "grab screen" << QList<int> { 1, 1, 0, 8, 0 };
    QTest::newRow("background") << 1 << 0 << "set background" << QList<int> { 1, 1, 0, 9, 0 };
    QTest::newRow("open voice") << 1 << 0 << "open voice" << QList<int> { 1, 1, 0, 14, 0 };
    QTest::newRow("close voice") << 1 << 0 << "close voice" << QList<int> { 1, 1, 0, 13, 0 };
    QTest::newRow("HD") << 1 << 0 << "HD" << QList<int> { 1, 1, 0, 15, 0 };
    QTest::newRow("SD") << 1 << 0 << "SD" << QList<int> { 1, 1, 0, 16, 0 };
    QTest::newRow("Auto") << 1 << 0 << "Auto" << QList<int> { 1, 1, 0, 17, 0 };
    QTest::newRow("spliced unjoin") << 3 << 1 << "unjoin" << QList<int> { 3, 1, 1, 10, 0 };
    QTest::newRow("spliced division") << 3 << 1 << "9" << QList<int> { 3, -1, 1, 0, 9 };
}

void CanvasActionsTest::menuSendsTheCodeOfEachEntry()
{
    QFETCH(int, windowId);
    QFETCH(int, windowType);
    QFETCH(QString, text);
    QFETCH(QList<int>, sent);
    ControlMatrixWt canvas;
    QVERIFY(showFilled(canvas));
    QSignalSpy spy(KCOMMON::KSingleton<MatrixSignals>::instance(), &MatrixSignals::signalRightMemuClicked);
    QMenu* menu = openMenu(canvas, pointIn(canvas, windowId, windowType));
    QVERIFY(menu);
    QVERIFY(QTest::qWaitForWindowExposed(menu));
    QVERIFY2(choose(menu, text), qPrintable(text));
    QTRY_COMPARE_WITH_TIMEOUT(spy.count(), 1, 2000);
    QCOMPARE(args(spy.first()), sent);
}

void CanvasActionsTest::divisionLeavesFullDisplayFirst()
{
    ControlMatrixWt canvas;
    QVERIFY(showFilled(canvas));
    canvas.toggleFullSubWindow(1, 3);
    QSignalSpy spy(KCOMMON::KSingleton<MatrixSignals>::instance(), &MatrixSignals::signalRightMemuClicked);
    QMenu* menu = openMenu(canvas, canvas.panel(ControlMatrixWt::panelKey(1, 3, 0))->geometry().center());
    QVERIFY(menu);
    QVERIFY(entry(menu, QStringLiteral("Exit fullScreen")));
    QVERIFY(QTest::qWaitForWindowExposed(menu));
    QVERIFY(choose(menu, QStringLiteral("9")));
    QTRY_COMPARE_WITH_TIMEOUT(spy.count(), 2, 2000);
    QCOMPARE(args(spy.at(0)), QList<int>({ 1, 3, 0, 12, 0 }));
    QCOMPARE(args(spy.at(1)), QList<int>({ 1, -1, 0, 0, 9 }));
}

void CanvasActionsTest::keysClearAndLeaveFull()
{
    ControlMatrixWt canvas;
    QVERIFY(showFilled(canvas));
    QSignalSpy spy(KCOMMON::KSingleton<MatrixSignals>::instance(), &MatrixSignals::signalRightMemuClicked);
    QTest::keyClick(&canvas, Qt::Key_Delete);
    QCOMPARE(spy.count(), 0);
    QCOMPARE(SystemAssistant::recentMessages().value(0), ControlMatrixWt::tr("please select window"));

    QTest::mouseClick(&canvas, Qt::LeftButton, {}, pointIn(canvas, 1, 0, 2));
    QTest::keyClick(&canvas, Qt::Key_Escape); // nothing shown full: nothing sent
    QTest::keyClick(&canvas, Qt::Key_Delete);
    canvas.toggleFullSubWindow(1, 2);
    QTest::keyClick(&canvas, Qt::Key_Escape);
    QCOMPARE(spy.count(), 2);
    QCOMPARE(args(spy.at(0)), QList<int>({ 1, 2, 0, 2, 0 }));
    QCOMPARE(args(spy.at(1)), QList<int>({ 1, 2, 0, 12, 0 }));
}

KVMS_TEST_CLASS(CanvasActionsTest)
#include "TestCanvasActions.moc"
