// Scenes: the decoder keeps the whole wall under an id and brings it back.

#include "TestTimeout.h"
#include "WallRecords.h"
#include "WallSdk.h"
#include "WallTests.h"

#include <QtTest>

using namespace wallrecords;
using kvmstest::scaled;

namespace {

QList<QPair<uint32_t, QByteArray>> listScenes(CMHANDLE h)
{
    QList<QPair<uint32_t, QByteArray>> out;
    SceneInfo_t* scenes = nullptr;
    const int count = CMatrix_SceneGet(h, &scenes);
    for (int i = 0; i < count; ++i)
        out.append({ scenes[i].id, QByteArray(scenes[i].name) });
    CMatrix_Free(h, scenes);
    return out;
}

int turnIndexOf(CMHANDLE h, uint32_t windowId, int* sourceKind = nullptr)
{
    MatrixWindowStatus_t* windows = nullptr;
    const int count = CMatrix_WindowGet(h, &windows);
    int index = -1;
    for (int i = 0; i < count; ++i) {
        if (windows[i].window.id == windowId) {
            index = windows[i].turnIndex;
            if (sourceKind)
                *sourceKind = windows[i].sourceKind;
        }
    }
    CMatrix_Free(h, windows);
    return index;
}

} // namespace

void WallTests::sceneBringsBackTheWall()
{
    WallSdk sdk;
    vdec::VirtualDecoder* d = standardWall(60, sdk);
    QVERIFY(d);
    const CMHANDLE h = sdk.handle();
    QCOMPARE(CMatrix_WindowSetFullScreen(h, 1, 3, 1), CMATRIX_OK);
    const DeviceInfo_t floatingSource = source(1, "floating-cam");
    QCOMPARE(CMatrix_WindowDeviceAdd(h, 2, &floatingSource, 1, true), CMATRIX_OK);
    const QByteArray saved = wallPrint(d->snapshot().windows);
    QCOMPARE(CMatrix_SceneCreate(h, 1, "Morning"), CMATRIX_OK);

    // Change every part of the wall the scene holds.
    const uint32_t gone[] = { 2 };
    QCOMPARE(CMatrix_WindowDel(h, gone, 1), CMATRIX_OK);
    QCOMPARE(CMatrix_WindowSetDivision(h, 1, 9), CMATRIX_OK);
    const DeviceInfo_t other = source(5, "cam-5");
    QCOMPARE(CMatrix_WindowDeviceAdd(h, 1, &other, 1, true), CMATRIX_OK);
    const MatrixWindow_t moved = window(3, 16384, 16384, 16384, 16384);
    QCOMPARE(CMatrix_WindowMove(h, &moved), CMATRIX_OK);
    const MatrixWindow_t extra = window(4, 0, 16384, 16384, 16384);
    QCOMPARE(CMatrix_WindowAdd(h, &extra, 1, false), CMATRIX_OK);
    QVERIFY(wallPrint(d->snapshot().windows) != saved);

    QCOMPARE(CMatrix_SceneApply(h, 1), CMATRIX_OK);
    const vdec::DecoderSnapshot after = d->snapshot();
    QCOMPARE(wallPrint(after.windows), saved);
    QVERIFY(!after.window(4));
    QCOMPARE(after.window(1)->fullScreenSub, 3);
    QVERIFY(after.window(2)->layer > 0);
    QCOMPARE(QByteArray(after.window(2)->sources.at(1).devId), QByteArray("floating-cam"));

    // What the SDK reads back is that wall too.
    WindowDivision_t* divisions = nullptr;
    QCOMPARE(CMatrix_WindowGetDivision(h, &divisions), 3);
    QCOMPARE(divisions[0].division, 4);
    QCOMPARE(CMatrix_Free(h, divisions), CMATRIX_OK);
    DeviceInfo_t* bound = nullptr;
    QCOMPARE(CMatrix_WindowDeviceGet(h, 1, &bound), 2);
    QCOMPARE(bytesOf(bound[1]), bytesOf(source(3, "cam-3")));
    QCOMPARE(CMatrix_Free(h, bound), CMATRIX_OK);
}

