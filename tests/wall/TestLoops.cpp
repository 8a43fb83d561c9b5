// Loops: a scheme's sources really turn in a window, on the decoder's own clock.

#include "TestTimeout.h"
#include "WallRecords.h"
#include "WallSdk.h"
#include "WallTests.h"

#include <QtTest>

#include <string>

using namespace wallrecords;
using kvmstest::scaled;

namespace {

struct Turning {
    int sourceKind = -1;
    int turnIndex = -1;
};

Turning turningOf(CMHANDLE h, uint32_t windowId)
{
    Turning t;
    MatrixWindowStatus_t* windows = nullptr;
    const int count = CMatrix_WindowGet(h, &windows);
    for (int i = 0; i < count; ++i) {
        if (windows[i].window.id == windowId)
            t = Turning { windows[i].sourceKind, windows[i].turnIndex };
    }
    CMatrix_Free(h, windows);
    return t;
}

int64_t turnOf(const vdec::VirtualDecoder* d, int32_t windowId)
{
    const vdec::DecoderSnapshot s = d->snapshot();
    auto it = s.loops.find(windowId);
    return it == s.loops.end() ? -1 : it->second.turn;
}

// Sub-window k of a window turning a scheme of `count` sources "loop-i" shows
// source (turnIndex - 1 + k - 1) mod count: the group moves on together.
bool showsGroup(const vdec::Window& w, int count)
{
    if (w.sourceKind != 1 || w.turnIndex < 1 || int(w.sources.size()) != w.division)
        return false;
    for (const auto& [sub, device] : w.sources) {
        const std::string expected = "loop-" + std::to_string((w.turnIndex - 1 + sub - 1) % count);
        if (device.subWindow != sub || expected != device.devId)
            return false;
    }
    return true;
}

} // namespace

void WallTests::loopTurnsGroupsOfSources()
{
    WallSdk sdk;
    vdec::VirtualDecoder* d = standardWall(63, sdk, 100);
    QVERIFY(d);
    const CMHANDLE h = sdk.handle();
    // At step t, sub-window 1 shows source (start + t * division) mod 6, the others the ones after it.
    const auto onStep = [d](int32_t windowId, int start, bool oddOnly = false) {
        const vdec::DecoderSnapshot s = d->snapshot();
        const vdec::Window* w = s.window(windowId);
        const auto run = s.loops.find(windowId);
        if (!w || run == s.loops.end() || (oddOnly && run->second.turn % 2 == 0))
            return false;
        return w->turnIndex == int((start + run->second.turn * w->division) % 6) + 1 && showsGroup(*w, 6);
    };
    QCOMPARE(CMatrix_SchemeSelect(h, 1, 1, 1), CMATRIX_OK);
    QVERIFY(onStep(1, 1));
    const DeviceInfo_t first = d->snapshot().window(1)->sources.at(1);
    QCOMPARE(first.protocol, 0); // "kst1.0"
    QCOMPARE(QByteArray(first.mainUrl), QByteArray("rtsp://127.0.0.8/0"));
    QCOMPARE(QByteArray(first.userName), QByteArray("viewer"));
    QCOMPARE(first.channel, 3);
    QCOMPARE(first.stream, 1);

    // Sources 1..4 first, then 5, 0, 1, 2, then 3, 4, 5, 0: the next group each time.
    QCOMPARE(turningOf(h, 1).sourceKind, 1);
    QTRY_COMPARE_WITH_TIMEOUT(turningOf(h, 1).turnIndex, 6, scaled(3000));
    // An odd step tells a group move (by 4 of 6) from a move by one source.
    QTRY_VERIFY_WITH_TIMEOUT(onStep(1, 1, true), scaled(3000));

    // Division 1 shows one source at a time, each in turn.
    QCOMPARE(CMatrix_SchemeSelect(h, 3, 1, 5), CMATRIX_OK);
    QVERIFY(onStep(3, 5));
    QTRY_COMPARE_WITH_TIMEOUT(turningOf(h, 3).turnIndex, 1, scaled(3000));
    QTRY_COMPARE_WITH_TIMEOUT(turningOf(h, 3).turnIndex, 2, scaled(3000));
    QVERIFY(onStep(3, 5));
    QCOMPARE(turningOf(h, 2).sourceKind, 0); // the window without a loop
}

