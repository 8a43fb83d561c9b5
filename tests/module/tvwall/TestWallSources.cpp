// Binding sources through the worker: the descriptor each kind of source becomes on the
// decoder, display devices fed by a media distribution, and pictures pushed after binding.
#include "WallRig.h"

#include "QueuedSignalSpy.h"
#include "SuiteMain.h"

#include "TestTimeout.h"
#include "WireBuilders.h"

#include <QImage>
#include <QtTest>

using namespace kvms_matrix;
using kvmstest::scaled;

class TestWallSources : public QObject, public WallRig {
    Q_OBJECT

private slots:
    void initTestCase() { QVERIFY(enterWorkDirectory()); }
    void cleanup() { QVERIFY(settle()); }
    void cleanupTestCase() { QVERIFY(leaveWorkDirectory()); }
    void sourceDescriptors_data();
    void sourceDescriptors();
    void displayDeviceGetsADistribution();
    void pictureIsPushedToItsSubWindow_data();
    void pictureIsPushedToItsSubWindow();
    void distributionEndsWithItsBinding_data();
    void distributionEndsWithItsBinding();
    void dropIntoAWallOfDisplayDevicesIsBounded();
};

void TestWallSources::sourceDescriptors_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("stream");
    QTest::addColumn<QStringList>("given"); // device id, name, main URL
    QTest::addColumn<QList<int>>("sent"); // protocol, channel, stream
    QTest::addColumn<QByteArrayList>("sentTexts"); // device id, name, main URL, sub URL
    QTest::addColumn<int>("readType"); // the type the worker reads the source back as

    const QString e = QString::fromUtf8("\xC3\xA9"); // two bytes in UTF-8
    const QByteArray onvif("http://127.0.0.9:8000/onvif/device_service");
    using B = QByteArrayList;
    QTest::newRow("camera id starting with a digit")
        << 1 << 1 << QStringList { "1abc", "Gate", "" } << QList<int> { 1, 3, 1 } << B { "1abc", "Gate", "", "" } << 1;
    QTest::newRow("camera stream 2 goes out unknown")
        << 1 << 2 << QStringList { "AB", "Gate", "" } << QList<int> { 0, 3, -1 } << B { "AB", "Gate", "", "" } << 1;
    QTest::newRow("rtsp stream 2 goes out as it is")
        << 9 << 2 << QStringList { "door", "Door", "rtsp://127.0.0.9/m" } << QList<int> { 3, 0, 2 }
        << B { "door", "Door", "rtsp://127.0.0.9/m", "rtsp://127.0.0.9/sub" } << 9;
    QTest::newRow("camera by address") << 5 << 1 << QStringList { "cam5", "Yard", "" } << QList<int> { 3, 3, 1 }
                                       << B { "cam5", "Yard", "rtsp://127.0.0.9/0", "rtsp://127.0.0.9/1" } << 9;
    QTest::newRow("onvif") << 8 << 0 << QStringList { "ov1", "Hall", "" } << QList<int> { 2, 3, 0 }
                           << B { "ov1", "Hall", onvif, onvif } << 8;
    QTest::newRow("picture") << 3 << 0 << QStringList { "pic_sea", "Sea", "" } << QList<int> { 6, 3, 0 }
                             << B { "pic_sea", "Sea", "", "" } << 3;
    QTest::newRow("desktop as onvif") << 4 << 0 << QStringList { "caponvif_pc", "PC", "" } << QList<int> { 6, 3, 0 }
                                      << B { "caponvif_pc", "PC", "", "" } << 5;
    QTest::newRow("picture without a prefix")
        << 3 << 0 << QStringList { "sea", "Sea", "" } << QList<int> { 6, 3, 0 } << B { "sea", "Sea", "", "" } << 2;
    QTest::newRow("unknown kind is an empty sub-window")
        << 42 << 0 << QStringList { "x", "X", "" } << QList<int> { 8, 1, -1 } << B { "emp_1", "", "", "" } << 0;
    QTest::newRow("texts longer than their fields are cut")
        << 1 << 0 << QStringList { QString(40, QLatin1Char('K')), QString(75, e.at(0)), "" } << QList<int> { 0, 3, 0 }
        << B { QByteArray(31, 'K'), QString(49, e.at(0)).toUtf8(), "", "" } << 1;
}

