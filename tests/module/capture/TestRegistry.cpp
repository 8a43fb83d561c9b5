// The media-distribution registry: which SDK call carries a replayed frame, and removeMdHandle.
#include "CaptureRig.h"
#include "SuiteMain.h"

#include "QueuedSignalSpy.h"
#include "SdkCallTap.h"
#include "TestTimeout.h"

#include "MessageType.h"
#include "core/VirtualDecoder.h"

#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtTest>

using kvms_matrix::MediaDistributeEntry;
using kvms_matrix::VideoStreamInfo;
using kvmstest::scaled;

namespace {

// Waits until the worker has run everything queued before this call.
bool drained(kvms_matrix::MatrixSdkWorker* w)
{
    QueuedSignalSpy done(w, &kvms_matrix::MatrixSdkWorker::signalGetSceneInfoResult);
    w->getScene({});
    return done.wait(kvmstest::scaled(5000));
}

CMMDHANDLE startDistribution(const CaptureRig::Handle& h, const char* source, int channel)
{
    char url[512] = {};
    return CMatrix_StartMediaDistribute(h->handle(), source, channel, url, int(sizeof url));
}

int sendKeyFrame(const CaptureRig::Handle& h, int windowId, int channel)
{
    VideoStreamInfo info;
    info.width = 704;
    info.height = 576;
    info.frameRateNum = 25;
    info.frameRateDen = 1;
    char data[100] = { 1, 2, 3 };
    return CaptureRig::worker()->sendDeviceDisplayFrame(h, windowId, channel, &info, data, int(sizeof data), 1);
}

quint64 distributionFrames(const vdec::VirtualDecoder* d, const QString& source)
{
    for (const vdec::MediaDistribution& m : d->snapshot().distributions) {
        if (m.sourceName == source)
            return m.frames;
    }
    return 0;
}

CaptureRig::Handle rawConnection(const vdec::VirtualDecoder* d)
{
    CaptureRig::Handle handle(new kvms_matrix::CSharedHandle(CMatrix_Create()));
    handle->setIp(d->address());
    const int rc = CMatrix_Connect(
        handle->handle(), d->address().toLatin1().constData(), d->port(), "admin", "admin123", scaled(3000));
    return rc == CMATRIX_OK ? handle : CaptureRig::Handle();
}

} // namespace

class TestRegistry : public QObject {
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

    void registryChoosesTheCall_data()
    {
        QTest::addColumn<QPoint>("entryKey"); // (window id, channel)
        QTest::addColumn<bool>("withHandle"); // the entry holds the distribution's handle, or none
        QTest::addColumn<bool>("distributed");

        QTest::newRow("entry under the frame's key") << QPoint(5, 2) << true << true;
        // The entry decides, not its handle: the SDK refuses the null handle, nothing is shown.
        QTest::newRow("entry without a handle") << QPoint(5, 2) << false << true;
        QTest::newRow("entry for another channel") << QPoint(5, 3) << true << false;
        QTest::newRow("entry for another window") << QPoint(4, 2) << true << false;
    }

    // A frame for window 5, channel 2 goes through the distribution registered under (5, 2), and
    // straight to the sub-window otherwise.
    void registryChoosesTheCall()
    {
        QFETCH(QPoint, entryKey);
        QFETCH(bool, withHandle);
        QFETCH(bool, distributed);

        vdec::VirtualDecoder* d = rig_.startDecoder();
        QVERIFY(d);
        const CaptureRig::Handle h = rig_.connect(d);
        QVERIFY(h);
        QVERIFY(CaptureRig::layOut(h, 5, 4));
        const CMMDHANDLE md = startDistribution(h, "rec_registry", 2);
        QVERIFY(md);
        const CMMDHANDLE entryHandle = withHandle ? md : nullptr;
        CaptureRig::worker()->addMdHandle(entryKey.x(), entryKey.y(), MediaDistributeEntry { entryHandle, 5, 2, 0 });
        SdkCallTap::clear();

        QCOMPARE(sendKeyFrame(h, 5, 2), withHandle ? CMATRIX_OK : CMATRIX_ERR_INVALID_HANDLE);

        QCOMPARE(SdkCallTap::count(), 1);
        const SdkCall call = SdkCallTap::calls().first();
        if (distributed) {
            QCOMPARE(call.function, SdkCall::SendMediaFrame);
            QCOMPARE(call.handle, entryHandle);
            QTRY_COMPARE_WITH_TIMEOUT(distributionFrames(d, "rec_registry"), withHandle ? 1u : 0u, scaled(3000));
            QVERIFY(!d->snapshot().mediaOf(5, 2));
        } else {
            QCOMPARE(call.function, SdkCall::DisplayFrame);
            QCOMPARE(call.handle, h->handle());
            QCOMPARE(call.windowId, 5);
            QCOMPARE(call.channel, 2);
            QVERIFY(d->snapshot().mediaOf(5, 2));
            QCOMPARE(distributionFrames(d, "rec_registry"), 0u);
        }
        if (!withHandle)
            QCOMPARE(CMatrix_StopMediaDistribute(md), CMATRIX_OK);
    }

    void removeMdHandle_data()
    {
        QTest::addColumn<int>("subWindowId");
        QTest::addColumn<int>("windowType");
        QTest::addColumn<bool>("registered"); // the worker's own connection, or one it does not know
        QTest::addColumn<int>("refusal"); // the decoder's answer to the stop, 0: it agrees
        QTest::addColumn<bool>("withHandle"); // the entry holds the distribution's handle, or none
        QTest::addColumn<bool>("stopped");

        QTest::newRow("match") << 2 << 1 << true << 0 << true << true;
        QTest::newRow("decoder refuses") << 2 << 1 << true << int(CMATRIX_ERR_BUSY) << true << true;
        QTest::newRow("entry without a handle") << 2 << 1 << true << 0 << false << true;
        QTest::newRow("other sub-window") << 3 << 1 << true << 0 << true << false;
        QTest::newRow("other window type") << 2 << 0 << true << 0 << true << false;
        QTest::newRow("unknown connection") << 2 << 1 << false << 0 << true << false;
    }

