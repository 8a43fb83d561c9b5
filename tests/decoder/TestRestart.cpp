// A power cycle: everything this area stores comes back, and loops turn again.

#include "SuiteMain.h"
#include "TestTimeout.h"
#include "WallRecords.h"

#include <QtTest>

using namespace wallrecords;
using kvmstest::scaled;

class TestRestart : public QObject {
    Q_OBJECT

    kvmstest::DecoderFixture fixture_;

private slots:
    void cleanup() { fixture_.cleanup(); }

    void restartKeepsEverything()
    {
        kvmstest::SdkSession sdk;
        vdec::VirtualDecoder* d = standardWall(fixture_, sdk);
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
        // All of it, but for the turning window, which moves on meanwhile.
        const auto stored = [](vdec::DecoderSnapshot s) {
            s.windows.erase(s.windows.begin()); // window 1
            return statePrint(s);
        };
        QCOMPARE(stored(after), stored(before));
        QCOMPARE(after.scenes.size(), size_t(2));

        // The loop runs in its window again, and turns.
        QCOMPARE(after.window(1)->sourceKind, 1);
        const int64_t turn = after.loops.at(1).turn;
        QTRY_VERIFY_WITH_TIMEOUT(turnOf(d, 1) > turn, scaled(3000));

        // Stopped, it stays stopped through the next power cycle.
        QCOMPARE(CMatrix_WindowSetDisplayInTurn(h, 1, 0), CMATRIX_OK);
        QVERIFY(d->restart());
        QVERIFY(d->snapshot().loops.empty());
        QCOMPARE(d->snapshot().window(1)->sourceKind, 0);
    }
};

KVMS_TEST_CLASS(TestRestart)
#include "TestRestart.moc"