void WallTests::loopTurnsAtItsInterval()
{
    WallSdk sdk;
    vdec::VirtualDecoder* d = standardWall(64, sdk, 100);
    QVERIFY(d);
    const CMHANDLE h = sdk.handle();
    const SchemeInfo_t slow = scheme(2, "Slow", 10);
    QCOMPARE(CMatrix_SchemeSet(h, &slow), CMATRIX_OK);
    SchemeDevice_t sources[] = { schemeSource("loop-0"), schemeSource("loop-1") };
    QCOMPARE(CMatrix_SchemeAddDevices(h, 2, sources, 2, true), CMATRIX_OK);

    QCOMPARE(CMatrix_SchemeSelect(h, 1, 2, 0), CMATRIX_OK); // a step a second (100 ms a unit)
    QCOMPARE(CMatrix_SchemeSelect(h, 3, 1, 0), CMATRIX_OK); // ten steps a second
    QTRY_VERIFY_WITH_TIMEOUT(turnOf(d, 3) >= 1, scaled(3000));
    QCOMPARE(turnOf(d, 1), 0);
    QTRY_VERIFY_WITH_TIMEOUT(turnOf(d, 1) >= 1, scaled(5000));
    QVERIFY2(turnOf(d, 3) >= 4, qPrintable(QString("fast loop at turn %1").arg(turnOf(d, 3))));
}

void WallTests::loopStopsAndLeavesWindowEmpty()
{
    WallSdk sdk;
    vdec::VirtualDecoder* d = standardWall(65, sdk);
    QVERIFY(d);
    const CMHANDLE h = sdk.handle();
    QCOMPARE(CMatrix_SchemeSelect(h, 1, 1, 0), CMATRIX_OK);
    QTRY_VERIFY_WITH_TIMEOUT(turnOf(d, 1) >= 1, scaled(3000));
    QCOMPARE(CMatrix_WindowSetDisplayInTurn(h, 1, 1), CMATRIX_OK); // running: nothing to do

    QCOMPARE(CMatrix_WindowSetDisplayInTurn(h, 1, 0), CMATRIX_OK);
    const Turning t = turningOf(h, 1);
    QCOMPARE(t.sourceKind, 0);
    QCOMPARE(t.turnIndex, 0);
    const vdec::DecoderSnapshot s = d->snapshot();
    QVERIFY(s.loops.empty());
    QVERIFY(s.window(1)->sources.empty());
    DeviceInfo_t* bound = nullptr;
    QCOMPARE(CMatrix_WindowDeviceGet(h, 1, &bound), 0);
    CMatrix_Free(h, bound);

    // Stopping a window that does not turn changes nothing in it.
    QCOMPARE(CMatrix_WindowSetDisplayInTurn(h, 2, 0), CMATRIX_OK);
    QCOMPARE(CMatrix_WindowSetDisplayInTurn(h, 1, 0), CMATRIX_OK);
    const DeviceInfo_t kept = source(1, "cam-kept");
    QCOMPARE(CMatrix_WindowDeviceAdd(h, 1, &kept, 1, true), CMATRIX_OK);
    QCOMPARE(CMatrix_WindowSetDisplayInTurn(h, 1, 0), CMATRIX_OK);
    QCOMPARE(QByteArray(d->snapshot().window(1)->sources.at(1).devId), QByteArray("cam-kept"));
}

