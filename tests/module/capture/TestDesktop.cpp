#include "CaptureRig.h"
#include "PatternWindow.h"

#include "ColourChecks.h"
#include "KovCapThread.h"
#include "MonitorClient.h"
#include "QueuedSignalSpy.h"
#include "ScreenGrabber.h"
#include "SdkCallTap.h"
#include "SuiteMain.h"
#include "TestTimeout.h"

#include "core/VirtualDecoder.h"

#include "KSingleton.h"
#include "SystemMsg.h"

#include <QCursor>
#include <QGuiApplication>
#include <QScreen>
#include <QTemporaryDir>
#include <QtTest>

using colourcheck::at;
using colourcheck::near;
using kvms_matrix::MatrixSdkWorker;
using kvms_matrix::ScreenGrabber;
using kvmstest::scaled;

namespace {

// Where the pointer is put: inside the top-left (red) quadrant, clear of its edges.
const QPoint kPointer(400, 300);

bool showsPattern(const QImage& image)
{
    for (double fy : { 0.25, 0.75 }) {
        for (double fx : { 0.25, 0.75 }) {
            if (!near(at(image, fx, fy), PatternWindow::colourAt(fx, fy), 8))
                return false;
        }
    }
    return true;
}

quint64 framesOf(const vdec::VirtualDecoder* d, int windowId, int sub)
{
    const vdec::DecoderSnapshot s = d->snapshot();
    return s.mediaOf(windowId, sub) ? s.mediaOf(windowId, sub)->frames : 0;
}

} // namespace

// The operator's desktop on the wall, end to end: a real X display (Xvfb, the xcb platform)
// showing a known picture, the capture thread, the real SDK and an in-process virtual decoder,
// whose wall picture is looked at. Skipped on any other platform.
class TestDesktop : public QObject {
    Q_OBJECT

    // Binds the desktop to sub-window 2 of a window of four on a one-screen wall, through the
    // worker's task and checks that the wall shows it; stops it and checks that frames stop.
    void checkDesktopOnWall(vdec::VirtualDecoder* d, const CaptureRig::Handle& h)
    {
        QTRY_VERIFY_WITH_TIMEOUT(framesOf(d, 1, 2) >= 3, scaled(5000));
        QVERIFY(CaptureRig::worker()->captureThread()->isRunning());

        // Sub-window 2 of four is the wall's top-right quarter: the desktop, shrunk, is there.
        const QImage wall = MonitorClient(d->address(), d->httpPort()).wall(1920);
        QCOMPARE(wall.size(), QSize(1920, 1080));
        if (qEnvironmentVariableIsSet("KVMS_SAVE_WALL")) // to look at it: a file name
            wall.save(qEnvironmentVariable("KVMS_SAVE_WALL"));
        for (double fy : { 0.2, 0.8 }) {
            for (double fx : { 0.2, 0.8 }) {
                const QColor seen = at(wall, 0.5 + fx / 2, fy / 2);
                QVERIFY2(near(seen, PatternWindow::colourAt(fx, fy)), qPrintable(seen.name()));
            }
        }
        QVERIFY(!near(at(wall, 0.25, 0.75), PatternWindow::colourAt(0.25, 0.75))); // another sub-window

        // The pointer is drawn unscaled with its top-left corner at the pointer: its white body
        // just below and right of it, the desktop just left of it.
        const CaptureRig::Envelope e = CaptureRig::unpack(SdkCallTap::calls().last().frame);
        QVERIFY(e.ok);
        QCOMPARE(SdkCallTap::calls().last().handle, h->handle());
        const QImage picture = QImage::fromData(e.payload, "JPG");
        QCOMPARE(picture.size(), QSize(1920, 1080));
        const QColor body = picture.pixelColor(kPointer + QPoint(4, 9));
        QVERIFY2(qGray(body.rgb()) > 170, qPrintable(body.name()));
        QVERIFY(near(picture.pixelColor(kPointer + QPoint(-6, 9)), PatternWindow::kTopLeft));
        QVERIFY(near(picture.pixelColor(kPointer + QPoint(4, -6)), PatternWindow::kTopLeft));

        // Stopped, nothing more arrives: a capture started later for another sub-window gets
        // several rounds in while this one gets none.
        MatrixSdkWorker* w = CaptureRig::worker();
        w->stopCaptureThread();
        QVERIFY(!w->captureThread()->isRunning());
        const quint64 frames = framesOf(d, 1, 2);
        w->startCaptureThread(h, 1, 3);
        QTRY_VERIFY_WITH_TIMEOUT(framesOf(d, 1, 3) >= 3, scaled(5000));
        QCOMPARE(framesOf(d, 1, 2), frames);
    }

