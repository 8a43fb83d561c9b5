// The decoder's own sources (HDMI input, USB files, streams by URL), its file list, screen
// colours, audio output and HDMI connectors, through the worker.
#include "RawWall.h"
#include "WallRig.h"

#include "QueuedSignalSpy.h"
#include "SignalRecorder.h"
#include "SuiteMain.h"

#include "TestTimeout.h"

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
    void fileListLeavesOutSystemFolder();
    void playInWindow_data();
    void playInWindow();
    void screenColour_data();
    void screenColour();
    void audioOfOneSubWindow_data();
    void audioOfOneSubWindow();
    void hdmiConnectors();
};

void TestDeviceFiles::fileListLeavesOutSystemFolder()
{
    vdec::VirtualDecoder* d = startDecoder();
    QVERIFY(d);
    QVERIFY(writeUsbFile(d, QStringLiteral("b.mp4")));
    QVERIFY(writeUsbFile(d, QStringLiteral("a.jpg")));
    RawWall raw(d);
    QVERIFY(raw.ok());
    DevPlayFile_t* all = nullptr;
    QCOMPARE(CMatrix_GetFileList(raw.handle(), &all), 3); // the stick as the decoder lists it
    CMatrix_Free(raw.handle(), all);
    const Handle h = connectWorker(d);
    QVERIFY(h);

    QueuedSignalSpy listed(worker(), &MatrixSdkWorker::signalGetDevPlayFileResult);
    worker()->getDevPlayFileList(h, 3, 2, 1);
    QVERIFY(listed.wait(scaled(5000)));
    const auto files = listed.at(0).at(0).value<QList<DevPlayFile_t>>();
    QStringList names;
    for (const DevPlayFile_t& f : files)
        names.append(QString::fromUtf8(f.fileName));
    QCOMPARE(names, QStringList({ "a.jpg", "b.mp4" }));
    QCOMPARE(listed.at(0).at(1).toInt(), 3);
    QCOMPARE(listed.at(0).at(2).toInt(), 2);
    QCOMPARE(listed.at(0).at(3).toInt(), 1);
}

void TestDeviceFiles::playInWindow_data()
{
    QTest::addColumn<int>("play");
    QTest::addColumn<int>("input");
    QTest::addColumn<QString>("path");
    QTest::addColumn<int>("ret");
    QTest::addColumn<QByteArray>("devId");
    QTest::addColumn<int>("stream");
    QTest::addColumn<int>("deviceType");
    // The unit's first input is played, whichever the caller names.
    QTest::newRow("HDMI input 3 asked") << int(Hdmi) << 3 << "" << CMATRIX_OK << QByteArray("hdmiinput") << 0 << 6;
    QTest::newRow("USB file") << int(UsbFile) << 0 << "clip.mp4" << CMATRIX_OK << QByteArray("usbfileplay") << 0 << 7;
    QTest::newRow("missing USB file") << int(UsbFile) << 0 << "gone.mp4" << CMATRIX_ERR_FILE_NOT_FOUND << QByteArray()
                                      << 0 << 0;
    QTest::newRow("stream by URL") << int(Stream) << 0 << "rtsp://127.0.0.9/live" << CMATRIX_OK
                                   << QByteArray("rtspstream") << 0 << 9;
}

void TestDeviceFiles::playInWindow()
{
    QFETCH(int, play);
    QFETCH(int, input);
    QFETCH(QString, path);
    QFETCH(int, ret);
    QFETCH(QByteArray, devId);
    QFETCH(int, stream);
    QFETCH(int, deviceType);
    vdec::VirtualDecoder* d = startDecoder();
    QVERIFY(d);
    QVERIFY(writeUsbFile(d, QStringLiteral("clip.mp4")));
    RawWall raw(d);
    QVERIFY(raw.ok());
    QCOMPARE(raw.addWindow(1, 4), CMATRIX_OK);
    const Handle h = connectWorker(d);
    QVERIFY(h);
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
    QCOMPARE(shown.at(0).at(2).toInt(), 2);
    QCOMPARE(shown.at(0).at(3).toBool(), false);
    const auto answered = shown.at(0).at(1).value<MatrixWindowInfo>();
    QCOMPARE(answered.subWindows.at(1).device.deviceType, deviceType);

    const vdec::DecoderSnapshot s = d->snapshot();
    const vdec::Window* onWall = s.window(1);
    QCOMPARE(int(onWall->sources.count(2)), ret == CMATRIX_OK ? 1 : 0);
    if (ret != CMATRIX_OK)
        return;
    const DeviceInfo_t& source = onWall->sources.at(2);
    QCOMPARE(QByteArray(source.devId), devId);
    QCOMPARE(source.stream, stream);
    if (play != Hdmi)
        QCOMPARE(QString::fromUtf8(source.mainUrl), path);
    if (play != UsbFile)
        return;

    QueuedSignalSpy cleared(w, &MatrixSdkWorker::signalClearWindowResult);
    w->stopPlayDevFile(h, answered, 2);
    QVERIFY(cleared.wait(scaled(5000)));
    QCOMPARE(cleared.at(0), QVariantList({ CMATRIX_OK, 1, 2, 0 }));
    QCOMPARE(int(d->snapshot().window(1)->sources.count(2)), 0);
}

