// Pictures pushed with CMatrix_DisplayFrame, seen where the wall shows them.

#include "DecoderFixture.h"
#include "MediaRecords.h"
#include "MonitorClient.h"
#include "SdkSession.h"
#include "SuiteMain.h"

#include "core/VirtualDecoder.h"

#include <QtTest>

using namespace mediarecords;

class TestPictures : public QObject {
    Q_OBJECT

    kvmstest::DecoderFixture fixture_;

private slots:
    void cleanup() { fixture_.cleanup(); }

    void pictureShowsInSubWindow_data()
    {
        QTest::addColumn<QRect>("rect"); // window, wall units
        QTest::addColumn<int>("division");
        QTest::addColumn<int>("sub");
        QTest::addColumn<int>("fullScreen"); // sub-window shown over the whole window, 0: none
        QTest::addColumn<QPointF>("inside"); // fractions of the wall
        QTest::addColumn<QPointF>("outside"); // a point of another sub-window
        QTest::addColumn<QSize>("kept"); // picture size the decoder keeps for a 1280x720 JPEG
        QTest::addColumn<QColor>("colour");

        const QRect wall(0, 0, 32768, 32768);
        const QRect topRight(16384, 0, 16384, 16384);
        // On a 2x2 wall of 1920x1080 screens: 3840x2160 pixels. Points keep off the
        // screens' frames, which are drawn across windows.
        QTest::newRow("four, third") << wall << 4 << 3 << 0 << QPointF(0.25, 0.75) << QPointF(0.75, 0.75)
                                     << QSize(1280, 720) << QColor(30, 200, 40);
        QTest::newRow("six, large") << wall << 6 << 1 << 0 << QPointF(0.33, 0.33) << QPointF(0.83, 0.17)
                                    << QSize(1280, 720) << QColor(40, 60, 230);
        QTest::newRow("eight, fifth") << wall << 8 << 5 << 0 << QPointF(0.125, 0.875) << QPointF(0.375, 0.875)
                                      << QSize(960, 540) << QColor(30, 210, 210);
        QTest::newRow("window on one screen") << topRight << 4 << 2 << 0 << QPointF(0.875, 0.125)
                                              << QPointF(0.625, 0.125) << QSize(960, 540) << QColor(220, 30, 30);
        QTest::newRow("full screen") << wall << 4 << 3 << 3 << QPointF(0.75, 0.25) << QPointF(-1, -1)
                                     << QSize(1280, 720) << QColor(30, 200, 40);
    }

    void pictureShowsInSubWindow()
    {
        QFETCH(QRect, rect);
        QFETCH(int, division);
        QFETCH(int, sub);
        QFETCH(int, fullScreen);
        QFETCH(QPointF, inside);
        QFETCH(QPointF, outside);
        QFETCH(QSize, kept);
        QFETCH(QColor, colour);

        vdec::VirtualDecoder* d = fixture_.startDecoder();
        QVERIFY(d);
        kvmstest::SdkSession h;
        QCOMPARE(h.connect(d), CMATRIX_OK);
        QVERIFY(layOut(h, 2, 2, { window(1, rect.x(), rect.y(), rect.width(), rect.height()) }, { division }));
        if (fullScreen)
            QCOMPARE(CMatrix_WindowSetFullScreen(h, 1, fullScreen, 1), CMATRIX_OK);

        QCOMPARE(display(h, 1, sub, FrameSamples::picture(colour, { 1280, 720 })), CMATRIX_OK);

        const vdec::DecoderSnapshot snapshot = d->snapshot();
        const vdec::SubWindowMedia* media = snapshot.mediaOf(1, sub);
        QVERIFY(media);
        QCOMPARE(media->frames, 1u);
        QCOMPARE(media->decoded, 1u);
        QCOMPARE(media->failed, 0u);
        QCOMPARE(media->picture.size(), kept);

        const QImage wall = MonitorClient(d->address(), d->httpPort()).wall(960);
        QCOMPARE(wall.size(), QSize(960, 540));
        QVERIFY2(near(at(wall, inside.x(), inside.y()), colour), qPrintable(at(wall, inside.x(), inside.y()).name()));
        if (outside.x() >= 0)
            QVERIFY(!near(at(wall, outside.x(), outside.y()), colour));
    }

