// A camera on the wall: moving pictures, the stream the operator chose, a camera that
// goes away and comes back, and a loop of cameras.
#include "VideoTests.h"

#include "MonitorClient.h"
#include "TestTimeout.h"
#include "WireBuilders.h"

#include "media/VideoDecoder.h"

#include <QDir>
#include <QtTest>

#include <cstring>

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
}

namespace {

// Mean difference per colour channel (0..255) of two pictures of one size.
double meanDifference(const QImage& a, const QImage& b)
{
    qint64 sum = 0;
    for (int y = 0; y < a.height(); ++y) {
        const auto* p = reinterpret_cast<const QRgb*>(a.constScanLine(y));
        const auto* q = reinterpret_cast<const QRgb*>(b.constScanLine(y));
        for (int x = 0; x < a.width(); ++x)
            sum += qAbs(qRed(p[x]) - qRed(q[x])) + qAbs(qGreen(p[x]) - qGreen(q[x])) + qAbs(qBlue(p[x]) - qBlue(q[x]));
    }
    return double(sum) / (3.0 * a.width() * a.height());
}

} // namespace

void VideoTest::pictureMatchesTheClip()
{
    // The camera's clip decoded straight from its file is the reference: every picture the
    // decoder shows off the network must be one of the clip's (a smear or a grey block
    // left by a broken transport matches none).
    QVERIFY2(cameras_.start(kCameraIp, { "Gate" }), qPrintable(cameras_.error()));
    const QStringList clips = QDir(QStringLiteral(KVMS_TEST_CLIP_DIR)).entryList({ "Gate-*-320x180-*.h264" });
    QCOMPARE(clips.size(), 1);
    vdec::VideoDecoder reference;
    QVERIFY(reference.open(vdec::VideoDecoder::Codec::H264));
    QList<QImage> frames;
    for (const QByteArray& unit : clipPictures(QStringLiteral(KVMS_TEST_CLIP_DIR "/") + clips.first())) {
        QImage frame;
        if (reference.decode(reinterpret_cast<const uint8_t*>(unit.constData()), size_t(unit.size()), 0)
            && reference.toImage(QSize(), frame))
            frames.append(frame);
    }
    QCOMPARE(frames.size(), 100); // 4 s at 25 a second

    const Handle h = wallOn(49, 1);
    QVERIFY(h);
    QCOMPARE(bind(h, withCamera(1, 1, kCameraIp, cameras_.port(), 1, 1), 0), 0);
    // Past the pictures a late joiner may see before its first key picture.
    QTRY_VERIFY_WITH_TIMEOUT(video(1).value("shown").toInt() > 50, scaled(15000));
    qint64 lastKey = 0;
    for (int checked = 0; checked < 12;) {
        const vdec::DecoderSnapshot s = decoder_->snapshot();
        const QImage shown = s.mediaOf(1, 1)->picture.convertToFormat(QImage::Format_RGB32);
        if (shown.cacheKey() == lastKey || shown.size() != frames.first().size()) {
            QTest::qWait(20);
            continue;
        }
        lastKey = shown.cacheKey();
        double best = 255;
        for (const QImage& frame : frames)
            best = std::min(best, meanDifference(shown, frame));
        QVERIFY2(best < 2, qPrintable(QStringLiteral("picture %1 is off the clip by %2").arg(checked).arg(best)));
        ++checked;
        QTest::qWait(150); // spread over key and other pictures
    }
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

void VideoTest::loopShowsEachCameraInTurn()
{
    QVERIFY2(cameras_.start(kCameraIp, { "One", "Two", "Three" }), qPrintable(cameras_.error()));
    const Handle h = wallOn(43, 1, 1500); // a step every 1.5 s
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