void TestDeviceFiles::screenColour_data()
{
    QTest::addColumn<int>("col");
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("ret");
    QTest::newRow("second column, first row") << 1 << 0 << CMATRIX_OK;
    QTest::newRow("outside the 2 x 2 grid") << 2 << 0 << CMATRIX_ERR_INVALID_PARAM;
}

void TestDeviceFiles::screenColour()
{
    QFETCH(int, col);
    QFETCH(int, row);
    QFETCH(int, ret);
    vdec::VirtualDecoder* d = startDecoder();
    QVERIFY(d);
    const Handle h = connectWorker(d);
    QVERIFY(h);
    ScreenColor colour {};
    colour.brightness = 10;
    colour.contrast = 20;
    colour.saturation = 30;
    colour.hue = 40;

    QueuedSignalSpy set(worker(), &MatrixSdkWorker::signalMatrixSetScreenColorResult);
    QueuedSignalSpy got(worker(), &MatrixSdkWorker::signalMatrixGetScreenColorResult);
    worker()->setMatrixScreenColor(h, col, row, colour);
    worker()->getMatrixScreenColor(h, col, row);
    QVERIFY(got.wait(scaled(5000)));
    QCOMPARE(set.at(0).at(0).toInt(), ret);
    const ScreenColor back = got.at(0).at(0).value<ScreenColor>();
    const ScreenColor expected = ret == CMATRIX_OK ? colour : ScreenColor {};
    QCOMPARE(QByteArray(reinterpret_cast<const char*>(&back), sizeof back),
        QByteArray(reinterpret_cast<const char*>(&expected), sizeof expected));
    // Stored for that screen only: columns and rows are not swapped on the way.
    const auto stored = d->snapshot().screenColors;
    QCOMPARE(int(stored.count({ col, row })), ret == CMATRIX_OK ? 1 : 0);
    QCOMPARE(int(stored.size()), ret == CMATRIX_OK ? 1 : 0);
}

void TestDeviceFiles::audioOfOneSubWindow_data()
{
    QTest::addColumn<bool>("enable");
    QTest::addColumn<bool>("sub2Plays");
    QTest::newRow("open on window 1, sub-window 2") << true << true;
    QTest::newRow("closed, the ids kept") << false << false;
}

void TestDeviceFiles::audioOfOneSubWindow()
{
    QFETCH(bool, enable);
    QFETCH(bool, sub2Plays);
    vdec::VirtualDecoder* d = startDecoder();
    QVERIFY(d);
    RawWall raw(d);
    QVERIFY(raw.ok());
    QCOMPARE(raw.addWindow(1, 4), CMATRIX_OK);
    const Handle h = connectWorker(d);
    QVERIFY(h);

    QueuedSignalSpy set(worker(), &MatrixSdkWorker::signalSetAudioOutputEnableResult);
    QueuedSignalSpy got(worker(), &MatrixSdkWorker::signalGetAudioOutputEnableResult);
    worker()->setAudioOutputEnable(h, 1, 2, 30, enable);
    worker()->getAudioOutputEnable(h);
    QVERIFY(got.wait(scaled(5000)));
    QCOMPARE(set.at(0).at(0).toInt(), CMATRIX_OK);
    const DeviceAudioInfo_t audio = got.at(0).at(0).value<DeviceAudioInfo_t>();
    QCOMPARE(QByteArray(audio.state), enable ? QByteArray("open") : QByteArray("close"));
    QCOMPARE(audio.volume, 30);
    QCOMPARE(QByteArray(d->snapshot().audio.state), QByteArray(audio.state));
    QCOMPARE(d->snapshot().audio.windowId, 1);
    QCOMPARE(d->snapshot().audio.subWindowId, 2);

    QCOMPARE(worker()->getAudioStatusGet(1, 2, h), sub2Plays);
    QCOMPARE(worker()->getAudioStatusGet(1, 1, h), false);
    QCOMPARE(worker()->getAudioStatusGet(2, 2, h), false);
    QCOMPARE(worker()->getAudioStatusGet(1, 2, Handle()), false);
}

void TestDeviceFiles::hdmiConnectors()
{
    vdec::VirtualDecoder* d = startDecoder([](vdec::DecoderConfig& c) { c.hdmiInputs = { false, true, true }; });
    QVERIFY(d);
    const Handle h = connectWorker(d);
    QVERIFY(h);
    QueuedSignalSpy status(worker(), &MatrixSdkWorker::signalDevStatusResult);
    worker()->refreshHDMIStatus(h);
    worker()->refreshHDMIStatus(Handle());
    QTRY_COMPARE_WITH_TIMEOUT(status.count(), 2, scaled(5000));
    // Counts, and masks of the connectors with a cable in: inputs 1 and 2, all four outputs.
    QCOMPARE(status.at(0), QVariantList({ 3, 0b110, 4, 0b1111 }));
    QCOMPARE(status.at(1), QVariantList({ CMATRIX_ERR_FAILED, 0, CMATRIX_ERR_FAILED, 0 }));
}

KVMS_TEST_CLASS(TestDeviceFiles)
#include "TestDeviceFiles.moc"
