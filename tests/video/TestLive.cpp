// A camera on the wall: the stream the operator chose, and a camera that
// goes away and comes back.
#include "VideoRig.h"

#include "SuiteMain.h"
#include "TestTimeout.h"

#include <QtTest>

using kvmstest::scaled;

class TestLive : public QObject, public VideoRig {
    Q_OBJECT

private slots:
    void initTestCase() { QVERIFY(enterWorkDirectory()); }
    void init()
    {
        if (!kvmstest::CameraSim::available())
            QSKIP("camera-sim was not built (no GStreamer RTSP server)");
    }
    void cleanup() { QVERIFY(settle()); }
    void cleanupTestCase() { QVERIFY(leaveWorkDirectory()); }

    void streamFollowsTheChoice_data()
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

    void streamFollowsTheChoice()
    {
        QFETCH(int, division);
        QFETCH(int, stream);
        QFETCH(QString, expected);
        QFETCH(int, width);
        QVERIFY2(playGate(division, stream), qPrintable(failure_));
        const QJsonObject v = video(1);
        QCOMPARE(v.value("stream").toString(), expected);
        // The camera's login stays with the decoder, out of the address it shows.
        QCOMPARE(v.value("url").toString(),
            QStringLiteral("rtsp://%1:%2/ch1/%3").arg(kCameraIp).arg(cameras_.port()).arg(expected));
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

    void unreachableCameraRecovers()
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
};

KVMS_TEST_CLASS(TestLive)
#include "TestLive.moc"
