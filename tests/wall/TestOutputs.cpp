// Banner, screen colours and audio: kept by the decoder as they were set.

#include "WallRecords.h"
#include "WallSdk.h"
#include "WallTests.h"

#include <QtTest>

using namespace wallrecords;

void WallTests::bannerReadsBackByteForByte()
{
    WallSdk sdk;
    vdec::VirtualDecoder* d = standardWall(68, sdk);
    QVERIFY(d);
    const CMHANDLE h = sdk.handle();
    BannerInfo_t read;
    memset(&read, 0xAB, sizeof read);
    QCOMPARE(CMatrix_GetBanner(h, &read), CMATRIX_OK);
    QCOMPARE(bytesOf(read), bytesOf(BannerInfo_t {})); // none yet: hidden, all zero

    BannerInfo_t shown = banner("Fire drill at 10:00 — Übung");
    shown.pad[1] = 0x5A; // kept as sent, padding included
    QCOMPARE(CMatrix_DisplayBanner(h, &shown), CMATRIX_OK);
    QCOMPARE(CMatrix_GetBanner(h, &read), CMATRIX_OK);
    QCOMPARE(bytesOf(read), bytesOf(shown));
    QCOMPARE(bytesOf(d->snapshot().banner), bytesOf(shown));

    // Hiding as a new layout does (all zero), and as an operator might (values kept).
    const BannerInfo_t off {};
    QCOMPARE(CMatrix_DisplayBanner(h, &off), CMATRIX_OK);
    QCOMPARE(CMatrix_GetBanner(h, &read), CMATRIX_OK);
    QCOMPARE(bytesOf(read), bytesOf(off));
    BannerInfo_t hidden = shown;
    hidden.show = 0;
    QCOMPARE(CMatrix_DisplayBanner(h, &hidden), CMATRIX_OK);
    QCOMPARE(CMatrix_GetBanner(h, &read), CMATRIX_OK);
    QCOMPARE(bytesOf(read), bytesOf(hidden));
}

void WallTests::screenColoursPerScreen()
{
    WallSdk sdk;
    vdec::VirtualDecoder* d = standardWall(69, sdk);
    QVERIFY(d);
    const CMHANDLE h = sdk.handle();
    ScreenColor read {};
    for (int col = 0; col < 2; ++col) {
        for (int row = 0; row < 2; ++row) {
            QCOMPARE(CMatrix_GetScreenColor(h, col, row, &read), CMATRIX_OK);
            QCOMPARE(bytesOf(read), bytesOf(color(50, 50, 50, 50)));
        }
    }
    const ScreenColor set = color(0, 100, 25, 75);
    QCOMPARE(CMatrix_SetScreenColor(h, 1, 0, &set), CMATRIX_OK);
    QCOMPARE(CMatrix_GetScreenColor(h, 1, 0, &read), CMATRIX_OK);
    QCOMPARE(bytesOf(read), bytesOf(set));
    // Only that screen: column 1 of row 0 is not column 0 of row 1.
    QCOMPARE(CMatrix_GetScreenColor(h, 0, 1, &read), CMATRIX_OK);
    QCOMPARE(read.brightness, 50);
    QCOMPARE(d->snapshot().screenColors.size(), size_t(1));
    QCOMPARE(bytesOf(d->snapshot().screenColors.at({ 1, 0 })), bytesOf(set));
}

void WallTests::audioFollowsItsWindow()
{
    WallSdk sdk;
    vdec::VirtualDecoder* d = standardWall(70, sdk);
    QVERIFY(d);
    const CMHANDLE h = sdk.handle();
    DeviceAudioInfo_t read {};
    QCOMPARE(CMatrix_GetAudioStatus(h, &read), CMATRIX_OK);
    QCOMPARE(QByteArray(read.state), QByteArray("close"));

    const DeviceAudioInfo_t open = audio("open", 1, 3, 70);
    QCOMPARE(CMatrix_SetAudioStatus(h, &open), CMATRIX_OK);
    QCOMPARE(CMatrix_GetAudioStatus(h, &read), CMATRIX_OK);
    QCOMPARE(bytesOf(read), bytesOf(open));
    const DeviceAudioInfo_t closed = audio("close", 0, 0, 0);
    QCOMPARE(CMatrix_SetAudioStatus(h, &closed), CMATRIX_OK);
    QCOMPARE(CMatrix_GetAudioStatus(h, &read), CMATRIX_OK);
    QCOMPARE(bytesOf(read), bytesOf(closed));

    // Audio from a sub-window that goes away stops.
    QCOMPARE(CMatrix_SetAudioStatus(h, &open), CMATRIX_OK);
    QCOMPARE(CMatrix_WindowSetDivision(h, 1, 1), CMATRIX_OK);
    QCOMPARE(QByteArray(d->snapshot().audio.state), QByteArray("close"));
    const DeviceAudioInfo_t first = audio("open", 3, 1, 10);
    QCOMPARE(CMatrix_SetAudioStatus(h, &first), CMATRIX_OK);
    const uint32_t gone[] = { 3 };
    QCOMPARE(CMatrix_WindowDel(h, gone, 1), CMATRIX_OK);
    QCOMPARE(CMatrix_GetAudioStatus(h, &read), CMATRIX_OK);
    QCOMPARE(QByteArray(read.state), QByteArray("close"));
    QCOMPARE(read.volume, 10);
}
