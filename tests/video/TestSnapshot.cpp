// The wall as pictures: the monitor's moving wall, and one picture for the canvas's mimic
// (the SDK call and the worker task).
#include "VideoTests.h"

#include "QueuedSignalSpy.h"
#include "TestTimeout.h"

#include <QtTest>

#include <httplib.h>

#include <chrono>

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
    QVERIFY(wallOn(4));
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
    const Handle h = playGate(4, 1);
    QVERIFY2(h, qPrintable(failure_));

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

void VideoTest::wallMovesOnTheMonitor()
{
    const Handle h = wallOn(1);
    QVERIFY(h);
    httplib::Client client(decoder_->address().toStdString(), decoder_->httpPort());
    client.set_read_timeout(scaled(10000) / 1000, 0);
    std::string received;
    std::string contentType;
    const auto started = std::chrono::steady_clock::now();
    const auto result = client.Get(
        "/wall.mjpeg?w=320",
        [&](const httplib::Response& r) {
            contentType = r.get_header_value("Content-Type");
            return true;
        },
        [&](const char* data, size_t size) {
            received.append(data, size);
            // Four pictures are enough; ending the download ends the drawing.
            return received.size() < 64 || QByteArray::fromStdString(received).count("--wallframe") < 5;
        });
    const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - started).count();
    QCOMPARE(QString::fromStdString(contentType), QStringLiteral("multipart/x-mixed-replace; boundary=wallframe"));
    const QByteArray all = QByteArray::fromStdString(received);
    const int start = all.indexOf("\r\n\r\n") + 4;
    const int end = all.indexOf("\r\n--wallframe", start);
    QVERIFY(start > 4 && end > start);
    const QImage first = QImage::fromData(all.mid(start, end - start), "JPEG");
    QCOMPARE(first.width(), 320);
    // Four intervals at ten pictures a second at most.
    QVERIFY2(seconds >= 0.35, qPrintable(QString::number(seconds)));
    Q_UNUSED(result);
}
