// A camera on the wall: moving pictures, the stream the operator chose, a camera that
// goes away and comes back, and the worker's snapshot of the wall.
#include "VideoTests.h"
#include "QueuedSignalSpy.h"

#include "TestTimeout.h"

#include <QtTest>


using namespace kvms_matrix;
using kvmstest::scaled;

namespace {

const QString kCameraIp = QStringLiteral("127.0.0.50");

bool playing(const QJsonObject& v)
{
    return v.value("state").toString() == QLatin1String("playing");
}

} // namespace

void VideoTest::cameraMovesOnTheWall()
{
    QVERIFY2(cameras_.start(kCameraIp, { "Gate" }), qPrintable(cameras_.error()));
    const Handle h = wallOn(40, 4);
    QVERIFY(h);
    QCOMPARE(bind(h, withCamera(4, 1, kCameraIp, cameras_.port(), 1, 0), 0), 0);
    QTRY_VERIFY_WITH_TIMEOUT(playing(video(1)), scaled(15000));
    const QJsonObject first = video(1);
    QCOMPARE(
        first.value("url").toString(), QStringLiteral("rtsp://%1:%2/ch1/main").arg(kCameraIp).arg(cameras_.port()));
    QVERIFY(!first.value("url").toString().contains("secret"));
    const QImage before = wall();
    QVERIFY(!before.isNull());
    // A second later by the camera's own clock, stamped in the pictures.
    const qint64 sent = first.value("cameraTimeMs").toVariant().toLongLong();
    QVERIFY(sent > 0);
    QTRY_VERIFY_WITH_TIMEOUT(video(1).value("cameraTimeMs").toVariant().toLongLong() >= sent + 1000, scaled(10000));
    const QImage after = wall();
    const QRect sub1(20, 40, 440, 220); // inside sub-window 1 (top left quarter), clear of its label
    QVERIFY(before.copy(sub1) != after.copy(sub1));
    const QRect sub4(500, 310, 440, 220); // nothing is bound there
    QCOMPARE(before.copy(sub4), after.copy(sub4));
    const QJsonObject later = video(1);
    QVERIFY(later.value("cameraFrame").toInt() >= first.value("cameraFrame").toInt() + 20);
    QVERIFY(later.value("latencyMs").toInt() >= 0);

    // The worker's wall snapshot for the mimic shows the camera too.
    QueuedSignalSpy result(worker(), &MatrixSdkWorker::signalGetWallSnapshotResult);
    worker()->getWallSnapshot(h, 640, 360);
    QVERIFY(result.wait(scaled(10000)));
    QCOMPARE(result.at(0).at(0).toInt(), 0);
    QCOMPARE(result.at(0).at(1).value<Handle>(), h);
    const QImage picture = result.at(0).at(3).value<QImage>();
    QCOMPARE(picture.size(), QSize(640, 360));
    QVERIFY(result.at(0).at(2).toByteArray().startsWith("\xff\xd8"));
    // The camera's picture fills the top left quarter: not one flat colour as an empty one is.
    const QImage quarter = picture.copy(20, 40, 280, 130).convertToFormat(QImage::Format_RGB32);
    QVERIFY(quarter.pixel(10, 10) != quarter.pixel(270, 120) || quarter.pixel(140, 60) != quarter.pixel(10, 10));

    QueuedSignalSpy refused(worker(), &MatrixSdkWorker::signalGetWallSnapshotResult);
    worker()->getWallSnapshot(Handle(), 640, 360);
    QVERIFY(refused.wait(scaled(10000)));
    QCOMPARE(refused.at(0).at(0).toInt(), -1);
    QVERIFY(refused.at(0).at(3).value<QImage>().isNull());
}

void VideoTest::streamFollowsTheChoice_data()
{
    QTest::addColumn<int>("division");
    QTest::addColumn<int>("stream");
    QTest::addColumn<QString>("expected");
    QTest::addColumn<int>("width");
    QTest::newRow("HD in a quarter") << 4 << 0 << "main" << 640;
    QTest::newRow("SD on a whole screen") << 1 << 1 << "sub" << 320;
    QTest::newRow("Auto in a quarter") << 4 << -1 << "sub" << 320;
    QTest::newRow("Auto on a whole screen") << 1 << -1 << "main" << 640;
}

void VideoTest::streamFollowsTheChoice()
{
    QFETCH(int, division);
    QFETCH(int, stream);
    QFETCH(QString, expected);
    QFETCH(int, width);
    QVERIFY2(cameras_.start(kCameraIp, { "Gate" }), qPrintable(cameras_.error()));
    const Handle h = wallOn(41, division);
    QVERIFY(h);
    QCOMPARE(bind(h, withCamera(division, 1, kCameraIp, cameras_.port(), 1, stream), 0), 0);
    QTRY_VERIFY_WITH_TIMEOUT(playing(video(1)), scaled(15000));
    const QJsonObject v = video(1);
    QCOMPARE(v.value("stream").toString(), expected);
    QVERIFY(v.value("url").toString().endsWith("/ch1/" + expected));
    QCOMPARE(v.value("source").toObject().value("width").toInt(), width);
}

void VideoTest::unreachableCameraRecovers()
{
    // Learn a free port, then take the camera away.
    QVERIFY2(cameras_.start(kCameraIp, { "Gate" }), qPrintable(cameras_.error()));
    const quint16 port = cameras_.port();
    cameras_.stop();
    const Handle h = wallOn(42, 1);
    QVERIFY(h);
    QCOMPARE(bind(h, withCamera(1, 1, kCameraIp, port, 1, 1), 0), 0);
    QTRY_VERIFY_WITH_TIMEOUT(video(1).value("state").toString() == "no signal", scaled(15000));
    QVERIFY2(video(1).value("reason").toString().startsWith("cannot open the stream"),
        qPrintable(video(1).value("reason").toString()));
    QTRY_VERIFY_WITH_TIMEOUT(video(1).value("attempts").toInt() >= 2, scaled(10000)); // tried again

    QVERIFY2(cameras_.start(kCameraIp, { "Gate" }, port), qPrintable(cameras_.error()));
    QTRY_VERIFY_WITH_TIMEOUT(playing(video(1)), scaled(20000));
    QVERIFY(!video(1).contains("reason"));
    // And the other way: the camera goes while shown.
    cameras_.stop();
    QTRY_VERIFY_WITH_TIMEOUT(video(1).value("state").toString() == "no signal", scaled(15000));
}
