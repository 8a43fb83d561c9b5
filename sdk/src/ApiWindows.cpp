// Windows, their divisions and the sources bound to them.

#include "ApiSupport.h"
#include "Messages.h"

using namespace cmatrix::sdk;
using namespace cmatrix::wire;

extern "C" {

int CMatrix_WindowAdd(CMHANDLE handle, const MatrixWindow_t* windows, int count, bool replace)
{
    return withSession(handle, [&](Session& session) {
        WindowAddRequest request;
        request.replace = replace;
        if (const int rc = copyIn(windows, count, request.windows); rc != CMATRIX_OK)
            return rc;
        Empty answer;
        return session.call(MessageType::WindowAdd, request, answer);
    });
}

int CMatrix_WindowDel(CMHANDLE handle, const uint32_t* windowIds, int count)
{
    return withSession(handle, [&](Session& session) {
        IdList request;
        if (const int rc = copyIn(windowIds, count, request.ids); rc != CMATRIX_OK)
            return rc;
        Empty answer;
        return session.call(MessageType::WindowDel, request, answer);
    });
}

int CMatrix_WindowGet(CMHANDLE handle, MatrixWindowStatus_t** windows)
{
    return withSession(handle, [&](Session& session) {
        if (!windows)
            return CMATRIX_ERR_INVALID_PARAM;
        *windows = nullptr;
        WindowList answer;
        const int rc
            = session.callList(MessageType::WindowGet, Empty {}, answer, answer.windows, session.capacity().maxWindows);
        return rc != CMATRIX_OK ? rc : session.handOut(answer.windows, windows);
    });
}

int CMatrix_WindowMove(CMHANDLE handle, const MatrixWindow_t* window)
{
    return withSession(handle, [&](Session& session) {
        if (!window)
            return CMATRIX_ERR_INVALID_PARAM;
        const WindowMoveRequest request { *window };
        Empty answer;
        return session.call(MessageType::WindowMove, request, answer);
    });
}

int CMatrix_WindowSetFullScreen(CMHANDLE handle, int windowId, int subWindowId, int full)
{
    return withSession(handle, [&](Session& session) {
        const FullScreenRequest request { windowId, subWindowId, full };
        Empty answer;
        return session.call(MessageType::WindowSetFullScreen, request, answer);
    });
}

int CMatrix_WindowGetDivision(CMHANDLE handle, WindowDivision_t** divisions)
{
    return withSession(handle, [&](Session& session) {
        if (!divisions)
            return CMATRIX_ERR_INVALID_PARAM;
        *divisions = nullptr;
        DivisionList answer;
        const int rc = session.callList(
            MessageType::WindowGetDivision, Empty {}, answer, answer.divisions, session.capacity().maxWindows);
        return rc != CMATRIX_OK ? rc : session.handOut(answer.divisions, divisions);
    });
}

int CMatrix_WindowSetDivision(CMHANDLE handle, int windowId, int division)
{
    return withSession(handle, [&](Session& session) {
        const SetDivisionRequest request { windowId, division };
        Empty answer;
        return session.call(MessageType::WindowSetDivision, request, answer);
    });
}

int CMatrix_WindowDeviceAdd(CMHANDLE handle, int windowId, const DeviceInfo_t* devices, int count, bool reset)
{
    return withSession(handle, [&](Session& session) {
        WindowDevices request;
        request.windowId = windowId;
        request.reset = reset;
        if (const int rc = copyIn(devices, count, request.devices); rc != CMATRIX_OK)
            return rc;
        Empty answer;
        return session.call(MessageType::WindowDeviceAdd, request, answer);
    });
}

int CMatrix_WindowDeviceDel(CMHANDLE handle, int windowId, const DeviceInfo_t* devices, int count)
{
    return withSession(handle, [&](Session& session) {
        WindowDevices request;
        request.windowId = windowId;
        if (const int rc = copyIn(devices, count, request.devices); rc != CMATRIX_OK)
            return rc;
        Empty answer;
        return session.call(MessageType::WindowDeviceDel, request, answer);
    });
}

int CMatrix_WindowDeviceGet(CMHANDLE handle, int windowId, DeviceInfo_t** devices)
{
    return withSession(handle, [&](Session& session) {
        if (!devices)
            return CMATRIX_ERR_INVALID_PARAM;
        *devices = nullptr;
        const WindowIdRequest request { windowId };
        WindowDevices answer;
        const int rc = session.callList(
            MessageType::WindowDeviceGet, request, answer, answer.devices, session.capacity().maxDivision);
        return rc != CMATRIX_OK ? rc : session.handOut(answer.devices, devices);
    });
}

} // extern "C"
