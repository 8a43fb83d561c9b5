// The wall as one picture for the canvas's mimic: the SDK call and the worker task.
#include "VideoTests.h"


#include <QtTest>

using namespace kvms_matrix;

void VideoTest::snapshotSizes_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    QTest::addColumn<int>("expected"); // result code; 0: a JPEG of that size
    QTest::newRow("panel sized") << 400 << 225 << 0;
    QTest::newRow("not 16:9 is stretched") << 300 << 300 << 0;
    QTest::newRow("too small") << 15 << 100 << int(CMATRIX_ERR_INVALID_PARAM);
    QTest::newRow("too wide") << 3841 << 100 << int(CMATRIX_ERR_INVALID_PARAM);
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
