// Requests the decoder (or the SDK) must refuse, each leaving the state as it was.

#include "WallRecords.h"
#include "WallSdk.h"
#include "WallTests.h"

#include <QtTest>

#include <functional>

using namespace wallrecords;

using Call = std::function<int(CMHANDLE)>;
Q_DECLARE_METATYPE(Call)

namespace {

void row(const char* name, int expected, Call call)
{
    QTest::newRow(name) << call << expected;
}

int createScene(CMHANDLE h, uint32_t id, const char* name)
{
    return CMatrix_SceneCreate(h, id, name);
}

int setScheme(CMHANDLE h, const std::function<void(SchemeInfo_t&)>& change)
{
    SchemeInfo_t s = scheme(5, "Five", 5);
    change(s);
    return CMatrix_SchemeSet(h, &s);
}

int addSchemeSource(CMHANDLE h, uint32_t id, const std::function<void(SchemeDevice_t&)>& change)
{
    SchemeDevice_t d = schemeSource("cam-x");
    change(d);
    return CMatrix_SchemeAddDevices(h, id, &d, 1, false);
}

int showBanner(CMHANDLE h, const std::function<void(BannerInfo_t&)>& change)
{
    BannerInfo_t b = banner("Notice");
    change(b);
    return CMatrix_DisplayBanner(h, &b);
}

int playHdmi(CMHANDLE h, int windowId, int subWindowId, int input)
{
    const WindowSlot_t slot { windowId, subWindowId };
    return CMatrix_WindowPlayHdmiIn(h, &slot, input);
}

int playFile(CMHANDLE h, int windowId, int subWindowId, const char* path)
{
    const WindowSlot_t slot { windowId, subWindowId };
    return CMatrix_WindowPlayFile(h, &slot, path);
}

int setColor(CMHANDLE h, int col, int row, const ScreenColor& c)
{
    return CMatrix_SetScreenColor(h, col, row, &c);
}

int setAudio(CMHANDLE h, const DeviceAudioInfo_t& a)
{
    return CMatrix_SetAudioStatus(h, &a);
}

} // namespace

