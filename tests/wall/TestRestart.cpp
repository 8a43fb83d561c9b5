// A power cycle: everything this area stores comes back, and loops turn again.

#include "TestTimeout.h"
#include "WallRecords.h"
#include "WallSdk.h"
#include "WallTests.h"

#include <QtTest>

using namespace wallrecords;
using kvmstest::scaled;

void WallTests::restartKeepsEverything()
{
    WallSdk sdk;
    vdec::VirtualDecoder* d = standardWall(74, sdk);
    QVERIFY(d);
    const CMHANDLE h = sdk.handle();
    QCOMPARE(CMatrix_SceneCreate(h, 3, "Before the loop"), CMATRIX_OK);
    QCOMPARE(CMatrix_SchemeSelect(h, 1, 1, 4), CMATRIX_OK);
    QCOMPARE(CMatrix_SceneCreate(h, 5, "With the loop"), CMATRIX_OK);
    const BannerInfo_t shown = banner("Back soon");
    QCOMPARE(CMatrix_DisplayBanner(h, &shown), CMATRIX_OK);
    const ScreenColor warm = color(60, 55, 70, 45);
    QCOMPARE(CMatrix_SetScreenColor(h, 0, 1, &warm), CMATRIX_OK);
    const DeviceAudioInfo_t sound = audio("open", 3, 1, 35);
    QCOMPARE(CMatrix_SetAudioStatus(h, &sound), CMATRIX_OK);
    const vdec::DecoderSnapshot before = d->snapshot();

    QVERIFY(d->restart());
    QCOMPARE(sdk.connect(d), CMATRIX_OK);
    const vdec::DecoderSnapshot after = d->snapshot();
    QCOMPARE(after.scenes.size(), size_t(2));
    for (const vdec::Scene& scene : before.scenes) {
        QVERIFY(after.scene(scene.id));
        QCOMPARE(after.scene(scene.id)->name, scene.name);
        QCOMPARE(wallPrint(after.scene(scene.id)->windows), wallPrint(scene.windows));
        QCOMPARE(after.scene(scene.id)->loops.size(), scene.loops.size());
    }
    QCOMPARE(bytesOf(after.scheme(1)->info), bytesOf(before.scheme(1)->info));
    QCOMPARE(after.scheme(1)->devices.size(), size_t(6));
    for (size_t i = 0; i < 6; ++i)
        QCOMPARE(bytesOf(after.scheme(1)->devices[i]), bytesOf(before.scheme(1)->devices[i]));

    BannerInfo_t readBanner {};
    QCOMPARE(CMatrix_GetBanner(h, &readBanner), CMATRIX_OK);
    QCOMPARE(bytesOf(readBanner), bytesOf(shown));
    ScreenColor readColor {};
    QCOMPARE(CMatrix_GetScreenColor(h, 0, 1, &readColor), CMATRIX_OK);
    QCOMPARE(bytesOf(readColor), bytesOf(warm));
    DeviceAudioInfo_t readAudio {};
    QCOMPARE(CMatrix_GetAudioStatus(h, &readAudio), CMATRIX_OK);
    QCOMPARE(bytesOf(readAudio), bytesOf(sound));

    // The loop runs in its window again, and turns.
    QCOMPARE(after.loops.count(1), size_t(1));
    QCOMPARE(after.loops.at(1).schemeId, 1u);
    QCOMPARE(after.window(1)->sourceKind, 1);
    const int64_t turn = after.loops.at(1).turn;
    const auto turnNow = [d] {
        const vdec::DecoderSnapshot s = d->snapshot();
        return s.loops.count(1) ? s.loops.at(1).turn : int64_t(-1);
    };
    QTRY_VERIFY_WITH_TIMEOUT(turnNow() > turn, scaled(3000));

    // Stopped, it stays stopped through the next power cycle.
    QCOMPARE(CMatrix_WindowSetDisplayInTurn(h, 1, 0), CMATRIX_OK);
    QVERIFY(d->restart());
    QVERIFY(d->snapshot().loops.empty());
    QCOMPARE(d->snapshot().window(1)->sourceKind, 0);
}
