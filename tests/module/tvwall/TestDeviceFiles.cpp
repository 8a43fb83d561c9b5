// The decoder's own sources (HDMI input, USB files, streams by URL) and its audio output, through
// the worker. The page's end-to-end suite drives the ordinary HDMI and USB cases from the menu;
// here: what the menu never sends.
#include "WallRig.h"

#include "QueuedSignalSpy.h"
#include "SuiteMain.h"

#include "TestTimeout.h"
#include "WireBuilders.h"

#include <QDir>
#include <QFile>
#include <QtTest>

using namespace kvms_matrix;
using kvmstest::scaled;

namespace {

bool writeUsbFile(const vdec::VirtualDecoder* d, const QString& name)
{
    QFile file(QDir(d->config().stateDir).filePath(QStringLiteral("usb/") + name));
    return file.open(QIODevice::WriteOnly) && file.write("data") == 4;
}

enum Play { Hdmi, UsbFile, Stream };

} // namespace

class TestDeviceFiles : public QObject, public WallRig {
    Q_OBJECT

private slots:
    void initTestCase() { QVERIFY(enterWorkDirectory()); }
    void cleanup() { QVERIFY(settle()); }
    void cleanupTestCase() { QVERIFY(leaveWorkDirectory()); }
    void playInWindow_data();
    void playInWindow();
    void audioOfOneSubWindow_data();
    void audioOfOneSubWindow();
};

void TestDeviceFiles::playInWindow_data()
{
    QTest::addColumn<int>("play");
    QTest::addColumn<int>("input");
    QTest::addColumn<QString>("path");
    QTest::addColumn<int>("ret");
    QTest::addColumn<QByteArray>("devId");
    QTest::addColumn<int>("deviceType");
    // The unit's first input is played, whichever the caller names.
    QTest::newRow("HDMI input 3 asked") << int(Hdmi) << 3 << "" << CMATRIX_OK << QByteArray("hdmiinput") << 6;
    QTest::newRow("USB file, then stopped")
        << int(UsbFile) << 0 << "clip.mp4" << CMATRIX_OK << QByteArray("usbfileplay") << 7;
    QTest::newRow("missing USB file") << int(UsbFile) << 0 << "gone.mp4" << CMATRIX_ERR_FILE_NOT_FOUND << QByteArray()
                                      << 0;
    QTest::newRow("stream by URL") << int(Stream) << 0 << "rtsp://127.0.0.9/live" << CMATRIX_OK
                                   << QByteArray("rtspstream") << 9;
}

void TestDeviceFiles::playInWindow()
{
    QFETCH(int, play);
    QFETCH(int, input);
    QFETCH(QString, path);
    QFETCH(int, ret);
    QFETCH(QByteArray, devId);
    QFETCH(int, deviceType);
    const Handle h = decoderOn();
    QVERIFY(h);
    QVERIFY(writeUsbFile(decoder_, QStringLiteral("clip.mp4")));
    QCOMPARE(addCell(1, 4), CMATRIX_OK);
    MatrixSdkWorker* w = worker();

    QueuedSignalSpy shown(w, &MatrixSdkWorker::signalSetWindowSignalSourceResult);
    const MatrixWindowInfo window = windowInfo(1, 4);
    if (play == Hdmi)
        w->startPlayHdmiVideo(h, window, 2, input);
    else if (play == UsbFile)
        w->startPlayDevFile(h, window, 2, path);
    else
        w->startPlayVideoStream(h, window, 2, path);
    QVERIFY(shown.wait(scaled(5000)));
    QCOMPARE(shown.at(0).at(0).toInt(), ret);
    QCOMPARE(shown.at(0).mid(2), QVariantList({ 2, false }));
    const auto answered = shown.at(0).at(1).value<MatrixWindowInfo>();
    QCOMPARE(answered.subWindows.at(1).device.deviceType, deviceType);

    const vdec::DecoderSnapshot s = decoder_->snapshot();
    QCOMPARE(int(s.window(1)->sources.count(2)), ret == CMATRIX_OK ? 1 : 0);
    if (ret != CMATRIX_OK)
        return;
    const DeviceInfo_t& source = s.window(1)->sources.at(2);
    QCOMPARE(QByteArray(source.devId), devId);
    QCOMPARE(source.stream, 0);
    if (play != Hdmi)
        QCOMPARE(QString::fromUtf8(source.mainUrl), path);
    if (play != UsbFile)
        return;

    QueuedSignalSpy cleared(w, &MatrixSdkWorker::signalClearWindowResult);
    w->stopPlayDevFile(h, answered, 2);
    QVERIFY(cleared.wait(scaled(5000)));
    QCOMPARE(cleared.at(0), QVariantList({ CMATRIX_OK, 1, 2, 0 }));
    QCOMPARE(int(decoder_->snapshot().window(1)->sources.count(2)), 0);
}

void TestDeviceFiles::audioOfOneSubWindow_data()
{
    QTest::addColumn<bool>("enable");
    QTest::newRow("open on window 1, sub-window 2") << true;
    QTest::newRow("closed, the ids kept") << false;
}

void TestDeviceFiles::audioOfOneSubWindow()
{
    QFETCH(bool, enable);
    const Handle h = decoderOn();
    QVERIFY(h);
    QCOMPARE(addCell(1, 4), CMATRIX_OK);

    QueuedSignalSpy set(worker(), &MatrixSdkWorker::signalSetAudioOutputEnableResult);
    QueuedSignalSpy got(worker(), &MatrixSdkWorker::signalGetAudioOutputEnableResult);
    worker()->setAudioOutputEnable(h, 1, 2, 30, enable);
    worker()->getAudioOutputEnable(h);
    QVERIFY(got.wait(scaled(5000)));
    QCOMPARE(set.at(0).at(0).toInt(), CMATRIX_OK);
    const DeviceAudioInfo_t audio = got.at(0).at(0).value<DeviceAudioInfo_t>();
    QCOMPARE(QByteArray(audio.state), enable ? QByteArray("open") : QByteArray("close"));
    QCOMPARE(audio.volume, 30);
    const DeviceAudioInfo_t held = decoder_->snapshot().audio;
    QCOMPARE(QVariantList({ QByteArray(held.state), held.windowId, held.subWindowId }),
        QVariantList({ QByteArray(audio.state), 1, 2 }));

    QCOMPARE(worker()->getAudioStatusGet(1, 2, h), enable);
    QVERIFY(!worker()->getAudioStatusGet(1, 1, h) && !worker()->getAudioStatusGet(2, 2, h));
    QVERIFY(!worker()->getAudioStatusGet(1, 2, Handle()));
}

KVMS_TEST_CLASS(TestDeviceFiles)
#include "TestDeviceFiles.moc"
