// Requests the decoder (or the SDK) must refuse, each leaving the state as it was.

#include "SuiteMain.h"
#include "WallRecords.h"

#include <QtTest>

#include <functional>
#include <memory>

using namespace wallrecords;

using Call = std::function<int(CMHANDLE)>;
Q_DECLARE_METATYPE(Call)

namespace {

void row(const char* name, int expected, Call call)
{
    QTest::newRow(name) << call << expected;
}

// Calls with a record that is good but for what `change` does to it.
template <class Record, class Send> Call with(Record record, std::function<void(Record&)> change, Send send)
{
    return [=](CMHANDLE h) {
        Record r = record;
        change(r);
        return send(h, &r);
    };
}

Call schemeWith(std::function<void(SchemeInfo_t&)> change)
{
    return with(scheme(5, "Five", 5), change, CMatrix_SchemeSet);
}

Call sourceWith(uint32_t schemeId, std::function<void(SchemeDevice_t&)> change)
{
    return with(schemeSource("cam-x"), change,
        [schemeId](CMHANDLE h, const SchemeDevice_t* d) { return CMatrix_SchemeAddDevices(h, schemeId, d, 1, false); });
}

Call bannerWith(std::function<void(BannerInfo_t&)> change)
{
    return with(banner("Notice"), change, CMatrix_DisplayBanner);
}

// Plays something in sub-window `sub` of window 1.
template <class Source> Call play(int sub, int (*call)(CMHANDLE, const WindowSlot_t*, Source), Source source)
{
    return [=](CMHANDLE h) {
        const WindowSlot_t slot { 1, sub };
        return call(h, &slot, source);
    };
}

} // namespace

class TestRefusals : public QObject {
    Q_OBJECT

    // One decoder for all rows: each leaves it as it was.
    kvmstest::DecoderFixture fixture_;
    std::unique_ptr<kvmstest::SdkSession> sdk_;
    vdec::VirtualDecoder* decoder_ = nullptr;

private slots:
    void cleanupTestCase()
    {
        sdk_.reset();
        fixture_.cleanup();
    }

    void refusedRequests_data()
    {
        QTest::addColumn<Call>("call");
        QTest::addColumn<int>("expected");
        const int invalid = CMATRIX_ERR_INVALID_PARAM, badName = CMATRIX_ERR_NAME;
        const int noSubWindow = CMATRIX_ERR_SUBWINDOW;

        // One row per way of refusing: each leaves the decoder as it was.
        row("scene id above int", invalid, [](CMHANDLE h) { return CMatrix_SceneCreate(h, 0x80000000u, "Big"); });
        row("scene name not UTF-8", badName, [](CMHANDLE h) { return CMatrix_SceneCreate(h, 2, "caf\xe9"); });

        row("scheme kind 5", invalid, schemeWith([](auto& s) { s.kind = 5; }));
        row("scheme name unterminated", badName, schemeWith([](auto& s) { memset(s.name, 'n', sizeof s.name); }));
        row("source URL unterminated", invalid,
            sourceWith(1, [](auto& d) { memset(d.mainUrl, 'u', sizeof d.mainUrl); }));
        row("too many sources", CMATRIX_ERR_LIMIT, [](CMHANDLE h) {
            const std::vector<SchemeDevice_t> many(251, schemeSource("cam-y"));
            return CMatrix_SchemeAddDevices(h, 1, many.data(), int(many.size()), false); // six already there
        });

        row("loop of a scheme without sources", invalid, [](CMHANDLE h) { return CMatrix_SchemeSelect(h, 1, 2, 0); });
        row("resume a window that never turned", invalid,
            [](CMHANDLE h) { return CMatrix_WindowSetDisplayInTurn(h, 1, 1); });

        row("banner text unterminated", invalid, bannerWith([](auto& b) { memset(b.message, 'm', sizeof b.message); }));

        row("HDMI past the division", noSubWindow, play(5, CMatrix_WindowPlayHdmiIn, 0));
        row("HDMI input past the last", invalid, play(1, CMatrix_WindowPlayHdmiIn, 2));
        row("path leaving the stick", invalid, play(1, CMatrix_WindowPlayFile, "../state.json"));

        row("brightness 101", invalid, [](CMHANDLE h) {
            const ScreenColor c = color(101, 1, 1, 1);
            return CMatrix_SetScreenColor(h, 0, 0, &c);
        });
        row("audio state unknown", invalid, [](CMHANDLE h) {
            const DeviceAudioInfo_t a = audio("loud", 1, 1, 5);
            return CMatrix_SetAudioStatus(h, &a);
        });
    }

    void refusedRequests()
    {
        QFETCH(Call, call);
        QFETCH(int, expected);
        if (!decoder_) {
            sdk_ = std::make_unique<kvmstest::SdkSession>();
            vdec::VirtualDecoder* d = standardWall(fixture_, *sdk_);
            QVERIFY(d);
            QCOMPARE(CMatrix_SceneCreate(sdk_->handle(), 1, "Saved"), CMATRIX_OK);
            const SchemeInfo_t empty = scheme(2, "Empty", 1);
            QCOMPARE(CMatrix_SchemeSet(sdk_->handle(), &empty), CMATRIX_OK);
            decoder_ = d;
        }
        const QString before = statePrint(decoder_->snapshot());

        QCOMPARE(call(sdk_->handle()), expected);
        QCOMPARE(statePrint(decoder_->snapshot()), before);
    }
};

KVMS_TEST_CLASS(TestRefusals)
#include "TestRefusals.moc"
