#pragma once

#include <cstdint>

namespace cmatrix::wire {

// Requests use these codes; the answer carries the same code with kResponseFlag set
// and the result code in the header's status. Codes never change once released.
enum class MessageType : uint16_t {
    // session (TCP)
    Heartbeat = 0x0001,
    Login = 0x0002,
    Logout = 0x0003,
    SetTime = 0x0004,
    // wall
    GetMatrix = 0x0010,
    SetMatrix = 0x0011,
    GetScreens = 0x0012,
    SetScreens = 0x0013,
    SetStatus = 0x0014,
    // windows
    WindowAdd = 0x0020,
    WindowDel = 0x0021,
    WindowGet = 0x0022,
    WindowMove = 0x0023,
    WindowSetFullScreen = 0x0024,
    WindowGetDivision = 0x0025,
    WindowSetDivision = 0x0026,
    WindowDeviceAdd = 0x0027,
    WindowDeviceDel = 0x0028,
    WindowDeviceGet = 0x0029,
    // scenes
    SceneCreate = 0x0030,
    SceneGet = 0x0031,
    SceneApply = 0x0032,
    SceneDelete = 0x0033,
    // display-in-turn schemes
    SchemeSet = 0x0040,
    SchemeGet = 0x0041,
    SchemeDel = 0x0042,
    SchemeAddDevices = 0x0043,
    SchemeGetDevices = 0x0044,
    SchemeSelect = 0x0045,
    WindowSetDisplayInTurn = 0x0046,
    // banner, inputs, files, colour, audio
    DisplayBanner = 0x0050,
    GetBanner = 0x0051,
    GetHdmiStatus = 0x0052,
    WindowPlayHdmiIn = 0x0053,
    GetFileList = 0x0054,
    WindowPlayFile = 0x0055,
    GetScreenColor = 0x0056,
    SetScreenColor = 0x0057,
    GetAudioStatus = 0x0058,
    SetAudioStatus = 0x0059,
    // media
    StartMediaDistribute = 0x0060,
    StopMediaDistribute = 0x0061,
    MediaFrame = 0x0062,
    DisplayFrame = 0x0063,
    WallSnapshot = 0x0064, // the whole wall as one JPEG, for a mimic
    // maintenance
    FirmwareUpload = 0x0070,
    FirmwareProgress = 0x0071, // pushed by the decoder, request id 0
    FactoryReset = 0x0072,
    GetResolution = 0x0073,
    SetResolution = 0x0074,
    PasswordModify = 0x0075,
    ImportConfig = 0x0076,
    ExportConfig = 0x0077,
    GetLog = 0x0078,
    GetRunLog = 0x0079,
    // discovery and set-up (UDP)
    DiscoveryProbe = 0x0100,
    GetNetwork = 0x0101,
    SetupNetwork = 0x0102,
    Activate = 0x0103,
    DisplayScreen = 0x0104,
};

constexpr uint16_t kResponseFlag = 0x8000;

constexpr uint16_t responseOf(MessageType t)
{
    return uint16_t(uint16_t(t) | kResponseFlag);
}
constexpr bool isResponse(uint16_t code)
{
    return (code & kResponseFlag) != 0;
}
constexpr MessageType requestOf(uint16_t code)
{
    return MessageType(uint16_t(code & ~kResponseFlag));
}

} // namespace cmatrix::wire