void WallTests::loopEndsWithItsSchemeOrWindow()
{
    WallSdk sdk;
    vdec::VirtualDecoder* d = standardWall(66, sdk);
    QVERIFY(d);
    const CMHANDLE h = sdk.handle();
    QCOMPARE(CMatrix_SchemeSelect(h, 1, 1, 0), CMATRIX_OK);
    QCOMPARE(CMatrix_SchemeSelect(h, 3, 1, 0), CMATRIX_OK);
    QCOMPARE(d->snapshot().loops.size(), size_t(2));

    // The window goes: its loop goes with it, and a new window of that id does not turn.
    const uint32_t gone[] = { 3 };
    QCOMPARE(CMatrix_WindowDel(h, gone, 1), CMATRIX_OK);
    const MatrixWindow_t again = window(3, 16384, 0, 16384, 16384);
    QCOMPARE(CMatrix_WindowAdd(h, &again, 1, false), CMATRIX_OK);
    QCOMPARE(d->snapshot().loops.count(3), size_t(0));
    QCOMPARE(turningOf(h, 3).sourceKind, 0);

    // Emptying the scheme stops it; deleting the scheme would too.
    QCOMPARE(CMatrix_SchemeAddDevices(h, 1, nullptr, 0, true), CMATRIX_OK);
    QVERIFY(d->snapshot().loops.empty());
    QVERIFY(d->snapshot().window(1)->sources.empty());
    QCOMPARE(turningOf(h, 1).sourceKind, 0);

    SchemeDevice_t one = schemeSource("loop-0");
    QCOMPARE(CMatrix_SchemeAddDevices(h, 1, &one, 1, false), CMATRIX_OK);
    QCOMPARE(CMatrix_SchemeSelect(h, 1, 1, 0), CMATRIX_OK);
    const uint32_t scheme[] = { 1 };
    QCOMPARE(CMatrix_SchemeDel(h, scheme, 1), CMATRIX_OK);
    QVERIFY(d->snapshot().loops.empty());
    QCOMPARE(turningOf(h, 1).sourceKind, 0);
    QVERIFY(d->snapshot().window(1)->sources.empty());
}

void WallTests::schemesAndTheirSources()
{
    WallSdk sdk;
    vdec::VirtualDecoder* d = standardWall(67, sdk);
    QVERIFY(d);
    const CMHANDLE h = sdk.handle();
    const SchemeInfo_t second = scheme(3, "Parking", 30, 2);
    QCOMPARE(CMatrix_SchemeSet(h, &second), CMATRIX_OK);
    SchemeInfo_t* schemes = nullptr;
    QCOMPARE(CMatrix_SchemeGet(h, &schemes), 2);
    QCOMPARE(bytesOf(schemes[0]), bytesOf(scheme(1, "Lobby loop", 1)));
    QCOMPARE(bytesOf(schemes[1]), bytesOf(second));
    QCOMPARE(CMatrix_Free(h, schemes), CMATRIX_OK);

    // Appending keeps what is there; the decoder numbers the sources from 0.
    SchemeDevice_t more[] = { schemeSource("cam-a", "onvif"), schemeSource("cam-b", "") };
    QCOMPARE(CMatrix_SchemeAddDevices(h, 3, more, 1, false), CMATRIX_OK);
    QCOMPARE(CMatrix_SchemeAddDevices(h, 3, more + 1, 1, false), CMATRIX_OK);
    SchemeDevice_t* stored = nullptr;
    QCOMPARE(CMatrix_SchemeGetDevices(h, 3, &stored), 2);
    for (int i = 0; i < 2; ++i) {
        QCOMPARE(stored[i].index, i);
        SchemeDevice_t expected = more[i];
        expected.index = i;
        QCOMPARE(bytesOf(stored[i]), bytesOf(expected));
    }
    QCOMPARE(CMatrix_Free(h, stored), CMATRIX_OK);

    // A source's protocol name becomes the protocol it is played with.
    QCOMPARE(CMatrix_SchemeSelect(h, 1, 3, 0), CMATRIX_OK);
    const vdec::Window* w = nullptr;
    vdec::DecoderSnapshot s = d->snapshot();
    w = s.window(1);
    QCOMPARE(w->sources.at(1).protocol, 2); // "onvif"
    QCOMPARE(QByteArray(w->sources.at(2).devId), QByteArray("cam-b"));

    // Setting a known id again changes the record and keeps the sources.
    const SchemeInfo_t renamed = scheme(3, "Car park", 20, 2);
    QCOMPARE(CMatrix_SchemeSet(h, &renamed), CMATRIX_OK);
    QCOMPARE(bytesOf(d->snapshot().scheme(3)->info), bytesOf(renamed));
    QCOMPARE(d->snapshot().scheme(3)->devices.size(), size_t(2));
    QCOMPARE(CMatrix_SchemeAddDevices(h, 3, more, 1, true), CMATRIX_OK); // reset: one left
    QCOMPARE(d->snapshot().scheme(3)->devices.size(), size_t(1));

    // A new layout deletes every scheme in one call.
    const uint32_t all[] = { 1, 3 };
    QCOMPARE(CMatrix_SchemeDel(h, all, 2), CMATRIX_OK);
    QCOMPARE(CMatrix_SchemeGet(h, &schemes), 0);
    CMatrix_Free(h, schemes);
}
