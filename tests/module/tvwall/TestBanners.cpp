// The banner through the worker, the decoder's record and the "bannerinfo" mirror.
#include "WallRig.h"

#include "QueuedSignalSpy.h"
#include "SuiteMain.h"

#include "TestTimeout.h"
#include "TvWallIni.h"

#include <QtTest>

#include <cstring>

using namespace kvms_matrix;
using kvmstest::scaled;

namespace {

MatrixBannerInfo bannerOf(const QString& message, int h, int fontPercent)
{
    MatrixBannerInfo banner;
    banner.message = message;
    banner.x = 0;
    banner.y = 30000;
    banner.w = 16384;
    banner.h = h;
    banner.direction = 1;
    banner.speed = 3;
    banner.fontPercent = fontPercent;
    banner.fontColor = QColor(16, 32, 48);
    banner.backColor = QColor(0, 0, 0, 128);
    return banner;
}

int setBannerThroughWorker(const WallRig::Handle& h, const MatrixBannerInfo& banner)
{
    QueuedSignalSpy set(WallRig::worker(), &MatrixSdkWorker::signalSetBannerResult);
    WallRig::worker()->setBanner(h, banner);
    return set.wait(scaled(5000)) ? set.at(0).at(0).toInt() : 1;
}

} // namespace

class TestBanners : public QObject, public WallRig {
    Q_OBJECT

private slots:
    void initTestCase() { QVERIFY(enterWorkDirectory()); }
    void cleanup() { QVERIFY(settle()); }
    void cleanupTestCase() { QVERIFY(leaveWorkDirectory()); }
    void bannerFontSize_data();
    void bannerFontSize();
    void decoderBannerMirror_data();
    void decoderBannerMirror();
};

void TestBanners::bannerFontSize_data()
{
    QTest::addColumn<QString>("message");
    QTest::addColumn<int>("height");
    QTest::addColumn<int>("percent");
    QTest::addColumn<int>("fontSize");
    QTest::addColumn<QByteArray>("stored");
    QTest::newRow("height 2000 at 50") << "Welcome" << 2000 << 50 << 1000 << QByteArray("Welcome");
    QTest::newRow("truncated both ways") << "x" << 333 << 33 << 109 << QByteArray("x");
    QTest::newRow("message cut to its field") << QString(2000, 'm') << 1000 << 10 << 100 << QByteArray(1023, 'm');
}

void TestBanners::bannerFontSize()
{
    QFETCH(QString, message);
    QFETCH(int, height);
    QFETCH(int, percent);
    QFETCH(int, fontSize);
    QFETCH(QByteArray, stored);
    const Handle h = decoderOn();
    QVERIFY(h);

    QCOMPARE(setBannerThroughWorker(h, bannerOf(message, height, percent)), CMATRIX_OK);
    const BannerInfo_t sent = decoder_->snapshot().banner;
    QCOMPARE(QList<int>({ sent.show, sent.fontSize, sent.h, sent.y }), QList<int>({ 1, fontSize, height, 30000 }));
    QCOMPARE(QList<uint32_t>({ sent.fontColor, sent.backColor }), QList<uint32_t>({ 0xFF102030u, 0x80000000u }));
    QCOMPARE(QByteArray(sent.message), stored);
    const TvWallIni::Banner ini = TvWallIni::readBanner();
    QCOMPARE(QVariantList({ ini.fontPercent, ini.w, ini.fontColor.name() }), QVariantList({ percent, 16384, "#102030" }));
}

void TestBanners::decoderBannerMirror_data()
{
    QTest::addColumn<int>("show");
    QTest::addColumn<int>("height");
    QTest::addColumn<int>("fontSize");
    QTest::addColumn<int>("storedWidth");
    QTest::addColumn<int>("storedPercent");
    QTest::newRow("shown") << 1 << 200 << 100 << 500 << 50;
    QTest::newRow("percentage truncated") << 1 << 333 << 109 << 500 << 32;
    QTest::newRow("height 0 keeps the stored percentage") << 1 << 0 << 100 << 500 << 40;
    QTest::newRow("hidden: width 0, the rest kept") << 0 << 200 << 50 << 0 << 25;
}

void TestBanners::decoderBannerMirror()
{
    QFETCH(int, show);
    QFETCH(int, height);
    QFETCH(int, fontSize);
    QFETCH(int, storedWidth);
    QFETCH(int, storedPercent);
    TvWallIni::Banner earlier;
    earlier.fontPercent = 40;
    TvWallIni::writeBanner(earlier);

    BannerInfo_t record;
    std::memset(&record, 0, sizeof record);
    record.show = uint8_t(show);
    std::strcpy(record.message, "Hello");
    record.x = 100;
    record.y = 7;
    record.w = 500;
    record.h = height;
    record.fontSize = fontSize;
    record.direction = 1;
    record.speed = 3;
    record.fontColor = 0x80FF0000u;
    record.backColor = 0xFF0000FFu;
    MatrixSdkWorker::mirrorDecoderBanner(record);

    const MatrixBannerInfo ini = worker()->getBanner(Handle()); // the forms read the mirror
    QCOMPARE(QList<int>({ ini.w, ini.fontPercent, ini.x, ini.y, ini.h, ini.direction, ini.speed }),
        QList<int>({ storedWidth, storedPercent, 100, 7, height, 1, 3 }));
    QCOMPARE(QStringList({ ini.message, ini.fontColor.name(), ini.backColor.name() }),
        QStringList({ "Hello", "#ff0000", "#0000ff" }));
}

KVMS_TEST_CLASS(TestBanners)
#include "TestBanners.moc"
