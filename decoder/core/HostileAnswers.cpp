#include "HostileAnswers.h"

#include "Messages.h"
#include "PayloadWriter.h"

#include <algorithm>
#include <climits>
#include <cstring>

namespace vdec {

using namespace cmatrix::wire;

namespace {

template <class Body> std::vector<uint8_t> encoded(const Body& body)
{
    std::vector<uint8_t> out;
    PayloadWriter writer(out);
    body.visit(writer);
    return out;
}

} // namespace

int32_t HostileAnswers::extremeInt()
{
    static constexpr int32_t kValues[]
        = { 0, 1, -1, 25, 26, 32767, 32768, 65535, 0x7FFFFFFF, INT32_MIN, 4096, 16, 100000 };
    if (random_() % 4 == 0)
        return int32_t(random_());
    return kValues[random_() % (sizeof kValues / sizeof kValues[0])];
}

uint32_t HostileAnswers::count()
{
    // Mostly around what a wall holds, sometimes far past it. The largest lists stay a few MiB
    // on the wire, so a thousand answers pass quickly.
    static constexpr uint32_t kCounts[] = { 0, 1, 25, 26, 64, 256, 272, 273, 1000, 4096, 65535, 100000 };
    return kCounts[random_() % (sizeof kCounts / sizeof kCounts[0])];
}

template <class T> T HostileAnswers::record()
{
    // Every byte set, texts included: no field ends with a NUL where a reader expects one.
    T r;
    std::memset(&r, 'A' + int(random_() % 26), sizeof r);
    return r;
}

std::optional<std::vector<uint8_t>> HostileAnswers::answer(Type type)
{
    constexpr uint32_t kMaxListBytes = 4u << 20;
    const auto n
        = [this, count = count()](size_t recordSize) { return std::min(count, uint32_t(kMaxListBytes / recordSize)); };
    switch (type) {
    case Type::GetMatrix:
        return encoded(MatrixGeometry { extremeInt(), extremeInt(), std::string(random_() % 2 ? 64 : 4096, 'W') });
    case Type::WindowGet: {
        WindowList list;
        for (uint32_t i = 0; i < n(sizeof(MatrixWindowStatus_t)); ++i) {
            MatrixWindowStatus_t w = record<MatrixWindowStatus_t>();
            w.window.id = uint32_t(random_() % 3 == 0 ? extremeInt() : int32_t(i + 1));
            w.window.floating = uint8_t(random_() % 2);
            w.window.x = extremeInt();
            w.window.y = extremeInt();
            w.window.w = extremeInt();
            w.window.h = extremeInt();
            w.sourceKind = int32_t(random_() % 2);
            w.turnIndex = extremeInt();
            w.layer = extremeInt();
            list.windows.push_back(w);
        }
        return encoded(list);
    }
    case Type::WindowGetDivision: {
        DivisionList list;
        for (uint32_t i = 0; i < n(sizeof(WindowDivision_t)); ++i)
            list.divisions.push_back(WindowDivision_t { int32_t(i + 1), extremeInt() });
        return encoded(list);
    }
    case Type::WindowDeviceGet: {
        WindowDevices list;
        for (uint32_t i = 0; i < n(sizeof(DeviceInfo_t)); ++i) {
            DeviceInfo_t d = record<DeviceInfo_t>();
            d.subWindow = random_() % 2 ? int32_t(i + 1) : extremeInt();
            d.protocol = extremeInt();
            list.devices.push_back(d);
        }
        return encoded(list);
    }
    case Type::SceneGet: {
        SceneList list;
        for (uint32_t i = 0; i < n(sizeof(SceneInfo_t)); ++i)
            list.scenes.push_back(record<SceneInfo_t>());
        return encoded(list);
    }
    case Type::SchemeGet: {
        SchemeList list;
        for (uint32_t i = 0; i < n(sizeof(SchemeInfo_t)); ++i)
            list.schemes.push_back(record<SchemeInfo_t>());
        return encoded(list);
    }
    case Type::SchemeGetDevices: {
        SchemeDevices list;
        for (uint32_t i = 0; i < n(sizeof(SchemeDevice_t)); ++i)
            list.devices.push_back(record<SchemeDevice_t>());
        return encoded(list);
    }
    case Type::GetScreens: {
        ScreenList list;
        for (uint32_t i = 0; i < n(sizeof(ScreenInfo_t)); ++i)
            list.screens.push_back(record<ScreenInfo_t>());
        return encoded(list);
    }
    case Type::GetFileList: {
        FileList list;
        for (uint32_t i = 0; i < n(sizeof(DevPlayFile_t)); ++i)
            list.files.push_back(record<DevPlayFile_t>());
        return encoded(list);
    }
    case Type::GetBanner: {
        BannerInfo_t banner = record<BannerInfo_t>();
        banner.x = extremeInt();
        banner.w = extremeInt();
        banner.fontSize = extremeInt();
        return encoded(BannerRecord { banner });
    }
    default:
        return std::nullopt;
    }
}

} // namespace vdec
