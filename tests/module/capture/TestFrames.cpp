// What the three frame senders put on the wire, and the capture loop that uses the first.
#include "CaptureRig.h"
#include "SuiteMain.h"

#include "ColourChecks.h"
#include "JpegEncoder.h"
#include "KovCapThread.h"
#include "PatternWindow.h"
#include "SdkCallTap.h"
#include "TestTimeout.h"

#include "core/VirtualDecoder.h"

#include <QFile>
#include <QPainter>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QtTest>

using kvms_matrix::JpegEncoder;
using kvms_matrix::MatrixDeviceInfo;
using kvms_matrix::VideoStreamInfo;
using kvmstest::scaled;

namespace {

QList<SdkCall> callsTo(int windowId, int channel)
{
    QList<SdkCall> out;
    for (const SdkCall& c : SdkCallTap::calls()) {
        if (c.windowId == windowId && c.channel == channel)
            out.append(c);
    }
    return out;
}

QByteArray solidJpeg(const QColor& colour, QSize size)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(colour);
    return JpegEncoder::encode(image, JpegEncoder::Path::Toolkit);
}

} // namespace

// The loop grabs the (800 x 600) offscreen screen, scales it to 1920 x 1080 and sends each
// picture as a still-picture envelope to the target it was given. Starting the running loop
// again changes its target; it does not start a second loop.

class TestFrames : public QObject {
    Q_OBJECT

    CaptureRig rig_;
    QTemporaryDir dir_;

private slots:
    void initTestCase()
    {
        QVERIFY(dir_.isValid());
        rig_.setLogFile(dir_.filePath("client.log"));
        QVERIFY(CaptureRig::worker());
    }

    void cleanup()
    {
        rig_.cleanup();
        SdkCallTap::clear();
    }

    void captureLoopSendsFullHdPictures()
    {
        PatternWindow desktop;
        QVERIFY(desktop.showOverScreen());
        vdec::VirtualDecoder* d = rig_.startDecoder();
        QVERIFY(d);
        const CaptureRig::Handle h = rig_.connect(d);
        QVERIFY(h);
        QVERIFY(CaptureRig::layOut(h, 1, 4));
        SdkCallTap::clear();

        kvms_matrix::MatrixSdkWorker* w = CaptureRig::worker();
        w->startCaptureThread(h, 1, 2);
        QTRY_VERIFY_WITH_TIMEOUT(callsTo(1, 2).size() >= 2, scaled(5000));
        w->startCaptureThread(h, 1, 3);
        QTRY_VERIFY_WITH_TIMEOUT(callsTo(1, 3).size() >= 2, scaled(5000));
        QVERIFY(w->captureThread()->isRunning());
        w->stopCaptureThread();
        QVERIFY(!w->captureThread()->isRunning());

        const QList<SdkCall> calls = SdkCallTap::calls();
        QCOMPARE(calls.size(), SdkCallTap::count());
        bool retargeted = false;
        for (const SdkCall& call : calls) {
            retargeted = retargeted || call.channel == 3;
            QCOMPARE(call.channel, retargeted ? 3 : 2);
            QCOMPARE(call.function, SdkCall::DisplayFrame);
            QCOMPARE(call.handle, h->handle());
            QCOMPARE(call.windowId, 1);
            QCOMPARE(call.result, CMATRIX_OK);
            const CaptureRig::Envelope e = CaptureRig::unpack(call.frame);
            QVERIFY(e.ok);
            QCOMPARE(e.typeByte, 250);
            QCOMPARE(e.headerSize, 32);
            QCOMPARE(e.info.flags, 3u);
            QCOMPARE(e.info.videoCodec, 4u);
            QCOMPARE(e.rate100(), 100);
            QCOMPARE(int(e.info.width), 1920);
            QCOMPARE(int(e.info.height), 1080);
            QCOMPARE(e.frame.timestamp, 0ull);
            QCOMPARE(e.info.audioA | e.info.audioB | e.info.audioC | e.info.audioD, 0u);
            const QImage picture = QImage::fromData(e.payload, "JPG");
            QCOMPARE(picture.size(), QSize(1920, 1080));
            for (double fy : { 0.2, 0.8 }) {
                for (double fx : { 0.2, 0.8 })
                    QVERIFY(colourcheck::near(colourcheck::at(picture, fx, fy), PatternWindow::colourAt(fx, fy)));
            }
        }
        // One loop: the decoder saw one picture per round, never two at once for both targets.
        const vdec::DecoderSnapshot s = d->snapshot();
        QVERIFY(s.mediaOf(1, 2) && s.mediaOf(1, 3));
        QCOMPARE(s.mediaOf(1, 2)->frames + s.mediaOf(1, 3)->frames, quint64(calls.size()));
        QCOMPARE(s.mediaOf(1, 3)->lastCodec, 4);
    }

