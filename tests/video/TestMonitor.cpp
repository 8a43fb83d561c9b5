// The monitor's moving wall.
#include "VideoTests.h"

#include "TestTimeout.h"

#include <QImage>
#include <QtTest>

#include <httplib.h>

#include <chrono>

using kvmstest::scaled;

void VideoTest::wallMovesOnTheMonitor()
{
    const Handle h = wallOn(45, 1);
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