void WallTests::scenesListOverwriteAndDelete()
{
    WallSdk sdk;
    vdec::VirtualDecoder* d = standardWall(61, sdk);
    QVERIFY(d);
    const CMHANDLE h = sdk.handle();
    QCOMPARE(CMatrix_SceneCreate(h, 4, "Night"), CMATRIX_OK);
    QCOMPARE(CMatrix_SceneCreate(h, 2, "Séance 2"), CMATRIX_OK);
    QCOMPARE(CMatrix_SceneCreate(h, 1, "Day"), CMATRIX_OK);
    using Entry = QPair<uint32_t, QByteArray>;
    QCOMPARE(listScenes(h),
        (QList<Entry> { { 1, "Day" }, { 2, QString("Séance 2").toUtf8() }, { 4, "Night" } })); // in id order

    // The same id again: new name, and the wall as it is now.
    QCOMPARE(CMatrix_WindowSetDivision(h, 3, 16), CMATRIX_OK);
    QCOMPARE(CMatrix_SceneCreate(h, 2, "Evening"), CMATRIX_OK);
    QCOMPARE(listScenes(h).at(1), Entry(2, "Evening"));
    QCOMPARE(d->snapshot().scene(2)->windows.at(2).division, 16);
    QCOMPARE(d->snapshot().scene(1)->windows.at(2).division, 1);

    // One unknown id and nothing is deleted.
    const uint32_t mixed[] = { 1, 3 };
    QCOMPARE(CMatrix_SceneDelete(h, mixed, 2), CMATRIX_ERR_SCENE_NOT_FOUND);
    QCOMPARE(listScenes(h).size(), 3);
    const uint32_t known[] = { 1, 4 };
    QCOMPARE(CMatrix_SceneDelete(h, known, 2), CMATRIX_OK);
    QCOMPARE(listScenes(h), (QList<Entry> { { 2, "Evening" } }));
    QCOMPARE(CMatrix_SceneApply(h, 4), CMATRIX_ERR_SCENE_NOT_FOUND);
    QCOMPARE(CMatrix_SceneDelete(h, nullptr, 0), CMATRIX_OK); // what a new layout sends on an empty decoder

    // A limit on new ids, none on overwriting.
    for (uint32_t id = 100; d->snapshot().scenes.size() < 32; ++id)
        QCOMPARE(CMatrix_SceneCreate(h, id, "filler"), CMATRIX_OK);
    QCOMPARE(CMatrix_SceneCreate(h, 99, "one too many"), CMATRIX_ERR_LIMIT);
    QCOMPARE(CMatrix_SceneCreate(h, 2, "still fine"), CMATRIX_OK);
    QCOMPARE(int(d->snapshot().scenes.size()), 32);
}

void WallTests::sceneKeepsItsLoop()
{
    WallSdk sdk;
    vdec::VirtualDecoder* d = standardWall(62, sdk);
    QVERIFY(d);
    const CMHANDLE h = sdk.handle();
    QCOMPARE(CMatrix_SchemeSelect(h, 3, 1, 2), CMATRIX_OK);
    QCOMPARE(CMatrix_SceneCreate(h, 7, "Turning"), CMATRIX_OK);
    QCOMPARE(d->snapshot().scene(7)->loops.at(3).schemeId, 1u);

    QCOMPARE(CMatrix_WindowSetDisplayInTurn(h, 3, 0), CMATRIX_OK);
    QCOMPARE(turnIndexOf(h, 3), 0);
    QCOMPARE(CMatrix_SceneApply(h, 7), CMATRIX_OK);
    // Back to turning, and on from there.
    int kind = 0;
    const int first = turnIndexOf(h, 3, &kind);
    QCOMPARE(kind, 1);
    QVERIFY(first >= 1 && first <= 6);
    QTRY_VERIFY_WITH_TIMEOUT(turnIndexOf(h, 3) != first, scaled(3000));

    // A scene whose scheme has gone since keeps the picture, not the turning.
    const uint32_t scheme[] = { 1 };
    QCOMPARE(CMatrix_SchemeDel(h, scheme, 1), CMATRIX_OK);
    QCOMPARE(CMatrix_SceneApply(h, 7), CMATRIX_OK);
    const vdec::DecoderSnapshot s = d->snapshot();
    QVERIFY(s.loops.empty());
    QCOMPARE(s.window(3)->sourceKind, 0);
    QCOMPARE(QByteArray(s.window(3)->sources.at(1).devId).left(5), QByteArray("loop-"));
}
