// Maintenance: firmware, factory reset, output resolution, passwords, configuration
// files and logs.

#include "ApiSupport.h"
#include "LocalFile.h"
#include "Messages.h"

using namespace cmatrix::sdk;
using namespace cmatrix::wire;

namespace {

// Room left in a message for the file name and the lengths around the content.
constexpr size_t kMaxFileBytes = WireHeader::kMaxPayload - 4096;

// Uploads a local file as `type`; the decoder's result is the call's.
int sendFile(Session& session, MessageType type, const char* path)
{
    if (!path || !*path)
        return CMATRIX_ERR_INVALID_PARAM;
    FileTransfer request;
    request.name = LocalFile::baseName(path);
    if (const int rc = LocalFile::read(path, kMaxFileBytes, request.content); rc != CMATRIX_OK)
        return rc;
    Empty answer;
    return session.call(type, request, answer);
}

// Fetches a file the decoder makes (`type`) and saves it at path.
int receiveFile(Session& session, MessageType type, const char* path)
{
    if (!path || !*path)
        return CMATRIX_ERR_INVALID_PARAM;
    FileTransfer answer;
    const int rc = session.call(type, Empty {}, answer);
    return rc != CMATRIX_OK ? rc : LocalFile::write(path, answer.content);
}

} // namespace

extern "C" {

int CMatrix_FirmwareUpdate(CMHANDLE handle, const char* path, CMatrix_UpdateCallback callback, void* user)
{
    return withSession(handle, [&](Session& session) {
        // Set before the upload: the decoder starts reporting as soon as it has the image.
        session.setUpdateCallback(callback, user);
        return sendFile(session, MessageType::FirmwareUpload, path);
    });
}

int CMatrix_FactoryReset(CMHANDLE handle)
{
    return withSession(handle, [&](Session& session) {
        Empty answer;
        return session.call(MessageType::FactoryReset, Empty {}, answer);
    });
}

int CMatrix_GetResolution(CMHANDLE handle, ScreenResolution_t* resolution)
{
    return withSession(handle, [&](Session& session) {
        if (!resolution)
            return CMATRIX_ERR_INVALID_PARAM;
        // The caller's outputIndex says which output: -1 for the setting of all of them.
        ResolutionRecord request { *resolution, 0 };
        ResolutionRecord answer;
        const int rc = session.call(MessageType::GetResolution, request, answer);
        if (rc == CMATRIX_OK)
            *resolution = answer.resolution;
        return rc;
    });
}

int CMatrix_SetResolution(CMHANDLE handle, const ScreenResolution_t* resolution, int setAll)
{
    return withSession(handle, [&](Session& session) {
        if (!resolution)
            return CMATRIX_ERR_INVALID_PARAM;
        const ResolutionRecord request { *resolution, setAll ? 1 : 0 };
        Empty answer;
        return session.call(MessageType::SetResolution, request, answer);
    });
}

int CMatrix_AccountPasswdModify(CMHANDLE handle, const char* user, const char* oldPassword, const char* newPassword)
{
    return withSession(handle, [&](Session& session) {
        if (!user || !*user || !oldPassword || !newPassword)
            return CMATRIX_ERR_INVALID_PARAM;
        const PasswordModifyRequest request { user, oldPassword, newPassword };
        Empty answer;
        return session.call(MessageType::PasswordModify, request, answer);
    });
}

int CMatrix_ImportConfig(CMHANDLE handle, const char* path)
{
    return withSession(handle, [&](Session& session) { return sendFile(session, MessageType::ImportConfig, path); });
}

int CMatrix_ExportConfig(CMHANDLE handle, const char* path)
{
    return withSession(handle, [&](Session& session) { return receiveFile(session, MessageType::ExportConfig, path); });
}

int CMatrix_GetLog(CMHANDLE handle, int type, uint32_t beginTime, uint32_t endTime, LogInfo_t** logs)
{
    return withSession(handle, [&](Session& session) {
        if (!logs || type < LOG_TYPE_ALL || type > LOG_TYPE_SYSTEM || beginTime > endTime)
            return CMATRIX_ERR_INVALID_PARAM;
        *logs = nullptr;
        LogList answer;
        const int rc = session.callList(MessageType::GetLog, LogQuery { type, beginTime, endTime }, answer, answer.logs,
            session.capacity().maxLogs);
        if (rc != CMATRIX_OK)
            return rc;
        for (LogInfo_t& entry : answer.logs) { // read as C strings by the caller
            entry.user[sizeof entry.user - 1] = '\0';
            entry.content[sizeof entry.content - 1] = '\0';
        }
        return session.handOut(answer.logs, logs);
    });
}

int CMatrix_FreeLog(CMHANDLE handle, LogInfo_t* logs)
{
    return withSession(handle, [&](Session& session) { return session.release(logs); });
}

int CMatrix_GetRunLog(CMHANDLE handle, const char* path)
{
    return withSession(handle, [&](Session& session) { return receiveFile(session, MessageType::GetRunLog, path); });
}

} // extern "C"