    // A match is stopped, logged and forgotten, even when the decoder refuses; anything else
    // calls nothing and logs nothing.
    void removeMdHandle()
    {
        QFETCH(int, subWindowId);
        QFETCH(int, windowType);
        QFETCH(bool, registered);
        QFETCH(int, refusal);
        QFETCH(bool, withHandle);
        QFETCH(bool, stopped);

        vdec::VirtualDecoder* d = rig_.startDecoder();
        QVERIFY(d);
        const CaptureRig::Handle h = rig_.connect(d);
        QVERIFY(h);
        const CaptureRig::Handle other = registered ? h : rawConnection(d);
        QVERIFY(other);
        const CMMDHANDLE md = startDistribution(h, "cap_remove", 7);
        QVERIFY(md);
        kvms_matrix::MatrixSdkWorker* w = CaptureRig::worker();
        const CMMDHANDLE entryHandle = withHandle ? md : nullptr;
        w->addMdHandle(5, 7, MediaDistributeEntry { entryHandle, 5, 2, 1 });
        if (refusal)
            d->faults().failNext(cmatrix::wire::MessageType::StopMediaDistribute, refusal);
        SdkCallTap::clear();
        const qint64 logBefore = rig_.logSize();

        w->removeMdHandle(other, 5, subWindowId, windowType);
        QVERIFY(drained(w));

        const QStringList lines = rig_.logLinesSince(logBefore);
        if (!stopped) {
            QCOMPARE(SdkCallTap::count(), 0);
            QCOMPARE(lines, QStringList());
            QCOMPARE(w->mdRegistry().size(), size_t(1));
            return;
        }
        QCOMPARE(SdkCallTap::count(), 1);
        const SdkCall call = SdkCallTap::calls().first();
        QCOMPARE(call.function, SdkCall::StopMediaDistribute);
        QCOMPARE(call.handle, entryHandle);
        const int result = withHandle ? refusal : CMATRIX_ERR_INVALID_HANDLE;
        QCOMPARE(call.result, result);
        QCOMPARE(lines.size(), 1);
        const QRegularExpression line(QStringLiteral("^\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d\\.\\d{3} \\{ funcName "
                                                     "= CMatrix_StopMediaDistribute , ret = %1 , "
                                                     "time = \\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d \\}$")
                                          .arg(result));
        QVERIFY2(line.match(lines.first()).hasMatch(), qPrintable(lines.first()));
        QVERIFY(w->mdRegistry().empty());
        if (!withHandle)
            QCOMPARE(CMatrix_StopMediaDistribute(md), CMATRIX_OK);
    }

    // Two entries feed the same window: the one under the smaller key goes first.
    void removeMdHandleTakesTheFirstMatchInKeyOrder()
    {
        vdec::VirtualDecoder* d = rig_.startDecoder();
        QVERIFY(d);
        const CaptureRig::Handle h = rig_.connect(d);
        QVERIFY(h);
        const CMMDHANDLE later = startDistribution(h, "cap_later", 1);
        const CMMDHANDLE earlier = startDistribution(h, "cap_earlier", 9);
        QVERIFY(later && earlier);
        kvms_matrix::MatrixSdkWorker* w = CaptureRig::worker();
        w->addMdHandle(7, 1, MediaDistributeEntry { later, 3, 1, 0 });
        w->addMdHandle(2, 9, MediaDistributeEntry { earlier, 3, 1, 0 });
        SdkCallTap::clear();

        w->removeMdHandle(h, 3, 1, 0);
        QVERIFY(drained(w));
        QCOMPARE(SdkCallTap::count(), 1);
        QCOMPARE(SdkCallTap::calls().first().handle, earlier);
        QCOMPARE(w->mdRegistry().size(), size_t(1));
        QCOMPARE(w->mdRegistry().begin()->first, std::make_pair(7, 1));

        w->removeMdHandle(h, 3, 1, 0);
        QVERIFY(drained(w));
        QCOMPARE(SdkCallTap::calls().last().handle, later);
        QVERIFY(w->mdRegistry().empty());
    }

    // The caller returns before the decoder answers the stop: it is carried out on the worker thread.
    void removeMdHandleDoesNotWaitForTheDecoder()
    {
        vdec::VirtualDecoder* d = rig_.startDecoder();
        QVERIFY(d);
        const CaptureRig::Handle h = rig_.connect(d);
        QVERIFY(h);
        const CMMDHANDLE md = startDistribution(h, "cap_slow", 4);
        QVERIFY(md);
        kvms_matrix::MatrixSdkWorker* w = CaptureRig::worker();
        w->addMdHandle(6, 4, MediaDistributeEntry { md, 6, 1, 0 });
        d->faults().neverAnswer(cmatrix::wire::MessageType::StopMediaDistribute);

        w->removeMdHandle(h, 6, 1, 0);
        QCOMPARE(w->mdRegistry().size(), size_t(1)); // still waiting on the worker thread
        QTRY_VERIFY_WITH_TIMEOUT(w->mdRegistry().empty(), kvmstest::scaled(5000)); // the call timed out
    }
};

KVMS_TEST_CLASS(TestRegistry)
#include "TestRegistry.moc"
