// The canvas mirrors the wall: each panel shows its part of the decoder's own picture, and a
// hidden canvas asks for nothing.
#include "CameraSim.h"
#include "CanvasMimic.h"
#include "ControlMatrixWt.h"
#include "DecoderFixture.h"
#include "LoopbackPool.h"
#include "MatrixPanelWt.h"
#include "MonitorClient.h"
#include "QueuedSignalSpy.h"
#include "SdkSession.h"
#include "TestMain.h"
#include "TestTimeout.h"
#include "WireBuilders.h"
#include "WorkerSuite.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QtTest>

using namespace kvms_matrix;
using kvmstest::scaled;

namespace {

// Mean absolute difference of two pictures brought to 32 x 18, per channel (0..255).
double difference(const QImage& a, const QImage& b)
{
    const auto small = [](const QImage& i) {
        return i.scaled(32, 18, Qt::IgnoreAspectRatio, Qt::SmoothTransformation).convertToFormat(QImage::Format_RGB32);
    };
    const QImage x = small(a), y = small(b);
    double sum = 0;
    for (int row = 0; row < 18; ++row) {
        for (int col = 0; col < 32; ++col) {
            const QRgb p = x.pixel(col, row), q = y.pixel(col, row);
            sum += qAbs(qRed(p) - qRed(q)) + qAbs(qGreen(p) - qGreen(q)) + qAbs(qBlue(p) - qBlue(q));
        }
    }
    return sum / (32 * 18 * 3);
}

} // namespace

class MimicTest : public QObject, public kvmstest::WorkerSuite {
    Q_OBJECT

private:
    kvmstest::DecoderFixture fixture_;
    std::unique_ptr<kvmstest::SdkSession> sdk_;
    kvmstest::CameraSim cameras_;

private slots:
    void initTestCase() { QVERIFY(enterWorkDirectory()); }
    void cleanupTestCase() { QVERIFY(leaveWorkDirectory()); }

    void panelsMirrorTheWallWhileShown()
    {
        if (!kvmstest::CameraSim::available())
            QSKIP("camera-sim was not built (no GStreamer RTSP server)");
        const QString cameraIp = kvmstest::LoopbackPool::claim();
        QVERIFY2(cameras_.start(cameraIp, { "Gate" }), qPrintable(cameras_.error()));
        vdec::VirtualDecoder* decoder = fixture_.startDecoder();
        QVERIFY(decoder);
        sdk_ = std::make_unique<kvmstest::SdkSession>();
        QCOMPARE(sdk_->connect(decoder), CMATRIX_OK);
        QCOMPARE(CMatrix_SetMatrix(*sdk_, 1, 1, "Wall"), CMATRIX_OK);
        const MatrixWindow_t cell = kvmstest::window(1, 0, 0, 32768, 32768);
        QCOMPARE(CMatrix_WindowAdd(*sdk_, &cell, 1, true), CMATRIX_OK);
        QCOMPARE(CMatrix_WindowSetDivision(*sdk_, 1, 4), CMATRIX_OK);
        const Handle h = connectWorker(decoder);
        QVERIFY(h);

        // The camera in sub-window 2 (top right), bound as the page binds it.
        MatrixWindowInfo window = windowInfo(1, 4);
        MatrixDeviceInfo& d = window.subWindows[1].device;
        d.deviceType = 1;
        d.deviceId = QStringLiteral("NVR58&1");
        d.deviceName = QStringLiteral("Gate");
        d.ip = cameraIp;
        d.port = cameras_.port();
        d.channel = 1;
        d.userName = QStringLiteral("admin");
        d.password = QStringLiteral("secret");
        QueuedSignalSpy bound(worker(), &MatrixSdkWorker::signalSetWindowSignalSourceResult);
        worker()->setWindowSignalSource(h, window, 1, false);
        QVERIFY(bound.wait(scaled(10000)));
        QCOMPARE(bound.at(0).at(0).toInt(), 0);
        window.x = window.y = 0;
        window.w = window.h = 32768;

        ControlMatrixWt canvas;
        canvas.resize(960, 540);
        canvas.setWindowInfoList({ window }, 1, 1);
        CanvasMimic mimic(
            worker(), &canvas, [h] { return h; }, nullptr);
        mimic.setIntervalMs(200);
        QueuedSignalSpy results(worker(), &MatrixSdkWorker::signalGetWallSnapshotResult);
        QVERIFY(!mimic.isRunning()); // not shown yet
        canvas.show();
        QVERIFY(mimic.isRunning());
        auto* panel = qobject_cast<MatrixPanelWt*>(canvas.panel(ControlMatrixWt::panelKey(1, 2, 0)));
        auto* empty = qobject_cast<MatrixPanelWt*>(canvas.panel(ControlMatrixWt::panelKey(1, 3, 0)));
        QVERIFY(panel && empty);

        // Once the camera plays, the panel's picture is the decoder's own in that region.
        const MonitorClient monitor(decoder->address(), decoder->httpPort());
        const auto videoState = [&monitor] {
            const QJsonObject w = monitor.state().value("windows").toArray().at(0).toObject();
            return w["subWindows"].toArray().at(1).toObject()["video"].toObject()["state"].toString();
        };
        QTRY_COMPARE_WITH_TIMEOUT(videoState(), QStringLiteral("playing"), scaled(15000));
        // Above the panel's caption strip.
        const auto upper = [](const QRect& r) { return QRect(r.x(), r.y(), r.width(), r.height() * 3 / 4); };
        const QRect region = upper(QRect(panel->mapTo(&canvas, QPoint(0, 0)), panel->size()));
        const QRect emptyRegion = upper(QRect(empty->mapTo(&canvas, QPoint(0, 0)), empty->size()));
        double mirrored = 255;
        double elsewhere = 0;
        QTRY_VERIFY_WITH_TIMEOUT(
            panel->hasPicture() &&
                [&] {
                    const QImage wall = monitor.wall(canvas.width()).scaled(canvas.size());
                    const QImage shown = panel->grab().toImage().copy(upper(panel->rect()));
                    mirrored = difference(shown, wall.copy(region));
                    elsewhere = difference(shown, wall.copy(emptyRegion));
                    return mirrored < 20;
                }(),
            scaled(20000));
        qInfo("mean difference to the wall: %.1f under the panel, %.1f elsewhere", mirrored, elsewhere);
        QVERIFY2(elsewhere > 2 * mirrored, qPrintable(QStringLiteral("%1 %2").arg(mirrored).arg(elsewhere)));
        QVERIFY(!empty->hasPicture());

        // Hidden, its refresh stops; shown again, it asks again.
        canvas.hide();
        QVERIFY(!mimic.isRunning());
        canvas.show();
        QVERIFY(mimic.isRunning());
        QVERIFY(results.wait(scaled(10000)));

        canvas.hide();
        QVERIFY(settleWorker());
        sdk_.reset();
        fixture_.cleanup();
        cameras_.stop();
    }
};

KVMS_TEST_MAIN(MimicTest)
#include "TestMimic.moc"
