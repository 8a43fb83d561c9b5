// The wall as one picture for the canvas's mimic: the SDK call and the worker task.
#include "VideoTests.h"

#include "QueuedSignalSpy.h"
#include "TestTimeout.h"

#include <QtTest>

using namespace kvms_matrix;
using kvmstest::scaled;

void VideoTest::snapshotSizes_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    QTest::addColumn<int>("expected"); // result code; 0: a JPEG of that size
    QTest::newRow("panel sized") << 400 << 225 << 0;
    QTest::newRow("not 16:9 is stretched") << 300 << 300 << 0;
    QTest::newRow("smallest") << 16 << 16 << 0;
    QTest::newRow("too small") << 15 << 100 << int(CMATRIX_ERR_INVALID_PARAM);
    QTest::newRow("too wide") << 3841 << 100 << int(CMATRIX_ERR_INVALID_PARAM);
    QTest::newRow("too tall") << 100 << 2161 << int(CMATRIX_ERR_INVALID_PARAM);
}

void VideoTest::snapshotSizes()
{
    QFETCH(int, width);
    QFETCH(int, height);
    QFETCH(int, expected);
    QVERIFY(wallOn(46, 4));
    unsigned char* jpeg = nullptr;
    const int size = CMatrix_GetWallSnapshot(*sdk_, width, height, &jpeg);
    if (expected != 0) {
        QCOMPARE(size, expected);
        QVERIFY(!jpeg);
        return;
    }
    QVERIFY(size > 0 && jpeg);
    const QImage image = QImage::fromData(jpeg, size, "JPEG");
    QCOMPARE(CMatrix_Free(*sdk_, jpeg), CMATRIX_OK);
    QCOMPARE(image.size(), QSize(width, height));
}

void VideoTest::workerFetchesTheSnapshot()
{
    const QString ip = QStringLiteral("127.0.0.52");
    QVERIFY2(cameras_.start(ip, { "Gate" }), qPrintable(cameras_.error()));
    const Handle h = wallOn(47, 4);
    QVERIFY(h);
    QCOMPARE(bind(h, withCamera(4, 1, ip, cameras_.port(), 1, 1), 0), 0);
    QTRY_VERIFY_WITH_TIMEOUT(video(1).value("shown").toInt() > 0, scaled(15000));

    QueuedSignalSpy result(worker(), &MatrixSdkWorker::signalGetWallSnapshotResult);
    worker()->getWallSnapshot(h, 640, 360);
    QVERIFY(result.wait(scaled(10000)));
    QCOMPARE(result.at(0).at(0).toInt(), 0);
    QCOMPARE(result.at(0).at(1).value<Handle>(), h);
    const QImage picture = result.at(0).at(3).value<QImage>();
    QCOMPARE(picture.size(), QSize(640, 360));
    QVERIFY(result.at(0).at(2).toByteArray().startsWith("\xff\xd8"));
    // The camera's picture fills the top left quarter: not one flat colour as an empty one is.
    const QImage quarter = picture.copy(20, 40, 280, 130).convertToFormat(QImage::Format_RGB32);
    QVERIFY(quarter.pixel(10, 10) != quarter.pixel(270, 120) || quarter.pixel(140, 60) != quarter.pixel(10, 10));

    QueuedSignalSpy refused(worker(), &MatrixSdkWorker::signalGetWallSnapshotResult);
    worker()->getWallSnapshot(Handle(), 640, 360);
    QVERIFY(refused.wait(scaled(10000)));
    QCOMPARE(refused.at(0).at(0).toInt(), -1);
    QVERIFY(refused.at(0).at(3).value<QImage>().isNull());
}
