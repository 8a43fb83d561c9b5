// Pictures pushed with CMatrix_DisplayFrame, seen where the wall shows them, and the media
// connections that carry them.

#include "DecoderFixture.h"
#include "MediaRecords.h"
#include "MonitorClient.h"
#include "SdkSession.h"
#include "SuiteMain.h"
#include "TestTimeout.h"

#include "core/VirtualDecoder.h"

#include <QtTest>

using namespace mediarecords;
using kvmstest::scaled;

class TestPictures : public QObject {
    Q_OBJECT

    kvmstest::DecoderFixture fixture_;

private slots:
    void cleanup() { fixture_.cleanup(); }

    void quickPicturesShowTheLatest_data()
    {
        QTest::addColumn<int>("intervalMs");
        QTest::addColumn<int>("decoded"); // after the wall has been looked at
        QTest::newRow("every picture decoded") << 0 << 3;
        QTest::newRow("first decoded, latest when looked at") << 60000 << 2;
    }

    // Pictures that follow each other quickly: whatever is skipped, the wall shows the
    // latest one, and a broken one is refused at once even when it would not be decoded yet.
    void quickPicturesShowTheLatest()
    {
        QFETCH(int, intervalMs);
        QFETCH(int, decoded);
        vdec::VirtualDecoder* d
            = fixture_.startDecoder(0, [&](vdec::DecoderConfig& c) { c.pictureIntervalMs = intervalMs; });
        QVERIFY(d);
        kvmstest::SdkSession h;
        QCOMPARE(h.connect(d), CMATRIX_OK);
        QVERIFY(layOut(h, 1, 1, { window(1, 0, 0, 32768, 32768) }, { 1 }));
        for (const QColor& colour : { QColor(Qt::red), QColor(Qt::green), QColor(Qt::blue) })
            QCOMPARE(display(h, 1, 1, FrameSamples::picture(colour)), CMATRIX_OK);
        QCOMPARE(display(h, 1, 1, FrameSamples::envelope("not a JPEG")), CMATRIX_ERR_DECODE);

        const vdec::DecoderSnapshot snapshot = d->snapshot();
        const vdec::SubWindowMedia* media = snapshot.mediaOf(1, 1);
        QVERIFY(media);
        QCOMPARE(media->frames, 4u);
        QCOMPARE(int(media->decoded), decoded);
        QCOMPARE(media->failed, 1u);
        QVERIFY2(near(at(media->picture, 0.5, 0.5), Qt::blue), qPrintable(at(media->picture, 0.5, 0.5).name()));
        QVERIFY(near(at(MonitorClient(d->address(), d->httpPort()).wall(), 0.5, 0.5), Qt::blue));
    }

    // Only the control connection speaks for a handle: a media connection that drops is
    // opened again on the next frame without a word to the status callback, and when
    // everything drops at once the loss is reported once.
    void mediaConnectionLossIsNotReported()
    {
        vdec::VirtualDecoder* d = fixture_.startDecoder();
        QVERIFY(d);
        kvmstest::SdkSession h;
        QCOMPARE(h.connect(d), CMATRIX_OK);
        QVERIFY(layOut(h, 1, 1, { window(1, 0, 0, 32768, 32768) }, { 1 }));
        const FrameSamples::Bytes frame = FrameSamples::picture(Qt::green);
        QCOMPARE(display(h, 1, 1, frame), CMATRIX_OK);

        d->faults().dropConnectionAfter(0); // the next request's connection: the display one
        QCOMPARE(display(h, 1, 1, frame), CMATRIX_ERR_DISCONNECTED);
        int cols = 0, rows = 0;
        QCOMPARE(CMatrix_GetMatrix(h, &cols, &rows, nullptr, 0), CMATRIX_OK);
        QCOMPARE(display(h, 1, 1, frame), CMATRIX_OK);
        QCOMPARE(h.losses(), 0);

        d->killConnections();
        QTRY_COMPARE_WITH_TIMEOUT(h.losses(), 1, scaled(3000));
        // The decoder's side of each connection goes when its thread sees the reset, which
        // may be after the loss above: until then the display connection still works.
        QTRY_COMPARE_WITH_TIMEOUT(d->connectionCount(), 0, scaled(3000));
        QCOMPARE(display(h, 1, 1, frame), CMATRIX_ERR_DISCONNECTED); // not behind the caller's back
        QCOMPARE(h.connect(d), CMATRIX_OK);
        QCOMPARE(display(h, 1, 1, frame), CMATRIX_OK);
        QCOMPARE(h.losses(), 1);
    }
};

KVMS_TEST_CLASS(TestPictures)
#include "TestPictures.moc"