void TestWallSources::sourceDescriptors()
{
    QFETCH(int, type);
    QFETCH(int, stream);
    QFETCH(QStringList, given);
    QFETCH(QList<int>, sent);
    QFETCH(QByteArrayList, sentTexts);
    QFETCH(int, readType);
    const Handle h = wallOn(1, 1);
    QVERIFY(h);
    MatrixWindowInfo window = windowInfo(1, 1);
    MatrixDeviceInfo& device = window.subWindows[0].device;
    device.deviceType = type;
    device.streamIndex = stream;
    device.deviceId = given[0];
    device.deviceName = device.displayName = given[1];
    device.mainUrl = given[2];
    device.subUrl = given[2].isEmpty() ? QString() : QStringLiteral("rtsp://127.0.0.9/sub");
    device.ip = QStringLiteral("127.0.0.9");
    device.port = 8000;
    device.channel = 3;
    QCOMPARE(bind(h, window, 0), CMATRIX_OK); // no target sub-window: nothing is pushed or captured

    const vdec::DecoderSnapshot snapshot = decoder_->snapshot();
    const DeviceInfo_t& d = snapshot.window(1)->sources.at(1);
    const bool local = type == 3 || type == 4;
    const bool camera = type == 1 || type == 5 || type == 8;
    QCOMPARE(QList<int>({ d.subWindow, d.protocol, d.channel, d.stream, d.mode }),
        QList<int>({ 1, sent[0], sent[1], sent[2], camera || local ? 2 : 0 }));
    QCOMPARE(QByteArrayList({ d.devId, d.name, d.mainUrl, d.subUrl, d.ip }),
        sentTexts + QByteArrayList { camera ? "127.0.0.9" : "" });
    QCOMPARE(readWall(h).at(0).subWindows.at(0).device.deviceType, readType);
}

void TestWallSources::displayDeviceGetsADistribution()
{
    const Handle h = wallOn(1, 1);
    QVERIFY(h);

    MatrixWindowInfo window = windowInfo(1, 1);
    MatrixDeviceInfo& pc = window.subWindows[0].device;
    pc.deviceType = 2;
    pc.deviceId = QStringLiteral("pc-7");
    pc.displayName = QStringLiteral("Operator PC");
    pc.channel = 0; // no channel yet: the worker finds one and starts a distribution
    MatrixWindowInfo echoed;
    QCOMPARE(bind(h, window, 1, &echoed), CMATRIX_OK);

    vdec::DecoderSnapshot s = decoder_->snapshot();
    QCOMPARE(s.distributions.size(), size_t(1));
    const vdec::MediaDistribution md = s.distributions.front(); // a copy: s is read again below
    QCOMPARE(QVariantList({ md.sourceName, md.channel }), QVariantList({ "pc-7", 1 }));
    const DeviceInfo_t& sent = s.window(1)->sources.at(1);
    QCOMPARE(sent.protocol, 7);
    QCOMPARE(QStringList({ sent.mainUrl, sent.userName, sent.name }), QStringList({ md.url, "admin", "Operator PC" }));
    // The form gets the channel and the stream address back, and the worker keeps the handle.
    const MatrixDeviceInfo& back = echoed.subWindows[0].device;
    QCOMPARE(QVariantList({ back.channel, back.mainUrl }), QVariantList({ 1, md.url }));
    const auto registry = worker()->mdRegistry();
    QCOMPARE(registry.size(), size_t(1));
    QCOMPARE(QList<int>({ registry.begin()->first.first, registry.begin()->first.second,
                 registry.begin()->second.subWindowId }),
        QList<int>({ 1, 1, 1 }));

    const MatrixDeviceInfo read = readWall(h).at(0).subWindows.at(0).device;
    QCOMPARE(QVariantList({ read.deviceType, read.deviceId }), QVariantList({ 2, "pc-7" }));

    // Bound again as the form now holds it: the decoder already pulls it, no new distribution.
    QCOMPARE(bind(h, echoed, 1), CMATRIX_OK);
    s = decoder_->snapshot();
    QCOMPARE(s.distributions.size(), size_t(1));
    QCOMPARE(QString::fromUtf8(s.window(1)->sources.at(1).mainUrl), md.url);

    worker()->removeMdHandle(h, 1, 1, 0);
    QTRY_VERIFY_WITH_TIMEOUT(worker()->mdRegistry().empty(), scaled(5000));
    QTRY_VERIFY_WITH_TIMEOUT(decoder_->snapshot().distributions.empty(), scaled(5000));
}

void TestWallSources::pictureIsPushedToItsSubWindow_data()
{
    QTest::addColumn<int>("bound"); // what the decoder answers to the binding
    QTest::newRow("bound") << CMATRIX_OK;
    QTest::newRow("binding refused: pushed all the same") << CMATRIX_ERR_BUSY;
}

