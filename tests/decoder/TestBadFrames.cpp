// What a decoder does with frames it cannot use: a clear result code, counters that
// say what happened, no picture, and a decoder that carries on.

#include "DecoderFixture.h"
#include "MediaRecords.h"
#include "SdkSession.h"
#include "SuiteMain.h"

#include "core/VirtualDecoder.h"

#include <QtTest>

using namespace mediarecords;

using Bytes = FrameSamples::Bytes;

Q_DECLARE_METATYPE(FrameSamples::Bytes)

namespace {

Bytes corrupted(Bytes frame, size_t offset, uint8_t value)
{
    frame.at(offset) = value;
    return frame;
}

Bytes lengthened(Bytes frame, uint32_t extra)
{
    // Payload size, big-endian at offset 4: now more than the buffer holds.
    uint32_t size = (uint32_t(frame[4]) << 24) | (uint32_t(frame[5]) << 16) | (uint32_t(frame[6]) << 8) | frame[7];
    size += extra;
    for (int i = 0; i < 4; ++i)
        frame[size_t(4 + i)] = uint8_t(size >> (24 - 8 * i));
    return frame;
}

} // namespace

class TestBadFrames : public QObject {
    Q_OBJECT

    kvmstest::DecoderFixture fixture_;

private slots:
    void cleanup() { fixture_.cleanup(); }

    void badFrames_data()
    {
        QTest::addColumn<Bytes>("frame");
        QTest::addColumn<int>("windowId");
        QTest::addColumn<int>("sub");
        QTest::addColumn<int>("result");
        QTest::addColumn<int>("frames"); // counted for window 1, sub-window 1
        QTest::addColumn<int>("failed");
        QTest::addColumn<int>("codec"); // last codec seen, -1: none

        const Bytes good = FrameSamples::picture(Qt::yellow);
        const QByteArray jpeg = FrameSamples::solidJpeg(Qt::yellow);
        // Taken in (counted, codec noted), refused as a frame (counted as failed), or turned away uncounted.
        const auto taken = [](const char* name, const Bytes& frame, int codec) {
            QTest::newRow(name) << frame << 1 << 1 << CMATRIX_OK << 1 << 0 << codec;
        };
        const auto refused = [](const char* name, const Bytes& frame, int result) {
            QTest::newRow(name) << frame << 1 << 1 << result << 1 << 1 << -1;
        };
        const auto turnedAway = [](const char* name, int windowId, int sub, int result, const Bytes& frame) {
            QTest::newRow(name) << frame << windowId << sub << result << 0 << 0 << -1;
        };
        taken("good picture", good, 4);
        refused("wrong magic", corrupted(good, 0, 'K'), CMATRIX_ERR_FRAME);
        refused("shorter than a header", Bytes(good.begin(), good.begin() + 10), CMATRIX_ERR_FRAME);
        refused("size beyond the buffer", lengthened(good, 1000), CMATRIX_ERR_FRAME);
        // The envelope's own check leaves out its extension blocks: the decoder must not.
        refused("payload cut short", Bytes(good.begin(), good.end() - 1), CMATRIX_ERR_FRAME);
        // Video block at 17: tag, length, codec, rate (2), width (2), height (2).
        refused("zero width", corrupted(corrupted(good, 22, 0), 23, 0), CMATRIX_ERR_FRAME);
        taken("unknown codec", FrameSamples::envelope(jpeg, 99), 99);
        taken("no stream description", FrameSamples::bareEnvelope(jpeg), -1);
        refused("not a picture", FrameSamples::envelope("definitely not a JPEG"), CMATRIX_ERR_DECODE);
        refused("picture claiming 30000x30000",
            FrameSamples::envelope(FrameSamples::withClaimedSize(jpeg, { 30000, 30000 })), CMATRIX_ERR_DECODE);
        turnedAway("sub-window past the division", 1, 5, CMATRIX_ERR_SUBWINDOW, good);
        turnedAway("empty frame", 1, 1, CMATRIX_ERR_INVALID_PARAM, Bytes());
    }

    void badFrames()
    {
        QFETCH(Bytes, frame);
        QFETCH(int, windowId);
        QFETCH(int, sub);
        QFETCH(int, result);
        QFETCH(int, frames);
        QFETCH(int, failed);
        QFETCH(int, codec);

        vdec::VirtualDecoder* d = fixture_.startDecoder();
        QVERIFY(d);
        kvmstest::SdkSession h;
        QCOMPARE(h.connect(d), CMATRIX_OK);
        QVERIFY(layOut(h, 4));

        QCOMPARE(display(h, windowId, sub, frame), result);

        const vdec::DecoderSnapshot snapshot = d->snapshot();
        const vdec::SubWindowMedia* media = snapshot.mediaOf(1, 1);
        QCOMPARE(media ? int(media->frames) : 0, frames);
        QCOMPARE(media ? int(media->failed) : 0, failed);
        QCOMPARE(media ? media->lastCodec : -1, codec);
        QCOMPARE(media ? int(media->bytes) : 0, frames ? int(frame.size()) : 0);
        QCOMPARE(media && !media->picture.isNull(), result == CMATRIX_OK && codec == 4);

        // The decoder carries on: control calls and the next picture go through.
        int cols = 0, rows = 0;
        QCOMPARE(CMatrix_GetMatrix(h, &cols, &rows, nullptr, 0), CMATRIX_OK);
        QCOMPARE(display(h, 1, 1, FrameSamples::picture(Qt::cyan)), CMATRIX_OK);
        QVERIFY(!d->snapshot().mediaOf(1, 1)->picture.isNull());
    }
};

KVMS_TEST_CLASS(TestBadFrames)
#include "TestBadFrames.moc"
