// Media distributions: frames sent with CMatrix_SendMediaFrame reach the sub-windows
// bound to the distribution, and the connections behind them come and go with the
// handle.

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

namespace {

int send(CMMDHANDLE md, const FrameSamples::Bytes& frame)
{
    return CMatrix_SendMediaFrame(md, frame.data(), int(frame.size()));
}

} // namespace

class TestDistributions : public QObject {
    Q_OBJECT

    kvmstest::DecoderFixture fixture_;

private slots:
    void cleanup() { fixture_.cleanup(); }

    void distributionFeedsBoundSubWindows()
    {
        vdec::VirtualDecoder* d = fixture_.startDecoder();
        QVERIFY(d);
        kvmstest::SdkSession h;
        QCOMPARE(h.connect(d), CMATRIX_OK);
        // Left half: four sub-windows; right half: one.
        QVERIFY(layOut(h, 2, 2, { window(1, 0, 0, 16384, 32768), window(2, 16384, 0, 16384, 32768) }, { 4, 1 }));

        char url[512] = {};
        const CMMDHANDLE md = CMatrix_StartMediaDistribute(h, "cap_desk", 7, url, sizeof url);
        QVERIFY(md);
        QCOMPARE(QString(url), QString("rtsp://%1:554/md/1").arg(d->address()));

        // Bound by its URL (as the module binds it), by source name and channel, and a
        // camera on the same channel that has nothing to do with it.
        const DeviceInfo_t left[] = { source(2, "cap_desk", 7, 7, url), source(3, "cam-1", 1, 7) };
        const DeviceInfo_t right = source(1, "cap_desk", 6, 7);
        QCOMPARE(CMatrix_WindowDeviceAdd(h, 1, left, 2, true), CMATRIX_OK);
        QCOMPARE(CMatrix_WindowDeviceAdd(h, 2, &right, 1, true), CMATRIX_OK);

        const QColor orange(250, 130, 20);
        QCOMPARE(send(md, FrameSamples::picture(orange)), CMATRIX_OK);
        const QImage wall = MonitorClient(d->address(), d->httpPort()).wall(960);
        QVERIFY(near(at(wall, 0.375, 0.25), orange)); // window 1, sub-window 2
        QVERIFY(!near(at(wall, 0.125, 0.75), orange)); // window 1, sub-window 3: the camera
        QVERIFY(near(at(wall, 0.75, 0.4), orange)); // window 2
        vdec::DecoderSnapshot s = d->snapshot();
        QCOMPARE(s.distributions.size(), size_t(1));
        QCOMPARE(s.distributions[0].frames, 1u);
        QVERIFY(!s.mediaOf(1, 3));

        // Started again for the same source and channel: the same stream, a new handle.
        char again[512] = {};
        const CMMDHANDLE md2 = CMatrix_StartMediaDistribute(h, "cap_desk", 7, again, sizeof again);
        QVERIFY(md2 && md2 != md);
        QCOMPARE(QString(again), QString(url));

        QCOMPARE(CMatrix_StopMediaDistribute(md), CMATRIX_OK);
        QVERIFY(d->snapshot().distributions.empty());
        QCOMPARE(send(md, FrameSamples::picture(orange)), CMATRIX_ERR_INVALID_HANDLE);
        QCOMPARE(CMatrix_StopMediaDistribute(md), CMATRIX_ERR_INVALID_HANDLE);
        QCOMPARE(send(md2, FrameSamples::picture(orange)), CMATRIX_ERR_MEDIA_NOT_FOUND);
        QCOMPARE(CMatrix_StopMediaDistribute(md2), CMATRIX_ERR_MEDIA_NOT_FOUND);

        // Neither kind of handle passes for the other.
        QCOMPARE(send(static_cast<CMMDHANDLE>(h.get()), FrameSamples::picture(orange)), CMATRIX_ERR_INVALID_HANDLE);
        QVERIFY(!CMatrix_StartMediaDistribute(md2, "cap_desk", 8, again, sizeof again));
        // The decoder's checks on what is started.
        QVERIFY(!CMatrix_StartMediaDistribute(h, "", 8, again, sizeof again));
        QVERIFY(!CMatrix_StartMediaDistribute(h, "cap_desk", 0, again, sizeof again));
        QVERIFY(!CMatrix_StartMediaDistribute(h, "a-name-longer-than-thirty-one-bytes", 8, again, sizeof again));
        QVERIFY(!CMatrix_StartMediaDistribute(h, "cap_desk", 8, nullptr, 512));
        QVERIFY(d->snapshot().distributions.empty());
    }

    // A distribution lives on the connection it was started on: Disconnect closes its
    // connection, and so does Destroy, and a new connect does not revive it.
    void distributionEndsWithItsConnection()
    {
        vdec::VirtualDecoder* d = fixture_.startDecoder();
        QVERIFY(d);
        kvmstest::SdkSession h;
        QCOMPARE(h.connect(d), CMATRIX_OK);
        QVERIFY(layOut(h, 1, 1, { window(1, 0, 0, 32768, 32768) }, { 1 }));
        char url[512] = {};
        const CMMDHANDLE md = CMatrix_StartMediaDistribute(h, "cap_desk", 1, url, sizeof url);
        QVERIFY(md);
        QCOMPARE(display(h, 1, 1, FrameSamples::picture(Qt::red)), CMATRIX_OK);
        QTRY_COMPARE(d->connectionCount(), 3); // control, distribution, display

        QCOMPARE(CMatrix_Disconnect(h), CMATRIX_OK);
        QTRY_COMPARE_WITH_TIMEOUT(d->connectionCount(), 0, scaled(3000));
        QCOMPARE(send(md, FrameSamples::picture(Qt::red)), CMATRIX_ERR_DISCONNECTED);
        QCOMPARE(display(h, 1, 1, FrameSamples::picture(Qt::red)), CMATRIX_ERR_FAILED);

        QCOMPARE(h.connect(d), CMATRIX_OK);
        QCOMPARE(send(md, FrameSamples::picture(Qt::red)), CMATRIX_ERR_DISCONNECTED);
        QCOMPARE(display(h, 1, 1, FrameSamples::picture(Qt::red)), CMATRIX_OK); // reopened on the new one
        QCOMPARE(CMatrix_StopMediaDistribute(md), CMATRIX_ERR_DISCONNECTED);
        QCOMPARE(d->snapshot().distributions.size(), size_t(1)); // the decoder was not told

        const CMMDHANDLE md2 = CMatrix_StartMediaDistribute(h, "cap_other", 2, url, sizeof url);
        QVERIFY(md2);
        QTRY_COMPARE(d->connectionCount(), 3);
        h.destroy();
        QTRY_COMPARE_WITH_TIMEOUT(d->connectionCount(), 0, scaled(3000));
        QCOMPARE(send(md2, FrameSamples::picture(Qt::red)), CMATRIX_ERR_INVALID_HANDLE);
        QCOMPARE(h.losses(), 0);
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

KVMS_TEST_CLASS(TestDistributions)
#include "TestDistributions.moc"