void WallTests::refusedRequests_data()
{
    QTest::addColumn<Call>("call");
    QTest::addColumn<int>("expected");
    const auto keep = [](auto&) {};

    // scenes
    row("apply unknown scene", CMATRIX_ERR_SCENE_NOT_FOUND, [](CMHANDLE h) { return CMatrix_SceneApply(h, 2); });
    row("delete with an unknown scene", CMATRIX_ERR_SCENE_NOT_FOUND, [](CMHANDLE h) {
        const uint32_t ids[] = { 1, 2 };
        return CMatrix_SceneDelete(h, ids, 2);
    });
    row("scene id 0", CMATRIX_ERR_INVALID_PARAM, [](CMHANDLE h) { return createScene(h, 0, "Zero"); });
    row("scene id above int", CMATRIX_ERR_INVALID_PARAM, [](CMHANDLE h) { return createScene(h, 0x80000000u, "Big"); });
    row("empty scene name", CMATRIX_ERR_NAME, [](CMHANDLE h) { return createScene(h, 2, ""); });
    row("scene name of 100 bytes", CMATRIX_ERR_NAME,
        [](CMHANDLE h) { return createScene(h, 2, QByteArray(100, 's').constData()); });
    row("scene name not UTF-8", CMATRIX_ERR_NAME, [](CMHANDLE h) { return createScene(h, 2, "caf\xe9"); });
    row("scene name null", CMATRIX_ERR_INVALID_PARAM, [](CMHANDLE h) { return createScene(h, 2, nullptr); });

    // schemes
    row("scheme id 0", CMATRIX_ERR_INVALID_PARAM, [](CMHANDLE h) { return setScheme(h, [](auto& s) { s.id = 0; }); });
    row("scheme kind 0", CMATRIX_ERR_INVALID_PARAM,
        [](CMHANDLE h) { return setScheme(h, [](auto& s) { s.kind = 0; }); });
    row("scheme kind 5", CMATRIX_ERR_INVALID_PARAM,
        [](CMHANDLE h) { return setScheme(h, [](auto& s) { s.kind = 5; }); });
    row("scheme interval 0", CMATRIX_ERR_INVALID_PARAM,
        [](CMHANDLE h) { return setScheme(h, [](auto& s) { s.interval = 0; }); });
    row("scheme name unterminated", CMATRIX_ERR_NAME,
        [](CMHANDLE h) { return setScheme(h, [](auto& s) { memset(s.name, 'n', sizeof s.name); }); });
    row("scheme name empty", CMATRIX_ERR_NAME, [](CMHANDLE h) { return setScheme(h, [](auto& s) { s.name[0] = 0; }); });
    row("scheme record null", CMATRIX_ERR_INVALID_PARAM, [](CMHANDLE h) { return CMatrix_SchemeSet(h, nullptr); });
    row("delete unknown scheme", CMATRIX_ERR_SCHEME_NOT_FOUND, [](CMHANDLE h) {
        const uint32_t ids[] = { 1, 9 };
        return CMatrix_SchemeDel(h, ids, 2);
    });
    row("sources of unknown scheme", CMATRIX_ERR_SCHEME_NOT_FOUND,
        [keep](CMHANDLE h) { return addSchemeSource(h, 9, keep); });
    row("source URL unterminated", CMATRIX_ERR_INVALID_PARAM,
        [](CMHANDLE h) { return addSchemeSource(h, 1, [](auto& d) { memset(d.mainUrl, 'u', sizeof d.mainUrl); }); });
    row("source id unterminated", CMATRIX_ERR_INVALID_PARAM,
        [](CMHANDLE h) { return addSchemeSource(h, 1, [](auto& d) { memset(d.devId, 'd', sizeof d.devId); }); });
    row("too many sources", CMATRIX_ERR_LIMIT, [](CMHANDLE h) {
        const std::vector<SchemeDevice_t> many(251, schemeSource("cam-y"));
        return CMatrix_SchemeAddDevices(h, 1, many.data(), int(many.size()), false); // six already there
    });
    row("list sources of unknown scheme", CMATRIX_ERR_SCHEME_NOT_FOUND, [](CMHANDLE h) {
        SchemeDevice_t* devices = nullptr;
        return CMatrix_SchemeGetDevices(h, 9, &devices);
    });

    // loops
    row("loop in unknown window", CMATRIX_ERR_WINDOW_NOT_FOUND,
        [](CMHANDLE h) { return CMatrix_SchemeSelect(h, 9, 1, 0); });
    row("loop of unknown scheme", CMATRIX_ERR_SCHEME_NOT_FOUND,
        [](CMHANDLE h) { return CMatrix_SchemeSelect(h, 1, 9, 0); });
    row("loop start past the end", CMATRIX_ERR_INVALID_PARAM,
        [](CMHANDLE h) { return CMatrix_SchemeSelect(h, 1, 1, 6); });
    row("loop start negative", CMATRIX_ERR_INVALID_PARAM, [](CMHANDLE h) { return CMatrix_SchemeSelect(h, 1, 1, -1); });
    row("loop of a scheme without sources", CMATRIX_ERR_INVALID_PARAM,
        [](CMHANDLE h) { return CMatrix_SchemeSelect(h, 1, 2, 0); });
    row("stop in unknown window", CMATRIX_ERR_WINDOW_NOT_FOUND,
        [](CMHANDLE h) { return CMatrix_WindowSetDisplayInTurn(h, 9, 0); });
    row("resume a window that never turned", CMATRIX_ERR_INVALID_PARAM,
        [](CMHANDLE h) { return CMatrix_WindowSetDisplayInTurn(h, 1, 1); });
    row("display in turn 2", CMATRIX_ERR_INVALID_PARAM,
        [](CMHANDLE h) { return CMatrix_WindowSetDisplayInTurn(h, 1, 2); });

    // banner
    row("banner without width", CMATRIX_ERR_GEOMETRY,
        [](CMHANDLE h) { return showBanner(h, [](auto& b) { b.w = 0; }); });
    row("banner off the wall", CMATRIX_ERR_GEOMETRY,
        [](CMHANDLE h) { return showBanner(h, [](auto& b) { b.y = 32000; }); });
    row("hidden banner off the wall", CMATRIX_ERR_GEOMETRY, [](CMHANDLE h) {
        return showBanner(h, [](auto& b) {
            b.show = 0;
            b.x = -1;
        });
    });
    row("banner font 0", CMATRIX_ERR_INVALID_PARAM,
        [](CMHANDLE h) { return showBanner(h, [](auto& b) { b.fontSize = 0; }); });
    row("banner text unterminated", CMATRIX_ERR_INVALID_PARAM,
        [](CMHANDLE h) { return showBanner(h, [](auto& b) { memset(b.message, 'm', sizeof b.message); }); });
    row("banner show 2", CMATRIX_ERR_INVALID_PARAM,
        [](CMHANDLE h) { return showBanner(h, [](auto& b) { b.show = 2; }); });
    row("banner read into null", CMATRIX_ERR_INVALID_PARAM, [](CMHANDLE h) { return CMatrix_GetBanner(h, nullptr); });

    // HDMI
    row("HDMI to unknown window", CMATRIX_ERR_WINDOW_NOT_FOUND, [](CMHANDLE h) { return playHdmi(h, 9, 1, 0); });
    row("HDMI to sub-window 0", CMATRIX_ERR_SUBWINDOW, [](CMHANDLE h) { return playHdmi(h, 1, 0, 0); });
    row("HDMI past the division", CMATRIX_ERR_SUBWINDOW, [](CMHANDLE h) { return playHdmi(h, 1, 5, 0); });
    row("HDMI input past the last", CMATRIX_ERR_INVALID_PARAM, [](CMHANDLE h) { return playHdmi(h, 1, 1, 2); });
    row("HDMI input negative", CMATRIX_ERR_INVALID_PARAM, [](CMHANDLE h) { return playHdmi(h, 1, 1, -1); });

    // USB files
    row("file not on the stick", CMATRIX_ERR_FILE_NOT_FOUND, [](CMHANDLE h) { return playFile(h, 1, 1, "none.mp4"); });
    row("folder instead of a file", CMATRIX_ERR_FILE_NOT_FOUND,
        [](CMHANDLE h) { return playFile(h, 1, 1, "System Volume Information"); });
    row("path leaving the stick", CMATRIX_ERR_INVALID_PARAM,
        [](CMHANDLE h) { return playFile(h, 1, 1, "../state.json"); });
    row("empty path", CMATRIX_ERR_INVALID_PARAM, [](CMHANDLE h) { return playFile(h, 1, 1, ""); });
    row("path too long", CMATRIX_ERR_INVALID_PARAM,
        [](CMHANDLE h) { return playFile(h, 1, 1, QByteArray(1024, 'p').constData()); });
    row("file to unknown window", CMATRIX_ERR_WINDOW_NOT_FOUND,
        [](CMHANDLE h) { return playFile(h, 9, 1, "none.mp4"); });
    row("file to a sub-window past the division", CMATRIX_ERR_SUBWINDOW,
        [](CMHANDLE h) { return playFile(h, 3, 2, "none.mp4"); });

    // screen colour
    row("colour of a column past the grid", CMATRIX_ERR_INVALID_PARAM,
        [](CMHANDLE h) { return setColor(h, 2, 0, color(1, 1, 1, 1)); });
    row("colour of row -1", CMATRIX_ERR_INVALID_PARAM,
        [](CMHANDLE h) { return setColor(h, 0, -1, color(1, 1, 1, 1)); });
    row("brightness 101", CMATRIX_ERR_INVALID_PARAM, [](CMHANDLE h) { return setColor(h, 0, 0, color(101, 1, 1, 1)); });
    row("hue -1", CMATRIX_ERR_INVALID_PARAM, [](CMHANDLE h) { return setColor(h, 0, 0, color(1, 1, 1, -1)); });
    row("read colour past the grid", CMATRIX_ERR_INVALID_PARAM, [](CMHANDLE h) {
        ScreenColor c {};
        return CMatrix_GetScreenColor(h, 0, 2, &c);
    });

    // audio
    row("audio state unknown", CMATRIX_ERR_INVALID_PARAM,
        [](CMHANDLE h) { return setAudio(h, audio("loud", 1, 1, 5)); });
    row("audio state unterminated", CMATRIX_ERR_INVALID_PARAM, [](CMHANDLE h) {
        DeviceAudioInfo_t a = audio("open", 1, 1, 5);
        memset(a.state, 'o', sizeof a.state);
        return setAudio(h, a);
    });
    row("audio from unknown window", CMATRIX_ERR_WINDOW_NOT_FOUND,
        [](CMHANDLE h) { return setAudio(h, audio("open", 9, 1, 5)); });
    row("audio from sub-window past the division", CMATRIX_ERR_SUBWINDOW,
        [](CMHANDLE h) { return setAudio(h, audio("open", 1, 5, 5)); });
    row("volume 101", CMATRIX_ERR_INVALID_PARAM, [](CMHANDLE h) { return setAudio(h, audio("close", 0, 0, 101)); });
}

void WallTests::refusedRequests()
{
    QFETCH(Call, call);
    QFETCH(int, expected);
    if (!validationDecoder_) {
        validationSdk_ = std::make_unique<WallSdk>();
        vdec::VirtualDecoder* d = standardWall(validationFixture_, 73, *validationSdk_, 40);
        QVERIFY(d);
        QCOMPARE(CMatrix_SceneCreate(validationSdk_->handle(), 1, "Saved"), CMATRIX_OK);
        const SchemeInfo_t empty = scheme(2, "Empty", 1);
        QCOMPARE(CMatrix_SchemeSet(validationSdk_->handle(), &empty), CMATRIX_OK);
        validationDecoder_ = d;
    }
    const QByteArray before = statePrint(validationDecoder_->snapshot());

    QCOMPARE(call(validationSdk_->handle()), expected);
    QCOMPARE(statePrint(validationDecoder_->snapshot()), before);
}