    CaptureRig rig_;
    QTemporaryDir dir_;
    PatternWindow desktop_;

private slots:
    void initTestCase()
    {
        if (QGuiApplication::platformName() != QLatin1String("xcb"))
            QSKIP("needs an X display: run under xvfb-run with KVMS_TEST_PLATFORM=xcb");
        QVERIFY(dir_.isValid());
        rig_.setLogFile(dir_.filePath("client.log"));
        QVERIFY(desktop_.showOverScreen());
        QCursor::setPos(kPointer);
        ScreenGrabber toolkit(false);
        QTRY_VERIFY_WITH_TIMEOUT(showsPattern(toolkit.grab()), scaled(5000));
        QTRY_COMPARE_WITH_TIMEOUT(QCursor::pos(), kPointer, scaled(2000));
    }

    void cleanup()
    {
        rig_.cleanup();
        SdkCallTap::clear();
    }

    // The server writes the same pixels into shared memory as it sends the toolkit.
    void sharedMemoryGrabIsTheToolkitsGrab()
    {
        ScreenGrabber shared;
        const QImage fast = shared.grab();
        QVERIFY(shared.usedSharedMemory());
        ScreenGrabber toolkit(false);
        const QImage slow = toolkit.grab().convertToFormat(QImage::Format_RGB32);
        QVERIFY(!toolkit.usedSharedMemory());
        QCOMPARE(fast.size(), QGuiApplication::primaryScreen()->geometry().size());
        QCOMPARE(fast.format(), QImage::Format_RGB32);
        QCOMPARE(slow.size(), fast.size());
        for (int y = 0; y < fast.height(); ++y) {
            const auto* a = reinterpret_cast<const QRgb*>(fast.constScanLine(y));
            const auto* b = reinterpret_cast<const QRgb*>(slow.constScanLine(y));
            for (int x = 0; x < fast.width(); ++x) {
                if ((a[x] & 0xffffff) != (b[x] & 0xffffff))
                    QFAIL(qPrintable(
                        QString("pixel %1,%2: %3 against %4").arg(x).arg(y).arg(a[x], 0, 16).arg(b[x], 0, 16)));
            }
        }
    }

    // Binding a desktop source (type 4) to a sub-window through the worker's task starts the
    // capture for that window.
    void desktopBoundAsSourceReachesTheWall()
    {
        vdec::VirtualDecoder* d = rig_.startDecoder();
        QVERIFY(d);
        const CaptureRig::Handle h = rig_.connect(d);
        QVERIFY(h);
        QVERIFY(CaptureRig::layOut(h, 1, 4));

        kvms_matrix::MatrixWindowInfo window;
        window.windowId = 1;
        window.division = 4;
        window.w = 32768;
        window.h = 32768;
        for (int i = 0; i < 4; ++i) {
            kvms_matrix::MatrixSubWindowInfo sub;
            sub.subWindowId = i + 1;
            sub.subWindowIndex = i;
            sub.device.deviceType = 0;
            window.subWindows.append(sub);
        }
        kvms_matrix::MatrixDeviceInfo& desktop = window.subWindows[1].device;
        desktop.deviceType = 4;
        desktop.deviceId = QStringLiteral("cap_desktop");
        desktop.displayName = QStringLiteral("cap_desktop");
        desktop.channel = 2; // shown in sub-window 2

        QueuedSignalSpy results(CaptureRig::worker(), &MatrixSdkWorker::signalSetWindowSignalSourceResult);
        CaptureRig::worker()->setWindowSignalSource(h, window, 2, false);
        QVERIFY(results.wait(scaled(5000)));
        QCOMPARE(results.first().at(0).toInt(), CMATRIX_OK);
        const vdec::DecoderSnapshot s = d->snapshot();
        QVERIFY(s.window(1) && s.window(1)->sources.count(2));
        checkDesktopOnWall(d, h);

        // The client closing ends the projection while the application's screens still exist.
        CaptureRig::worker()->startCaptureThread(h, 1, 2);
        QVERIFY(CaptureRig::worker()->captureThread()->isRunning());
        emit KCOMMON::KSingleton<SystemMsg>::instance()->signalQuitSystem();
        QTRY_VERIFY_WITH_TIMEOUT(!CaptureRig::worker()->captureThread()->isRunning(), kvmstest::scaled(1000));
    }
};

KVMS_TEST_CLASS(TestDesktop)
#include "TestDesktop.moc"
