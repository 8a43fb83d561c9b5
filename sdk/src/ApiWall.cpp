// The wall: grid, screens and the decoder's role.

#include "ApiSupport.h"
#include "Messages.h"

using namespace cmatrix::sdk;
using namespace cmatrix::wire;

extern "C" {

int CMatrix_GetMatrix(CMHANDLE handle, int* cols, int* rows, char* name, int nameSize)
{
    return withSession(handle, [&](Session& session) {
        if (!cols || !rows || nameSize < 0 || (nameSize > 0 && !name))
            return CMATRIX_ERR_INVALID_PARAM;
        MatrixGeometry answer;
        const int rc = session.call(MessageType::GetMatrix, Empty {}, answer);
        if (rc != CMATRIX_OK)
            return rc;
        *cols = answer.cols;
        *rows = answer.rows;
        copyOut(answer.name, name, nameSize);
        return CMATRIX_OK;
    });
}

int CMatrix_SetMatrix(CMHANDLE handle, int cols, int rows, const char* name)
{
    return withSession(handle, [&](Session& session) {
        if (!name)
            return CMATRIX_ERR_INVALID_PARAM;
        const MatrixGeometry request { cols, rows, name };
        Empty answer;
        return session.call(MessageType::SetMatrix, request, answer);
    });
}

int CMatrix_GetScreens(CMHANDLE handle, ScreenInfo_t** screens)
{
    return withSession(handle, [&](Session& session) {
        if (!screens)
            return CMATRIX_ERR_INVALID_PARAM;
        *screens = nullptr;
        ScreenList answer;
        const int rc = session.callList(
            MessageType::GetScreens, Empty {}, answer, answer.screens, session.capacity().maxScreens);
        return rc != CMATRIX_OK ? rc : session.handOut(answer.screens, screens);
    });
}

int CMatrix_SetScreens(CMHANDLE handle, const ScreenInfo_t* screens, int count, bool reset)
{
    return withSession(handle, [&](Session& session) {
        ScreenList request;
        request.reset = reset;
        if (const int rc = copyIn(screens, count, request.screens); rc != CMATRIX_OK)
            return rc;
        Empty answer;
        return session.call(MessageType::SetScreens, request, answer);
    });
}

int CMatrix_SetStatus(CMHANDLE handle, int status, const char* masterIp)
{
    return withSession(handle, [&](Session& session) {
        const SetStatusRequest request { status, textOf(masterIp) };
        Empty answer;
        return session.call(MessageType::SetStatus, request, answer);
    });
}

} // extern "C"