    void recordingFrames_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<int>("codec"); // as the stream source reports it
        QTest::addColumn<uint>("rateNum");
        QTest::addColumn<uint>("rateDen");
        QTest::addColumn<int>("width");
        QTest::addColumn<int>("typeByte"); // -1: nothing is sent
        QTest::addColumn<int>("headerSize");
        QTest::addColumn<int>("sentCodec"); // -1: no video block
        QTest::addColumn<int>("rate100");

        QTest::newRow("key frame, first codec") << 1 << 0 << 25u << 1u << 704 << 250 << 32 << 1 << 2500;
        QTest::newRow("key frame, second codec") << 1 << 1 << 30000u << 1001u << 1280 << 250 << 32 << 2 << 2997;
        QTest::newRow("key frame, unknown codec") << 1 << 7 << 25u << 1u << 1920 << 250 << 32 << 0 << 2500;
        QTest::newRow("other frame") << 2 << 0 << 25u << 1u << 704 << 251 << 17 << -1 << 0;
        // Any other kind (0, -1, 3 ...): sized as an audio frame, packed with a bare header and type byte 0.
        QTest::newRow("kind 3") << 3 << 0 << 25u << 1u << 704 << 0 << 17 << -1 << 0;
        // The stream description is validated whatever the kind.
        QTest::newRow("kind 3 without width") << 3 << 0 << 25u << 1u << 0 << -1 << 0 << -1 << 0;
        QTest::newRow("key frame without rate") << 1 << 0 << 25u << 0u << 704 << -1 << 0 << -1 << 0;
    }

    void recordingFrames()
    {
        QFETCH(int, kind);
        QFETCH(int, codec);
        QFETCH(uint, rateNum);
        QFETCH(uint, rateDen);
        QFETCH(int, width);
        QFETCH(int, typeByte);
        QFETCH(int, headerSize);
        QFETCH(int, sentCodec);
        QFETCH(int, rate100);

        vdec::VirtualDecoder* d = rig_.startDecoder();
        QVERIFY(d);
        const CaptureRig::Handle h = rig_.connect(d);
        QVERIFY(h);
        QVERIFY(CaptureRig::layOut(h, 1, 4));
        SdkCallTap::clear();

        VideoStreamInfo info;
        info.codec = codec;
        info.width = uint16_t(width);
        info.height = 576;
        info.frameRateNum = rateNum;
        info.frameRateDen = rateDen;
        QByteArray payload(3001, Qt::Uninitialized);
        for (int i = 0; i < payload.size(); ++i)
            payload[i] = char(i * 7 + 3);
        const int ret
            = CaptureRig::worker()->sendDeviceDisplayFrame(h, 1, 4, &info, payload.data(), payload.size(), kind);

        if (typeByte < 0) {
            QCOMPARE(ret, -1);
            QCOMPARE(SdkCallTap::count(), 0);
            QVERIFY(!d->snapshot().mediaOf(1, 4));
            return;
        }
        QCOMPARE(ret, CMATRIX_OK);
        QCOMPARE(SdkCallTap::count(), 1);
        const SdkCall call = SdkCallTap::calls().first();
        QCOMPARE(call.function, SdkCall::DisplayFrame);
        QCOMPARE(call.windowId, 1);
        QCOMPARE(call.channel, 4);
        QCOMPARE(call.frame.size(), headerSize + payload.size());
        QCOMPARE(int(uchar(call.frame.at(3))), typeByte);
        QCOMPARE(int(uchar(call.frame.at(16))), headerSize - 17);
        const CaptureRig::Envelope e = CaptureRig::unpack(call.frame);
        QVERIFY(e.ok);
        QCOMPARE(e.payload, payload);
        QCOMPARE(e.frame.timestamp, 0ull);
        if (sentCodec >= 0) {
            QCOMPARE(e.info.flags, 3u);
            QCOMPARE(int(e.info.videoCodec), sentCodec);
            QCOMPARE(e.rate100(), rate100);
            QCOMPARE(int(e.info.width), width);
            QCOMPARE(int(e.info.height), 576);
        } else {
            QCOMPARE(e.info.flags, 0u);
        }
        const vdec::DecoderSnapshot snapshot = d->snapshot();
        const vdec::SubWindowMedia* media = snapshot.mediaOf(1, 4);
        QVERIFY(media);
        QCOMPARE(media->frames, 1u);
        QCOMPARE(media->bytes, quint64(call.frame.size()));
        QCOMPARE(media->lastCodec, sentCodec);
    }

    void stillPicture_data()
    {
        QTest::addColumn<QString>("file"); // in the test's directory
        QTest::addColumn<QByteArray>("content"); // empty: no such file
        QTest::addColumn<int>("expected");

        const QByteArray jpeg = solidJpeg(QColor(30, 190, 40), { 640, 360 });
        QTest::newRow("picture") << "lobby.jpg" << jpeg << CMATRIX_OK;
        QTest::newRow("missing file") << "gone.jpg" << QByteArray() << -1;
        QTest::newRow("not a picture") << "notes.jpg" << QByteArray("just some text\n") << -1;
        QTest::newRow("far too large") << "huge.jpg" << jpeg.leftJustified(17 * 1024 * 1024, '\0') << -1;
    }

    // The file is sent as it is to the device's channel.
    void stillPicture()
    {
        QFETCH(QString, file);
        QFETCH(QByteArray, content);
        QFETCH(int, expected);

        vdec::VirtualDecoder* d = rig_.startDecoder();
        QVERIFY(d);
        const CaptureRig::Handle h = rig_.connect(d);
        QVERIFY(h);
        QVERIFY(CaptureRig::layOut(h, 1, 4));
        QVERIFY(CaptureRig::bindSource(h, 1, 3, "pic_lobby"));
        const QString path = dir_.filePath(file);
        QFile::remove(path);
        if (!content.isEmpty()) {
            QFile out(path);
            QVERIFY(out.open(QIODevice::WriteOnly));
            out.write(content);
        }
        SdkCallTap::clear();

        MatrixDeviceInfo device;
        device.deviceType = 3;
        device.deviceId = QStringLiteral("pic_lobby");
        device.channel = 3;
        device.mainUrl = path;
        const int ret = CaptureRig::worker()->sendDeviceDisplayFrame(h, 1, &device);
        QCOMPARE(ret, expected);
        if (expected != CMATRIX_OK) {
            QCOMPARE(SdkCallTap::count(), 0);
            return;
        }
        QCOMPARE(SdkCallTap::count(), 1);
        const SdkCall call = SdkCallTap::calls().first();
        QCOMPARE(call.windowId, 1);
        QCOMPARE(call.channel, 3);
        const CaptureRig::Envelope e = CaptureRig::unpack(call.frame);
        QVERIFY(e.ok);
        QCOMPARE(e.typeByte, 250);
        QCOMPARE(e.info.videoCodec, 4u);
        QCOMPARE(e.rate100(), 100);
        QCOMPARE(QSize(e.info.width, e.info.height), QSize(640, 360));
        QCOMPARE(e.payload, content); // not re-encoded
        const vdec::DecoderSnapshot snapshot = d->snapshot();
        const vdec::SubWindowMedia* media = snapshot.mediaOf(1, 3);
        QVERIFY(media && !media->picture.isNull());
        QVERIFY(colourcheck::near(colourcheck::at(media->picture, 0.5, 0.5), QColor(30, 190, 40)));
    }

    void directJpegIsTheToolkitsPicture_data()
    {
        QTest::addColumn<QImage>("image");

        QImage quadrants(1920, 1080, QImage::Format_RGB32);
        {
            QPainter p(&quadrants);
            p.fillRect(0, 0, 960, 540, PatternWindow::kTopLeft);
            p.fillRect(960, 0, 960, 540, PatternWindow::kTopRight);
            p.fillRect(0, 540, 960, 540, PatternWindow::kBottomLeft);
            p.fillRect(960, 540, 960, 540, PatternWindow::kBottomRight);
        }
        QImage busy(1920, 1080, QImage::Format_RGB32);
        QRandomGenerator random(7);
        for (int y = 0; y < busy.height(); ++y) {
            auto* line = reinterpret_cast<QRgb*>(busy.scanLine(y));
            for (int x = 0; x < busy.width(); ++x)
                line[x] = qRgb(x * 255 / 1920, y * 255 / 1080, int(random.bounded(256)));
        }
        QImage odd(333, 77, QImage::Format_RGB32);
        odd.fill(QColor(12, 200, 99));
        QTest::newRow("quadrants") << quadrants;
        QTest::newRow("gradients and noise") << busy;
        QTest::newRow("odd size") << odd;
    }

    // The direct path changes how the pixels reach libjpeg, not the picture: same bytes.
    void directJpegIsTheToolkitsPicture()
    {
        QFETCH(QImage, image);
        if (!JpegEncoder::directAvailable())
            QSKIP("built without libjpeg-turbo");
        QVERIFY(JpegEncoder::takesDirectPath(image));
        const QByteArray direct = JpegEncoder::encode(image, JpegEncoder::Path::Direct);
        const QByteArray toolkit = JpegEncoder::encode(image, JpegEncoder::Path::Toolkit);
        QVERIFY(!direct.isEmpty());
        QCOMPARE(direct.size(), toolkit.size());
        QVERIFY(direct == toolkit);
    }
};

KVMS_TEST_CLASS(TestFrames)
#include "TestFrames.moc"
