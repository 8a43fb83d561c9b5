// The decoder's own inputs: HDMI connectors and files on its USB storage.

#include "ApiSupport.h"
#include "Messages.h"

using namespace cmatrix::sdk;
using namespace cmatrix::wire;

extern "C" {

int CMatrix_GetHdmiIn_OutStatus(CMHANDLE handle, HdmiStatus_t* status)
{
    return withSession(handle, [&](Session& session) {
        if (!status)
            return CMATRIX_ERR_INVALID_PARAM;
        HdmiStatusRecord answer;
        const int rc = session.call(MessageType::GetHdmiStatus, Empty {}, answer);
        if (rc == CMATRIX_OK)
            *status = answer.status;
        return rc;
    });
}

int CMatrix_WindowPlayHdmiIn(CMHANDLE handle, const WindowSlot_t* window, int input)
{
    return withSession(handle, [&](Session& session) {
        if (!window)
            return CMATRIX_ERR_INVALID_PARAM;
        const PlayHdmiRequest request { *window, input };
        Empty answer;
        return session.call(MessageType::WindowPlayHdmiIn, request, answer);
    });
}

int CMatrix_GetFileList(CMHANDLE handle, DevPlayFile_t** files)
{
    return withSession(handle, [&](Session& session) {
        if (!files)
            return CMATRIX_ERR_INVALID_PARAM;
        *files = nullptr;
        FileList answer;
        const int rc
            = session.callList(MessageType::GetFileList, Empty {}, answer, answer.files, session.capacity().maxFiles);
        return rc != CMATRIX_OK ? rc : session.handOut(answer.files, files);
    });
}

int CMatrix_WindowPlayFile(CMHANDLE handle, const WindowSlot_t* window, const char* path)
{
    return withSession(handle, [&](Session& session) {
        if (!window || !path)
            return CMATRIX_ERR_INVALID_PARAM;
        const PlayFileRequest request { *window, path };
        Empty answer;
        return session.call(MessageType::WindowPlayFile, request, answer);
    });
}

} // extern "C"
