// The decoder's monitor: its routes, the state as JSON, and what the wall picture
// shows besides windows.

#include "MediaTests.h"
#include "MonitorClient.h"
#include "SdkHandle.h"

#include "core/VirtualDecoder.h"
#include "monitor/WallPainter.h"

#include <QJsonArray>
#include <QtTest>

#include <cstring>

namespace {

BannerInfo_t banner(const char* message, uint32_t back)
{
    BannerInfo_t b {};
    b.show = 1;
    std::strncpy(b.message, message, sizeof b.message - 1);
    b.x = 0;
    b.y = 28672;
    b.w = 32768;
    b.h = 4096;
    b.fontSize = 2048;
    b.fontColor = 0xffffffff;
    b.backColor = back;
    return b;
}

} // namespace

void MediaTests::wallPictureSize_data()
{
    QTest::addColumn<int>("cols");
    QTest::addColumn<int>("rows");
    QTest::addColumn<int>("requested");
    QTest::addColumn<QSize>("size");

    QTest::newRow("2x2") << 2 << 2 << 0 << QSize(960, 540);
    QTest::newRow("16x1, width capped") << 16 << 1 << 0 << QSize(3840, 135);
    QTest::newRow("2x2, asked too narrow") << 2 << 2 << 1 << QSize(64, 36);
    QTest::newRow("no grid") << 0 << 0 << 0 << QSize(480, 270);
}

// Screens stay 16:9 whatever the grid, and neither side passes 3840 pixels.
void MediaTests::wallPictureSize()
{
    QFETCH(int, cols);
    QFETCH(int, rows);
    QFETCH(int, requested);
    QFETCH(QSize, size);
    QCOMPARE(vdec::WallPainter::imageSize(cols, rows, requested), size);
}

void MediaTests::monitorRoutes_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<int>("status");
    QTest::addColumn<QString>("type");
    QTest::addColumn<QByteArray>("contains");
    QTest::addColumn<int>("width"); // of the PNG, 0: not a picture

    QTest::newRow("page names the device") << "/" << 200 << "text/html" << QByteArray("VD00000089") << 0;
    // A 3x1 wall: three screens of 480 by default.
    QTest::newRow("wall") << "/wall.png" << 200 << "image/png" << QByteArray("\x89PNG") << 1440;
    QTest::newRow("wall, too wide") << "/wall.png?w=100000" << 200 << "image/png" << QByteArray() << 3840;
    QTest::newRow("wall, width not a number") << "/wall.png?w=wide" << 200 << "image/png" << QByteArray() << 1440;
    QTest::newRow("unknown") << "/admin" << 404 << "" << QByteArray() << 0;
}

void MediaTests::monitorRoutes()
{
    QFETCH(QString, path);
    QFETCH(int, status);
    QFETCH(QString, type);
    QFETCH(QByteArray, contains);
    QFETCH(int, width);

    vdec::VirtualDecoder* d = fixture_.startDecoder(89);
    QVERIFY(d);
    QVERIFY(d->httpPort() > 0);
    SdkHandle h;
    QCOMPARE(h.connect(d), CMATRIX_OK);
    QCOMPARE(CMatrix_SetMatrix(h, 3, 1, "Row"), CMATRIX_OK);

    const MonitorClient::Reply reply = MonitorClient(d->address(), d->httpPort()).get(path);
    QCOMPARE(reply.status, status);
    QVERIFY2(reply.contentType.startsWith(type), qPrintable(reply.contentType));
    QVERIFY(reply.body.contains(contains));
    if (width) {
        const QImage image = QImage::fromData(reply.body, "PNG");
        QCOMPARE(image.width(), width);
        QCOMPARE(image.height(), width * 9 / 48); // three 16:9 screens side by side
    }
}

