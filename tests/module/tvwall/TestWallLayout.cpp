// A new layout through the worker, and read back.
#include "WallRig.h"

#include "QueuedSignalSpy.h"
#include "TestSuiteMain.h"

#include "TestTimeout.h"
#include "WireBuilders.h"

#include <QSettings>
#include <QtTest>

using namespace kvms_matrix;
using kvmstest::scaled;

namespace {

MatrixInfo screensOf(const vdec::VirtualDecoder* d, const QList<int>& positions)
{
    MatrixInfo entry;
    entry.ip = d->address();
    for (int i = 0; i < positions.size(); ++i)
        entry.screenList.append({ d->address() + QStringLiteral("-%1").arg(i + 1), i, 0, positions[i] });
    return entry;
}

} // namespace

class TestWallLayout : public QObject, public WallRig {
    Q_OBJECT

private slots:
    void initTestCase() { QVERIFY(enterWorkDirectory()); }
    void cleanup() { QVERIFY(settle()); }
    void cleanupTestCase() { QVERIFY(leaveWorkDirectory()); }
    void newLayoutStartsCleanAndReadsBack();
    void layoutWithinWhatTheDecoderHolds_data();
    void layoutWithinWhatTheDecoderHolds();
};

void TestWallLayout::newLayoutStartsCleanAndReadsBack()
{
    const Handle h = wallOn(2, 2);
    vdec::VirtualDecoder* main = decoder_;
    vdec::VirtualDecoder* second = startDecoder();
    QVERIFY(h && second && connectWorker(second));
    SchemeInfo_t scheme {};
    scheme.id = 3;
    scheme.kind = 4;
    scheme.interval = 5;
    kvmstest::setText(scheme.name, "Gates");
    BannerInfo_t banner {};
    banner.show = 1;
    banner.w = banner.h = 4000;
    banner.fontSize = 2000;
    kvmstest::setText(banner.message, "Closing at six");
    QCOMPARE(CMatrix_SceneCreate(*sdk_, 1, "Day"), CMATRIX_OK);
    QCOMPARE(CMatrix_SchemeSet(*sdk_, &scheme), CMATRIX_OK);
    QCOMPARE(CMatrix_DisplayBanner(*sdk_, &banner), CMATRIX_OK);

    const QList<MatrixInfo> screens { screensOf(main, { 0, 1 }), screensOf(second, { 5 }) };
    QueuedSignalSpy laid(worker(), &MatrixSdkWorker::signalSetLayoutResult);
    worker()->setLayout(QStringLiteral("Lobby"), 0, 2, 3, screens, main->address());
    QVERIFY(laid.wait(scaled(10000)));
    QCOMPARE(laid.at(0).at(0).toInt(), CMATRIX_OK);

    const vdec::DecoderSnapshot s = main->snapshot();
    QCOMPARE(s.name, QStringLiteral("Lobby"));
    QCOMPARE(QList<int>({ s.cols, s.rows, int(s.windows.size()) }), QList<int>({ 3, 2, 6 }));
    QVERIFY(s.scenes.empty() && s.schemes.empty());
    QCOMPARE(s.banner.show, uint8_t(0));
    for (const vdec::Window& w : s.windows) {
        const int row = int(w.id - 1) / 3;
        const int col = int(w.id - 1) % 3;
        QCOMPARE(QList<int>({ w.x, w.y, w.w, w.h }), QList<int>({ col * 10922, row * 16384, 10922, 16384 }));
    }
    QCOMPARE(s.screens.size(), size_t(3));
    const ScreenInfo_t& far = s.screens.back();
    QCOMPARE(QList<int>({ far.position, far.port }), QList<int>({ 5, second->port() }));
    QCOMPARE(QStringList({ far.ip, far.name, far.userName }),
        QStringList({ second->address(), second->address() + QStringLiteral("-1"), QStringLiteral("admin") }));
    // The other decoder of the wall is told its status with its own address.
    QCOMPARE(second->snapshot().status, 2);
    QCOMPARE(second->snapshot().masterIp, second->address());
    QSettings ini(QStringLiteral("tvWallConfig.ini"), QSettings::IniFormat);
    QCOMPARE(ini.value(QStringLiteral("bannerinfo/w")).toInt(), 0);

    int marker = 0;
    QueuedSignalSpy read(worker(), &MatrixSdkWorker::signalGetLayoutInfoResult);
    worker()->getLayout(h, &marker);
    QVERIFY(read.wait(scaled(5000)));
    const QVariantList args = read.at(0);
    QCOMPARE(args.mid(0, 2), QVariantList({ "Lobby", 0 }));
    QCOMPARE(args.mid(3, 3), QVariantList({ 2, 3, main->address() }));
    QCOMPARE(args.at(6).value<void*>(), static_cast<void*>(&marker));
    const QList<MatrixInfo> back = args.at(2).value<QList<MatrixInfo>>();
    QCOMPARE(back.size(), 2);
    for (int i = 0; i < 2; ++i) {
        QCOMPARE(back[i].ip, screens[i].ip);
        QCOMPARE(back[i].screenList, screens[i].screenList);
    }
}

void TestWallLayout::layoutWithinWhatTheDecoderHolds_data()
{
    QTest::addColumn<int>("side");
    QTest::addColumn<int>("ret");
    QTest::newRow("16 x 16, the largest grid") << 16 << CMATRIX_OK;
    QTest::newRow("17 x 17, refused untouched") << 17 << CMATRIX_ERR_LIMIT;
}

void TestWallLayout::layoutWithinWhatTheDecoderHolds()
{
    QFETCH(int, side);
    QFETCH(int, ret);
    const Handle h = wallOn(2, 2);
    QVERIFY(h);
    QCOMPARE(CMatrix_SceneCreate(*sdk_, 1, "Day"), CMATRIX_OK);
    QueuedSignalSpy laid(worker(), &MatrixSdkWorker::signalSetLayoutResult);
    worker()->setLayout(QStringLiteral("Big"), 0, side, side, {}, decoder_->address());
    QVERIFY(laid.wait(scaled(10000)));
    QCOMPARE(laid.at(0).at(0).toInt(), ret);
    const vdec::DecoderSnapshot s = decoder_->snapshot();
    QCOMPARE(int(s.windows.size()), ret == CMATRIX_OK ? side * side : 4);
    QCOMPARE(s.scenes.size(), size_t(ret == CMATRIX_OK ? 0 : 1));
}

KVMS_TEST_CLASS(TestWallLayout)
#include "TestWallLayout.moc"
