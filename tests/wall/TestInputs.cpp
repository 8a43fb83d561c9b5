// HDMI inputs and files on the USB stick, played in sub-windows.

#include "WallRecords.h"
#include "WallSdk.h"
#include "WallTests.h"
#include "state/UsbStorage.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QtTest>

using namespace wallrecords;

namespace {

bool writeFile(const QString& path, int size)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(QByteArray(size, 'x')) == size;
}

} // namespace

void WallTests::hdmiStatusAndPlay()
{
    WallSdk sdk;
    vdec::VirtualDecoder* d = fixture_.startDecoder(71, [](vdec::DecoderConfig& c) {
        c.hdmiInputs = { false, true, true };
    });
    QVERIFY(d);
    QCOMPARE(sdk.connect(d), CMATRIX_OK);
    const CMHANDLE h = sdk.handle();
    QCOMPARE(CMatrix_SetMatrix(h, 3, 2, "Six"), CMATRIX_OK);
    HdmiStatus_t status {};
    QCOMPARE(CMatrix_GetHdmiIn_OutStatus(h, &status), CMATRIX_OK);
    QCOMPARE(status.inputCount, 3);
    QCOMPARE(QVector<int>({ status.inputConnected[0], status.inputConnected[1], status.inputConnected[2] }),
        QVector<int>({ 0, 1, 1 }));
    QCOMPARE(status.outputCount, 6);
    QCOMPARE(status.outputConnected[5], 1);
    QCOMPARE(status.outputConnected[6], 0);

    const MatrixWindow_t w = window(1, 0, 0, 10922, 16384);
    QCOMPARE(CMatrix_WindowAdd(h, &w, 1, true), CMATRIX_OK);
    QCOMPARE(CMatrix_WindowSetDivision(h, 1, 4), CMATRIX_OK);
    const DeviceInfo_t other = source(1, "cam-1");
    QCOMPARE(CMatrix_WindowDeviceAdd(h, 1, &other, 1, true), CMATRIX_OK);
    const WindowSlot_t slot { 1, 2 };
    QCOMPARE(CMatrix_WindowPlayHdmiIn(h, &slot, 2), CMATRIX_OK);

    const vdec::DecoderSnapshot s = d->snapshot();
    const DeviceInfo_t& bound = s.window(1)->sources.at(2);
    QCOMPARE(QByteArray(bound.devId), QByteArray("hdmiinput"));
    QCOMPARE(bound.protocol, 0);
    QCOMPARE(bound.channel, 0);
    QCOMPARE(bound.stream, 2);
    QCOMPARE(bound.subWindow, 2);
    QCOMPARE(QByteArray(s.window(1)->sources.at(1).devId), QByteArray("cam-1")); // the others stay
}

void WallTests::usbFileListAndPlay()
{
    WallSdk sdk;
    vdec::VirtualDecoder* d = standardWall(72, sdk);
    QVERIFY(d);
    const CMHANDLE h = sdk.handle();
    const QString stick = vdec::UsbStorage::folderOf(d->config().stateDir);
    QVERIFY(QFileInfo(stick + "/System Volume Information").isDir());
    QVERIFY(writeFile(stick + "/Clip One.MP4", 2049));
    QVERIFY(QDir(stick).mkdir("films"));
    QVERIFY(writeFile(stick + "/films/deep.mkv", 10));
    QVERIFY(writeFile(stick + "/" + QString(64, 'n') + ".jpg", 1)); // too long a name for the record

    DevPlayFile_t* files = nullptr;
    const int count = CMatrix_GetFileList(h, &files);
    QCOMPARE(count, 3);
    // Folders first, then files, by name.
    QCOMPARE(QByteArray(files[0].fileName), QByteArray("films"));
    QCOMPARE(files[0].isDirectory, 1);
    QCOMPARE(QByteArray(files[1].fileName), QByteArray("System Volume Information"));
    QCOMPARE(files[1].isDirectory, 1);
    const DevPlayFile_t& clip = files[2];
    QCOMPARE(QByteArray(clip.fileName), QByteArray("Clip One.MP4"));
    QCOMPARE(clip.index, 2);
    QCOMPARE(clip.isDirectory, 0);
    QCOMPARE(clip.sizeKiB, 3);
    QCOMPARE(QByteArray(clip.format), QByteArray("mp4"));
    QVERIFY(QRegularExpression("^\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d$").match(clip.modified).hasMatch());
    QCOMPARE(CMatrix_Free(h, files), CMATRIX_OK);

    const WindowSlot_t slot { 1, 4 };
    QCOMPARE(CMatrix_WindowPlayFile(h, &slot, "Clip One.MP4"), CMATRIX_OK);
    const WindowSlot_t single { 3, 1 };
    QCOMPARE(CMatrix_WindowPlayFile(h, &single, "/films/deep.mkv"), CMATRIX_OK);
    const vdec::DecoderSnapshot s = d->snapshot();
    const DeviceInfo_t& played = s.window(1)->sources.at(4);
    QCOMPARE(QByteArray(played.devId), QByteArray("usbfileplay"));
    QCOMPARE(QByteArray(played.mainUrl), QByteArray("Clip One.MP4"));
    QCOMPARE(played.protocol, 0);
    QCOMPARE(played.channel, 0);
    QCOMPARE(QByteArray(s.window(3)->sources.at(1).mainUrl), QByteArray("/films/deep.mkv"));
    QCOMPARE(s.window(1)->sources.size(), size_t(3)); // cam-1 and cam-3 stay

    // A link on the stick that leads off it is refused like a path that does.
    QVERIFY(writeFile(d->config().stateDir + "/outside.mp4", 1));
    QVERIFY(QFile::link(d->config().stateDir + "/outside.mp4", stick + "/link.mp4"));
    QCOMPARE(CMatrix_WindowPlayFile(h, &slot, "link.mp4"), CMATRIX_ERR_INVALID_PARAM);
    QCOMPARE(CMatrix_WindowPlayFile(h, &slot, "films/../../outside.mp4"), CMATRIX_ERR_INVALID_PARAM);
    QCOMPARE(QByteArray(d->snapshot().window(1)->sources.at(4).mainUrl), QByteArray("Clip One.MP4"));
}
