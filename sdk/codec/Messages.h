#pragma once

// Payloads of every message, request and answer. The FIELDS list is the wire order;
// PayloadWriter and PayloadReader walk it, so each layout is written down once.

#include "CMatrixSDK.h"

#include <cstdint>
#include <string>
#include <vector>

#define FIELDS(...)                                                                                                    \
    template <class V> void visit(V& v)                                                                                \
    {                                                                                                                  \
        v(__VA_ARGS__);                                                                                                \
    }                                                                                                                  \
    template <class V> void visit(V& v) const                                                                          \
    {                                                                                                                  \
        v(__VA_ARGS__);                                                                                                \
    }

namespace cmatrix::wire {

using Bytes = std::vector<uint8_t>;

// A message without payload.
struct Empty {
    template <class V> void visit(V&) const { }
};

// ---- session
struct LoginRequest {
    std::string user, password;
    FIELDS(user, password)
};
struct LoginAccepted { // answer of a login: what the decoder can hold (empty from older units)
    MatrixCapacity_t capacity {};
    FIELDS(capacity)
};
struct LoginFailure { // answer of a refused login
    std::string errorJson;
    FIELDS(errorJson)
};
struct SetTimeRequest {
    int32_t year = 0, month = 0, day = 0, hour = 0, minute = 0, second = 0;
    FIELDS(year, month, day, hour, minute, second)
};

// ---- wall
struct MatrixGeometry {
    int32_t cols = 0, rows = 0;
    std::string name;
    FIELDS(cols, rows, name)
};
struct ScreenList {
    std::vector<ScreenInfo_t> screens;
    bool reset = false;
    FIELDS(screens, reset)
};
struct SetStatusRequest {
    int32_t status = 0;
    std::string masterIp;
    FIELDS(status, masterIp)
};

// ---- windows
struct WindowAddRequest {
    std::vector<MatrixWindow_t> windows;
    bool replace = false;
    FIELDS(windows, replace)
};
struct IdList {
    std::vector<uint32_t> ids;
    FIELDS(ids)
};
struct WindowList {
    std::vector<MatrixWindowStatus_t> windows;
    FIELDS(windows)
};
struct WindowMoveRequest {
    MatrixWindow_t window {};
    FIELDS(window)
};
struct FullScreenRequest {
    int32_t windowId = 0, subWindowId = 0, full = 0;
    FIELDS(windowId, subWindowId, full)
};
struct DivisionList {
    std::vector<WindowDivision_t> divisions;
    FIELDS(divisions)
};
struct SetDivisionRequest {
    int32_t windowId = 0, division = 0;
    FIELDS(windowId, division)
};
struct WindowDevices { // WindowDeviceAdd, WindowDeviceDel and the answer of WindowDeviceGet
    int32_t windowId = 0;
    std::vector<DeviceInfo_t> devices;
    bool reset = false;
    FIELDS(windowId, devices, reset)
};
struct WindowIdRequest {
    int32_t windowId = 0;
    FIELDS(windowId)
};

// ---- scenes
struct SceneCreateRequest {
    uint32_t id = 0;
    std::string name;
    FIELDS(id, name)
};
struct SceneList {
    std::vector<SceneInfo_t> scenes;
    FIELDS(scenes)
};
struct IdRequest {
    uint32_t id = 0;
    FIELDS(id)
};

// ---- schemes
struct SchemeRecord {
    SchemeInfo_t scheme {};
    FIELDS(scheme)
};
struct SchemeList {
    std::vector<SchemeInfo_t> schemes;
    FIELDS(schemes)
};
struct SchemeDevices {
    uint32_t schemeId = 0;
    std::vector<SchemeDevice_t> devices;
    bool reset = false;
    FIELDS(schemeId, devices, reset)
};
struct SchemeSelectRequest {
    int32_t windowId = 0;
    uint32_t schemeId = 0;
    int32_t startIndex = 0;
    FIELDS(windowId, schemeId, startIndex)
};
struct DisplayInTurnRequest {
    int32_t windowId = 0, enable = 0;
    FIELDS(windowId, enable)
};

// ---- banner, inputs, files, colour, audio
struct BannerRecord {
    BannerInfo_t banner {};
    FIELDS(banner)
};
struct HdmiStatusRecord {
    HdmiStatus_t status {};
    FIELDS(status)
};
struct PlayHdmiRequest {
    WindowSlot_t slot {};
    int32_t input = 0;
    FIELDS(slot, input)
};
struct FileList {
    std::vector<DevPlayFile_t> files;
    FIELDS(files)
};
struct PlayFileRequest {
    WindowSlot_t slot {};
    std::string path;
    FIELDS(slot, path)
};
struct ScreenColorRecord {
    int32_t col = 0, row = 0;
    ScreenColor color {};
    FIELDS(col, row, color)
};
struct AudioRecord {
    DeviceAudioInfo_t audio {};
    FIELDS(audio)
};

// ---- media
struct StartMediaRequest {
    std::string sourceName;
    int32_t channel = 0;
    FIELDS(sourceName, channel)
};
struct StartMediaAnswer {
    uint32_t mediaId = 0;
    std::string url;
    FIELDS(mediaId, url)
};
struct MediaFrameRequest {
    uint32_t mediaId = 0;
    Bytes frame;
    FIELDS(mediaId, frame)
};
struct DisplayFrameRequest {
    int32_t windowId = 0, channel = 0;
    Bytes frame;
    FIELDS(windowId, channel, frame)
};

struct WallSnapshotRequest {
    int32_t width = 0, height = 0;
    FIELDS(width, height)
};
struct WallSnapshotAnswer {
    Bytes jpeg;
    FIELDS(jpeg)
};

// ---- maintenance
struct FileTransfer { // firmware upload, configuration import and export, run log
    std::string name;
    Bytes content;
    FIELDS(name, content)
};
struct UpdateStatusRecord {
    UpdateStatus_t status {};
    FIELDS(status)
};
struct ResolutionRecord {
    ScreenResolution_t resolution {};
    int32_t setAll = 0;
    FIELDS(resolution, setAll)
};
struct PasswordModifyRequest {
    std::string user, oldPassword, newPassword;
    FIELDS(user, oldPassword, newPassword)
};
struct LogQuery {
    int32_t type = 0;
    uint32_t begin = 0, end = 0;
    FIELDS(type, begin, end)
};
struct LogList {
    std::vector<LogInfo_t> logs;
    FIELDS(logs)
};

// ---- discovery and set-up (UDP)
struct DiscoveryAnswer {
    DeviceInfo_t device {};
    FIELDS(device)
};
struct DeviceIdRequest {
    std::string devId;
    FIELDS(devId)
};
struct NetworkRecord {
    DeviceNetworkCfg_t cfg {};
    FIELDS(cfg)
};
struct SetupNetworkRequest {
    std::string devId, user, password;
    DeviceNetworkCfg_t cfg {};
    FIELDS(devId, user, password, cfg)
};
struct ActivateRequest {
    std::string devId, ip, user, password;
    FIELDS(devId, ip, user, password)
};
struct DisplayScreenRequest {
    std::string ip, user, password;
    int32_t location = 0, seconds = 0;
    FIELDS(ip, user, password, location, seconds)
};

} // namespace cmatrix::wire
