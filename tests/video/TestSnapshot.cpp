// One picture of the wall for the canvas's mimic, in the sizes the SDK takes.
#include "VideoRig.h"

#include "SuiteMain.h"

#include <QtTest>

class TestSnapshot : public QObject, public VideoRig {
    Q_OBJECT

private slots:
    void initTestCase() { QVERIFY(enterWorkDirectory()); }
    void cleanup() { QVERIFY(settle()); }
    void cleanupTestCase() { QVERIFY(leaveWorkDirectory()); }

    void snapshotSizes_data()
    {
        QTest::addColumn<int>("width");
        QTest::addColumn<int>("height");
        QTest::addColumn<int>("expected"); // result code; 0: a JPEG of that size
        QTest::newRow("not 16:9 is stretched") << 300 << 300 << 0;
        QTest::newRow("smallest") << 16 << 16 << 0;
        QTest::newRow("too small") << 15 << 100 << int(CMATRIX_ERR_INVALID_PARAM);
        QTest::newRow("too wide") << 3841 << 100 << int(CMATRIX_ERR_INVALID_PARAM);
        QTest::newRow("too tall") << 100 << 2161 << int(CMATRIX_ERR_INVALID_PARAM);
    }

    void snapshotSizes()
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
};

KVMS_TEST_CLASS(TestSnapshot)
#include "TestSnapshot.moc"
