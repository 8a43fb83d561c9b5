// A camera on the wall: moving pictures, the stream the operator chose, a camera that
// goes away and comes back, and a loop of cameras.
#include "VideoTests.h"

#include "MonitorClient.h"
#include "TestTimeout.h"
#include "WireBuilders.h"

#include <QtTest>

#include <cstring>

using namespace kvms_matrix;
using kvmstest::scaled;

void VideoTest::cameraMovesOnTheWall()
{
    QVERIFY2(playGate(4, 0), qPrintable(failure_));
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
    QVERIFY2(playGate(division, stream), qPrintable(failure_));
    const QJsonObject v = video(1);
    QCOMPARE(v.value("stream").toString(), expected);
    QVERIFY(v.value("url").toString().endsWith("/ch1/" + expected));
    QCOMPARE(v.value("source").toObject().value("width").toInt(), width);
    // The clip decoded straight from its file is the reference: every picture shown off
    // the network must be one of its own (a smear or a grey block left by a broken
    // transport matches none). Past the pictures a late joiner sees before a key picture.
    const QList<QImage> frames = clipFrames(QStringLiteral("Gate-*-%1x%2-*.h264").arg(width).arg(width * 9 / 16));
    QCOMPARE(frames.size(), 100); // 4 s at 25 a second
    QTRY_VERIFY_WITH_TIMEOUT(video(1).value("shown").toInt() > 50, scaled(15000));
    for (int checked = 0; checked < 8; ++checked) { // spread over key and other pictures
        const int count = video(1).value("shown").toInt();
        QTRY_VERIFY_WITH_TIMEOUT(video(1).value("shown").toInt() >= count + 4, scaled(10000));
        const QImage shown = decoder_->snapshot().mediaOf(1, 1)->picture.convertToFormat(QImage::Format_RGB32);
        const double off = offClip(shown, frames);
        QVERIFY2(off < 2, qPrintable(QStringLiteral("picture %1 is off the clip by %2").arg(checked).arg(off)));
    }
}

void VideoTest::unreachableCameraRecovers()
{
    // Learn a free port, then take the camera away.
    QVERIFY2(cameras_.start(kCameraIp, { "Gate" }), qPrintable(cameras_.error()));
    const quint16 port = cameras_.port();
    cameras_.stop();
    const Handle h = wallOn(1);
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

void VideoTest::loopShowsEachCameraInTurn()
{
    QVERIFY2(cameras_.start(kCameraIp, { "One", "Two", "Three" }), qPrintable(cameras_.error()));
    const Handle h = wallOn(1, 1500); // a step every 1.5 s
    QVERIFY(h);
    SchemeInfo_t scheme {};
    scheme.id = 1;
    std::strcpy(scheme.name, "Gates");
    scheme.kind = 1;
    scheme.interval = 1;
    QCOMPARE(CMatrix_SchemeSet(*sdk_, &scheme), CMATRIX_OK);
    SchemeDevice_t devices[3] {};
    for (int i = 0; i < 3; ++i) {
        SchemeDevice_t& d = devices[i];
        std::snprintf(d.devId, sizeof d.devId, "NVR50&%d", i + 1);
        d.channel = i + 1;
        d.stream = 1;
        std::strcpy(d.protocolName, "kst1.0");
        std::strcpy(d.ip, qPrintable(kCameraIp));
        d.port = cameras_.port();
    }
    QCOMPARE(CMatrix_SchemeAddDevices(*sdk_, 1, devices, 3, true), CMATRIX_OK);
    QCOMPARE(CMatrix_SchemeSelect(*sdk_, 1, 1, 0), CMATRIX_OK);
    // Every camera of the loop comes up playing in its turn.
    QSet<QString> seen;
    QTRY_VERIFY_WITH_TIMEOUT(
        [&] {
            const QJsonObject v = video(1);
            if (playing(v))
                seen.insert(v.value("url").toString().section('/', 3, 3));
            return seen.size() == 3;
        }(),
        scaled(20000));
    QCOMPARE(seen, QSet<QString>({ "ch1", "ch2", "ch3" }));
}