void MediaTests::stateJsonReflectsWall()
{
    vdec::VirtualDecoder* d = fixture_.startDecoder(90);
    QVERIFY(d);
    SdkHandle h;
    QCOMPARE(h.connect(d), CMATRIX_OK);
    QVERIFY(layOut(h, 3, 2, { window(1, 0, 0, 16384, 16384), window(2, 16384, 0, 16384, 32768) }, { 4, 1 }));
    DeviceInfo_t gate = source(1, "cam-9", 1, 3);
    std::strcpy(gate.name, "Gate");
    std::strcpy(gate.password, "secret-pw");
    const DeviceInfo_t sources[] = { gate, source(3, "rtsp-1", 3, 1, "rtsp://127.0.0.1/0") };
    QCOMPARE(CMatrix_WindowDeviceAdd(h, 1, sources, 2, true), CMATRIX_OK);
    QCOMPARE(display(h, 1, 1, FrameSamples::picture(Qt::red)), CMATRIX_OK);
    QCOMPARE(display(h, 1, 1, FrameSamples::envelope("junk")), CMATRIX_ERR_DECODE);
    const BannerInfo_t b = banner("Fire drill at noon", 0xff2040c0);
    QCOMPARE(CMatrix_DisplayBanner(h, &b), CMATRIX_OK);
    char url[512] = {};
    QVERIFY(CMatrix_StartMediaDistribute(h, "cap_desk", 4, url, sizeof url));

    MonitorClient monitor(d->address(), d->httpPort());
    const QByteArray raw = monitor.get("/state.json").body;
    QVERIFY(!raw.contains("secret-pw"));
    const QJsonObject s = monitor.state();
    QCOMPARE(s.value("deviceId").toString(), QString("VD00000090"));
    QCOMPARE(s.value("address").toString(), QString("127.0.0.90"));
    QCOMPARE(s.value("name").toString(), QString("Media"));
    QCOMPARE(s.value("grid").toObject().value("cols").toInt(), 3);
    QCOMPARE(s.value("grid").toObject().value("rows").toInt(), 2);
    QCOMPARE(s.value("clients").toInt(), 3); // control, display, distribution

    const QJsonArray windows = s.value("windows").toArray();
    QCOMPARE(windows.size(), 2);
    const QJsonObject w1 = windows.at(0).toObject();
    QCOMPARE(w1.value("id").toInt(), 1);
    QCOMPARE(w1.value("w").toInt(), 16384);
    QCOMPARE(w1.value("division").toInt(), 4);
    const QJsonArray subs = w1.value("subWindows").toArray();
    QCOMPARE(subs.size(), 4);
    const QJsonObject first = subs.at(0).toObject();
    QCOMPARE(first.value("source").toObject().value("devId").toString(), QString("cam-9"));
    QCOMPARE(first.value("source").toObject().value("name").toString(), QString("Gate"));
    QCOMPARE(first.value("source").toObject().value("protocol").toInt(), 1);
    const QJsonObject media = first.value("media").toObject();
    QCOMPARE(media.value("frames").toInt(), 2);
    QCOMPARE(media.value("decoded").toInt(), 1);
    QCOMPARE(media.value("failed").toInt(), 1);
    QCOMPARE(media.value("picture").toObject().value("width").toInt(), 320);
    QVERIFY(subs.at(1).toObject().value("source").isNull());
    QVERIFY(subs.at(1).toObject().value("media").isNull());
    QCOMPARE(
        subs.at(2).toObject().value("source").toObject().value("mainUrl").toString(), QString("rtsp://127.0.0.1/0"));
    QCOMPARE(windows.at(1).toObject().value("subWindows").toArray().size(), 1);

    const QJsonObject shown = s.value("banner").toObject();
    QCOMPARE(shown.value("show").toBool(), true);
    QCOMPARE(shown.value("message").toString(), QString("Fire drill at noon"));
    QCOMPARE(shown.value("backColor").toString(), QString("#ff2040c0"));
    const QJsonArray distributions = s.value("distributions").toArray();
    QCOMPARE(distributions.size(), 1);
    QCOMPARE(distributions.at(0).toObject().value("url").toString(), QString(url));
    QCOMPARE(distributions.at(0).toObject().value("channel").toInt(), 4);
}
