// The media connections that carry pictures pushed with CMatrix_DisplayFrame.

#include "DecoderFixture.h"
#include "MediaRecords.h"
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

    // Only the control connection speaks for a handle: a media connection that drops is
    // opened again on the next frame without a word to the status callback, and when
    // everything drops at once the loss is reported once.
    void mediaConnectionLossIsNotReported()
    {
        vdec::VirtualDecoder* d = fixture_.startDecoder();
        QVERIFY(d);
        kvmstest::SdkSession h;
        QCOMPARE(h.connect(d), CMATRIX_OK);
        QVERIFY(layOut(h, 1));
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
