#include "InputRequests.h"

#include "RequestRouter.h"
#include "state/UsbStorage.h"
#include "state/Wall.h"

#include "Messages.h"

#include <algorithm>
#include <cstring>

namespace vdec {

using namespace cmatrix::wire;

namespace {

constexpr int kMaxHdmiInputs = int(sizeof(HdmiStatus_t::inputConnected) / sizeof(int32_t));
constexpr int kMaxOutputs = int(sizeof(HdmiStatus_t::outputConnected) / sizeof(int32_t));

int hdmiInputCount(const DecoderConfig& config)
{
    return std::min(config.hdmiInputs.size(), kMaxHdmiInputs);
}

// The window and sub-window a source goes to must exist.
int32_t checkSlot(const Wall& wall, const WindowSlot_t& slot)
{
    const Window* w = wall.windows().find(slot.windowId);
    if (!w)
        return CMATRIX_ERR_WINDOW_NOT_FOUND;
    if (slot.subWindowId < 1 || slot.subWindowId > w->division)
        return CMATRIX_ERR_SUBWINDOW;
    return CMATRIX_OK;
}

template <size_t N> void copyText(const std::string& text, char (&field)[N])
{
    memcpy(field, text.data(), std::min(text.size(), N - 1));
}

Outcome hdmiStatus(RequestContext& c, const Message& m)
{
    return RequestRouter::with<Empty>(m, [&](const Empty&) {
        HdmiStatusRecord answer;
        HdmiStatus_t& s = answer.status;
        s.inputCount = hdmiInputCount(c.config);
        for (int i = 0; i < s.inputCount; ++i)
            s.inputConnected[i] = c.config.hdmiInputs.at(i) ? 1 : 0;
        // Every screen of the grid hangs on an output of its own.
        s.outputCount = std::min(c.wall.cols() * c.wall.rows(), kMaxOutputs);
        for (int i = 0; i < s.outputCount; ++i)
            s.outputConnected[i] = 1;
        return RequestRouter::answer(answer);
    });
}

Outcome playHdmi(RequestContext& c, const Message& m)
{
    return RequestRouter::with<PlayHdmiRequest>(m, [&](const PlayHdmiRequest& r) {
        if (int32_t rc = checkSlot(c.wall, r.slot))
            return RequestRouter::status(rc);
        if (r.input < 0 || r.input >= hdmiInputCount(c.config))
            return RequestRouter::status(CMATRIX_ERR_INVALID_PARAM);
        DeviceInfo_t d {};
        d.subWindow = r.slot.subWindowId;
        copyText("hdmiinput", d.devId);
        copyText("HDMI " + std::to_string(r.input + 1), d.name);
        d.protocol = 0;
        d.channel = 0;
        d.stream = r.input;
        return RequestRouter::status(c.wall.windows().addSources(r.slot.windowId, { d }, false, false));
    });
}

Outcome fileList(RequestContext& c, const Message& m)
{
    return RequestRouter::with<Empty>(
        m, [&](const Empty&) { return RequestRouter::answer(FileList { UsbStorage(c.config.stateDir).list() }); });
}

Outcome playFile(RequestContext& c, const Message& m)
{
    return RequestRouter::with<PlayFileRequest>(m, [&](const PlayFileRequest& r) {
        if (int32_t rc = checkSlot(c.wall, r.slot))
            return RequestRouter::status(rc);
        if (int32_t rc = UsbStorage(c.config.stateDir).checkFile(r.path))
            return RequestRouter::status(rc);
        DeviceInfo_t d {};
        d.subWindow = r.slot.subWindowId;
        copyText("usbfileplay", d.devId);
        const size_t slash = r.path.find_last_of('/');
        copyText(slash == std::string::npos ? r.path : r.path.substr(slash + 1), d.name);
        d.protocol = 0;
        d.channel = 0;
        copyText(r.path, d.mainUrl); // fits: checkFile bounds the length
        return RequestRouter::status(c.wall.windows().addSources(r.slot.windowId, { d }, false, false));
    });
}

} // namespace

void InputRequests::registerIn(RequestRouter& router)
{
    router.add(MessageType::GetHdmiStatus, RequestRouter::None, hdmiStatus);
    router.add(MessageType::WindowPlayHdmiIn, RequestRouter::Mutates, playHdmi);
    router.add(MessageType::GetFileList, RequestRouter::None, fileList);
    router.add(MessageType::WindowPlayFile, RequestRouter::Mutates, playFile);
}

} // namespace vdec
