// Bad streams: a camera sending damaged pictures does not stop the decoder or its other
// sub-windows.
#include "VideoTests.h"

#include "MonitorClient.h"
#include "TestTimeout.h"


#include <QtTest>

using kvmstest::scaled;

void VideoTest::corruptStreamLeavesTheOthersPlaying()
{
    const QString ip = QStringLiteral("127.0.0.51");
    QVERIFY2(cameras_.start(ip, { "Good", "Broken" }, 0, { "--corrupt", "Broken" }), qPrintable(cameras_.error()));
    const Handle h = wallOn(44, 4);
    QVERIFY(h);
    kvms_matrix::MatrixWindowInfo window = withCamera(4, 1, ip, cameras_.port(), 1, 1);
    window.subWindows[1].device = withCamera(4, 2, ip, cameras_.port(), 2, 1).subWindows[1].device;
    QCOMPARE(bind(h, window, 0), 0);
    QTRY_VERIFY_WITH_TIMEOUT(video(1).value("shown").toInt() > 0, scaled(15000));
    QTRY_VERIFY_WITH_TIMEOUT(video(2).value("failed").toInt() > 5, scaled(15000));
    const int shown = video(1).value("shown").toInt();
    QTRY_VERIFY_WITH_TIMEOUT(video(1).value("shown").toInt() > shown + 25, scaled(10000));
    QCOMPARE(video(1).value("failed").toInt(), 0);
    // The decoder still answers its clients.
    int cols = 0, rows = 0;
    char name[64] {};
    QCOMPARE(CMatrix_GetMatrix(*sdk_, &cols, &rows, name, sizeof name), CMATRIX_OK);
}
