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

// Near-white pixels in the middle of each screen of a cols x rows wall picture.
QVector<int> whiteInScreens(const QImage& image, int cols, int rows)
{
    QVector<int> counts;
    for (int r = 0; r < rows; ++r) {
        for (int c = 0; c < cols; ++c) {
            const int w = image.width() / cols, h = image.height() / rows;
            int n = 0;
            for (int y = r * h + h / 4; y < r * h + 3 * h / 4; ++y)
                for (int x = c * w + w / 4; x < c * w + 3 * w / 4; ++x)
                    n += qGray(image.pixel(x, y)) > 200 ? 1 : 0;
            counts.append(n);
        }
    }
    return counts;
}

} // namespace

void MediaTests::wallPictureSize_data()
{
    QTest::addColumn<int>("cols");
    QTest::addColumn<int>("rows");
    QTest::addColumn<int>("requested");
    QTest::addColumn<QSize>("size");

    QTest::newRow("2x2") << 2 << 2 << 0 << QSize(960, 540);
    QTest::newRow("3x1") << 3 << 1 << 0 << QSize(1440, 270);
    QTest::newRow("16x1, width capped") << 16 << 1 << 0 << QSize(3840, 135);
    QTest::newRow("1x16, height capped") << 1 << 16 << 0 << QSize(426, 3840);
    QTest::newRow("2x2, asked wide") << 2 << 2 << 1920 << QSize(1920, 1080);
    QTest::newRow("2x2, asked too wide") << 2 << 2 << 100000 << QSize(3840, 2160);
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

    QTest::newRow("page") << "/" << 200 << "text/html" << QByteArray("wall.png") << 0;
    QTest::newRow("page names the device") << "/" << 200 << "text/html" << QByteArray("VD00000089") << 0;
    QTest::newRow("state") << "/state.json" << 200 << "application/json" << QByteArray("\"deviceId\"") << 0;
    // A 3x1 wall: three screens of 480 by default.
    QTest::newRow("wall") << "/wall.png" << 200 << "image/png" << QByteArray("\x89PNG") << 1440;
    QTest::newRow("wall, width asked") << "/wall.png?w=600" << 200 << "image/png" << QByteArray() << 600;
    QTest::newRow("wall, too wide") << "/wall.png?w=100000" << 200 << "image/png" << QByteArray() << 3840;
    QTest::newRow("wall, too narrow") << "/wall.png?w=3" << 200 << "image/png" << QByteArray() << 64;
    QTest::newRow("wall, width not a number") << "/wall.png?w=wide" << 200 << "image/png" << QByteArray() << 1440;
    QTest::newRow("unknown") << "/admin" << 404 << "" << QByteArray() << 0;
    QTest::newRow("no writes") << "/state.json?set=1" << 200 << "application/json" << QByteArray() << 0;
}

void MediaTests::monitorRoutes()
{
    QFETCH(QString, path);
    QFETCH(int, status);
    QFETCH(QString, type);
    QFETCH(QByteArray, contains);
    QFETCH(int, width);

    vdec::VirtualDecoder* d = startDecoder(89);
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
    vdec::VirtualDecoder* d = startDecoder(90);
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

void MediaTests::wallShowsBannerAndScreenNumbers()
{
    vdec::VirtualDecoder* d = startDecoder(91);
    QVERIFY(d);
    SdkHandle h;
    QCOMPARE(h.connect(d), CMATRIX_OK);
    QCOMPARE(CMatrix_SetMatrix(h, 2, 2, "Banner"), CMATRIX_OK);
    MonitorClient monitor(d->address(), d->httpPort());
    const QColor blue(0x20, 0x40, 0xc0);
    QVERIFY(!near(at(monitor.wall(960), 0.98, 0.96), blue));

    BannerInfo_t b = banner("Short", blue.rgba());
    QCOMPARE(CMatrix_DisplayBanner(h, &b), CMATRIX_OK);
    QImage wall = monitor.wall(960);
    QVERIFY(near(at(wall, 0.98, 0.96), blue, 8)); // bottom strip, right of the text
    QVERIFY(!near(at(wall, 0.98, 0.80), blue, 8)); // above it
    // The text is drawn in it, in its colour.
    int white = 0;
    for (int x = 0; x < 200; ++x)
        white += qGray(wall.pixel(x, int(0.94 * wall.height()))) > 200 ? 1 : 0;
    QVERIFY(white > 0);

    b.show = 0;
    QCOMPARE(CMatrix_DisplayBanner(h, &b), CMATRIX_OK);
    QVERIFY(!near(at(monitor.wall(960), 0.98, 0.96), blue));

    // Screen numbers: drawn over every screen while identification is on, and only then.
    vdec::DecoderSnapshot s = d->snapshot();
    vdec::WallOverlays overlays;
    const QVector<int> plain = whiteInScreens(vdec::WallPainter::render(s, overlays, 960), 2, 2);
    overlays.identify = true;
    const QVector<int> numbered = whiteInScreens(vdec::WallPainter::render(s, overlays, 960), 2, 2);
    for (int i = 0; i < 4; ++i) {
        QCOMPARE(plain[i], 0);
        QVERIFY2(numbered[i] > 500, qPrintable(QString("screen %1: %2").arg(i + 1).arg(numbered[i])));
    }
}