void TestWallSources::pictureIsPushedToItsSubWindow()
{
    QFETCH(int, bound);
    const Handle h = wallOn(1, 1);
    QVERIFY(h);
    QCOMPARE(CMatrix_WindowSetDivision(*sdk_, 1, 4), CMATRIX_OK);
    QImage image(64, 48, QImage::Format_RGB32);
    image.fill(Qt::red);
    const QString path = workDir_.filePath(QStringLiteral("sea.jpg"));
    QVERIFY(image.save(path, "JPG"));

    MatrixWindowInfo window = windowInfo(1, 4);
    MatrixDeviceInfo& picture = window.subWindows[1].device;
    picture.deviceType = 3;
    picture.deviceId = QStringLiteral("pic_sea");
    picture.displayName = QStringLiteral("Sea");
    picture.mainUrl = path;
    picture.channel = 2; // frames go to the sub-window of this number
    if (bound != CMATRIX_OK)
        decoder_->faults().failNext(cmatrix::wire::MessageType::WindowDeviceAdd, bound);
    QCOMPARE(bind(h, window, 2), bound);

    const vdec::DecoderSnapshot s = decoder_->snapshot();
    QCOMPARE(s.window(1)->sources.count(2), size_t(bound == CMATRIX_OK ? 1 : 0));
    const vdec::SubWindowMedia* media = s.mediaOf(1, 2);
    QVERIFY(media);
    QCOMPARE(media->decoded, quint64(1));
    QVERIFY(!media->picture.isNull());
}

void TestWallSources::distributionEndsWithItsBinding_data()
{
    QTest::addColumn<bool>("bindingRefused"); // else: bound, then the connection is closed
    QTest::newRow("binding refused") << true;
    QTest::newRow("connection closed") << false;
}

void TestWallSources::distributionEndsWithItsBinding()
{
    QFETCH(bool, bindingRefused);
    const Handle h = wallOn(1, 1);
    QVERIFY(h);
    MatrixWindowInfo window = windowInfo(1, 1);
    MatrixDeviceInfo& pc = window.subWindows[0].device;
    pc.deviceType = 2;
    pc.deviceId = QStringLiteral("pc-8");
    pc.channel = 0;
    if (bindingRefused)
        decoder_->faults().failNext(cmatrix::wire::MessageType::WindowDeviceAdd, CMATRIX_ERR_BUSY);
    QCOMPARE(bind(h, window, 1), bindingRefused ? CMATRIX_ERR_BUSY : CMATRIX_OK);
    if (!bindingRefused) {
        QCOMPARE(worker()->mdRegistry().size(), size_t(1));
        QVERIFY(settleWorker());
    }
    // Nothing pulls it any more: stopped on the decoder, and its channel is free again.
    QVERIFY(worker()->mdRegistry().empty());
    QTRY_VERIFY_WITH_TIMEOUT(decoder_->snapshot().distributions.empty(), scaled(5000));
}

// A display device dropped into one sub-window of a 5 x 5 wall whose window of 25 already shows
// display devices: each of them asks what the decoder holds, and the wall must be read once for
// the whole binding, not once per device (some 650 round trips instead of 30).
void TestWallSources::dropIntoAWallOfDisplayDevicesIsBounded()
{
    const Handle h = wallOn(5, 5);
    QVERIFY(h);
    constexpr int kDivision = 25;
    QCOMPARE(CMatrix_WindowSetDivision(*sdk_, 3, kDivision), CMATRIX_OK);
    MatrixWindowInfo window = windowInfo(3, kDivision);
    std::vector<DeviceInfo_t> held;
    for (int k = 0; k < kDivision; ++k) {
        MatrixDeviceInfo& pc = window.subWindows[k].device;
        pc.deviceType = 2;
        pc.deviceId = QStringLiteral("pc-%1").arg(k + 1);
        pc.channel = 100 + k;
        DeviceInfo_t d = kvmstest::device(k + 1, qPrintable(pc.deviceId));
        d.channel = pc.channel;
        d.protocol = 7; // the decoder pulls it already
        held.push_back(d);
    }
    QCOMPARE(CMatrix_WindowDeviceAdd(*sdk_, 3, held.data(), kDivision, true), CMATRIX_OK);
    MatrixDeviceInfo& dropped = window.subWindows[12].device;
    dropped.deviceId = QStringLiteral("new-pc");
    dropped.channel = 0; // new: a channel is found and a distribution started

    const int before = decoder_->journal().total();
    QCOMPARE(bind(h, window, 13), CMATRIX_OK);
    const int trips = decoder_->journal().total() - before;
    QVERIFY2(trips <= 2 * kDivision, qPrintable(QStringLiteral("%1 round trips").arg(trips)));
}

KVMS_TEST_CLASS(TestWallSources)
#include "TestWallSources.moc"
