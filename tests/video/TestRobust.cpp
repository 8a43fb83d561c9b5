// Bad streams: damaged pictures pushed to one sub-window do not stop the decoder or its
// other sub-windows.
#include "VideoRig.h"

#include "SuiteMain.h"

#include "KavFrame.h"

#include <QRandomGenerator>
#include <QtTest>

namespace {

QByteArray envelope(const QByteArray& payload, bool key)
{
    KavFrame frame {};
    frame.type = key ? 250 : 251;
    frame.data = reinterpret_cast<const unsigned char*>(payload.constData());
    frame.size = uint32_t(payload.size());
    KavStreamInfo info {};
    info.flags = KAV_STREAM_VIDEO | KAV_STREAM_AUDIO;
    info.videoCodec = 1; // H.264
    info.frameRateNum = 25;
    info.frameRateDen = 1;
    info.width = 320;
    info.height = 180;
    QByteArray out(KavCalcFrameSize(frame.type, frame.size), '\0');
    const int n = KavPackFrame(&frame, &info, reinterpret_cast<unsigned char*>(out.data()), out.size());
    return n > 0 ? out.left(n) : QByteArray();
}

} // namespace

class TestRobust : public QObject, public VideoRig {
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

    void pushedVideoIsDecodedAndGarbageSurvived()
    {
        // A clip the camera simulator made for an earlier test of this suite.
        const QList<QByteArray> pictures = clipPictures(QStringLiteral("*-320x180-*.h264"));
        if (pictures.isEmpty())
            QSKIP("no clip encoded yet");
        QVERIFY(pictures.size() >= 50);
        QVERIFY(wallOn(4));
        auto send = [&](int sub, const QByteArray& frame) {
            return CMatrix_DisplayFrame(
                *sdk_, 1, sub, reinterpret_cast<const unsigned char*>(frame.constData()), int(frame.size()));
        };
        for (int i = 0; i < 50; ++i)
            QCOMPARE(send(1, envelope(pictures[i], i % 25 == 0)), CMATRIX_OK);
        QRandomGenerator random(7);
        int answered = 0;
        for (int i = 0; i < 50; ++i) {
            QByteArray noise(int(random.bounded(16, 4096)), '\0');
            for (char& c : noise)
                c = char(random.bounded(256));
            if (i % 2)
                noise = pictures[i].left(pictures[i].size() / 2) + noise; // cut short, then garbage
            answered += send(2, envelope(noise, i % 10 == 0)) == CMATRIX_OK ? 1 : 0;
        }
        QCOMPARE(send(1, envelope(pictures[50], false)), CMATRIX_OK); // still decoding the good one
        const vdec::DecoderSnapshot s = decoder_->snapshot();
        const vdec::SubWindowMedia* good = s.mediaOf(1, 1);
        QVERIFY(good && good->decoded > 0 && good->failed == 0);
        QCOMPARE(good->picture.size(), QSize(320, 180));
        const vdec::SubWindowMedia* bad = s.mediaOf(1, 2);
        QVERIFY(bad && bad->frames == 50 && bad->failed > 0);
        QCOMPARE(answered, 50); // whole envelopes: counted, not refused
    }
};

KVMS_TEST_CLASS(TestRobust)
#include "TestRobust.moc"