    // A picture belongs to what it was shown for: a new source in its sub-window, or a
    // window deleted and made again, leaves the sub-window without it.
    void newSourceClearsPicture()
    {
        vdec::VirtualDecoder* d = fixture_.startDecoder();
        QVERIFY(d);
        kvmstest::SdkSession h;
        QCOMPARE(h.connect(d), CMATRIX_OK);
        QVERIFY(layOut(h, 1, 1, { window(1, 0, 0, 32768, 32768) }, { 4 }));
        const DeviceInfo_t picture = source(1, "pic_lobby", 6, 1);
        QCOMPARE(CMatrix_WindowDeviceAdd(h, 1, &picture, 1, true), CMATRIX_OK);
        const QColor red(220, 30, 30);
        QCOMPARE(display(h, 1, 1, FrameSamples::picture(red)), CMATRIX_OK);
        QCOMPARE(display(h, 1, 2, FrameSamples::picture(red)), CMATRIX_OK);
        MonitorClient monitor(d->address(), d->httpPort());
        QVERIFY(near(at(monitor.wall(), 0.25, 0.25), red));

        const DeviceInfo_t camera = source(1, "cam-7", 1, 1);
        QCOMPARE(CMatrix_WindowDeviceAdd(h, 1, &camera, 1, true), CMATRIX_OK);
        QVERIFY(!d->snapshot().mediaOf(1, 1));
        QVERIFY(d->snapshot().mediaOf(1, 2)); // its neighbour keeps its own
        QVERIFY(!near(at(monitor.wall(), 0.25, 0.25), red));

        const MatrixWindow_t again = window(1, 0, 0, 32768, 32768);
        const uint32_t id = 1;
        QCOMPARE(CMatrix_WindowDel(h, &id, 1), CMATRIX_OK);
        QCOMPARE(CMatrix_WindowAdd(h, &again, 1, false), CMATRIX_OK);
        QCOMPARE(CMatrix_WindowSetDivision(h, 1, 4), CMATRIX_OK);
        QVERIFY(d->snapshot().media.empty());
        QVERIFY(!near(at(monitor.wall(), 0.75, 0.25), red));
    }

    void quickPicturesShowTheLatest_data()
    {
        QTest::addColumn<int>("intervalMs");
        QTest::addColumn<int>("decoded"); // after the wall has been looked at
        QTest::newRow("every picture decoded") << 0 << 3;
        QTest::newRow("first decoded, latest when looked at") << 60000 << 2;
    }

    // Pictures that follow each other quickly: whatever is skipped, the wall shows the
    // latest one, and a broken one is refused at once even when it would not be decoded yet.
    void quickPicturesShowTheLatest()
    {
        QFETCH(int, intervalMs);
        QFETCH(int, decoded);
        vdec::VirtualDecoder* d
            = fixture_.startDecoder(0, [&](vdec::DecoderConfig& c) { c.pictureIntervalMs = intervalMs; });
        QVERIFY(d);
        kvmstest::SdkSession h;
        QCOMPARE(h.connect(d), CMATRIX_OK);
        QVERIFY(layOut(h, 1, 1, { window(1, 0, 0, 32768, 32768) }, { 1 }));
        for (const QColor& colour : { QColor(Qt::red), QColor(Qt::green), QColor(Qt::blue) })
            QCOMPARE(display(h, 1, 1, FrameSamples::picture(colour)), CMATRIX_OK);
        QCOMPARE(display(h, 1, 1, FrameSamples::envelope("not a JPEG")), CMATRIX_ERR_DECODE);

        const vdec::DecoderSnapshot snapshot = d->snapshot();
        const vdec::SubWindowMedia* media = snapshot.mediaOf(1, 1);
        QVERIFY(media);
        QCOMPARE(media->frames, 4u);
        QCOMPARE(int(media->decoded), decoded);
        QCOMPARE(media->failed, 1u);
        QVERIFY2(near(at(media->picture, 0.5, 0.5), Qt::blue), qPrintable(at(media->picture, 0.5, 0.5).name()));
        QVERIFY(near(at(MonitorClient(d->address(), d->httpPort()).wall(), 0.5, 0.5), Qt::blue));
    }
};

KVMS_TEST_CLASS(TestPictures)
#include "TestPictures.moc"
