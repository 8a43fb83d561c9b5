// Handles, connection and session calls.

#include "ApiSupport.h"
#include "InternalApi.h"
#include "Messages.h"

using namespace cmatrix::sdk;
using cmatrix::wire::MessageType;

extern "C" {

CMHANDLE CMatrix_Create(void)
{
    try {
        return HandleRegistry::instance().create();
    } catch (...) {
        return nullptr;
    }
}

int CMatrix_Destroy(CMHANDLE handle)
{
    try {
        const std::shared_ptr<Session> session = HandleRegistry::instance().remove(handle);
        if (!session)
            return CMATRIX_ERR_INVALID_HANDLE;
        // Calls still running on other threads hold the session; they fail fast once
        // its connections are closed, and the last of them frees it.
        session->shutdown();
        return CMATRIX_OK;
    } catch (...) {
        return CMATRIX_ERR_FAILED;
    }
}

int CMatrix_RegisterCallback(CMHANDLE handle, CMatrix_StatusCallback callback, void* user)
{
    return withSession(handle, [&](Session& session) {
        session.setCallback(callback, user);
        return CMATRIX_OK;
    });
}

int CMatrix_Connect(
    CMHANDLE handle, const char* ip, unsigned short port, const char* user, const char* password, int timeoutMs)
{
    return withSession(handle, [&](Session& session) {
        if (!ip || !user || !password || port == 0 || timeoutMs <= 0)
            return CMATRIX_ERR_INVALID_PARAM;
        return session.connect(ip, port, user, password, timeoutMs);
    });
}

int CMatrix_GetLoginErrMsg(CMHANDLE handle, char* buffer, int size)
{
    return withSession(handle, [&](Session& session) {
        if (!buffer || size <= 0)
            return CMATRIX_ERR_INVALID_PARAM;
        std::string text;
        if (!session.loginError(text))
            return CMATRIX_ERR_FAILED;
        copyOut(text, buffer, size);
        return CMATRIX_OK;
    });
}

int CMatrix_SetTime(CMHANDLE handle, int year, int month, int day, int hour, int minute, int second)
{
    return withSession(handle, [&](Session& session) {
        const cmatrix::wire::SetTimeRequest request { year, month, day, hour, minute, second };
        cmatrix::wire::Empty answer;
        return session.call(MessageType::SetTime, request, answer);
    });
}

int CMatrix_Disconnect(CMHANDLE handle)
{
    return withSession(handle, [&](Session& session) {
        session.disconnect();
        return CMATRIX_OK;
    });
}

int CMatrix_SetTimeout(CMHANDLE handle, int timeoutMs)
{
    return withSession(handle, [&](Session& session) {
        if (timeoutMs <= 0)
            return CMATRIX_ERR_INVALID_PARAM;
        session.setTimeout(timeoutMs);
        return CMATRIX_OK;
    });
}

int CMatrix_GetCapacity(CMHANDLE handle, MatrixCapacity_t* capacity)
{
    return withSession(handle, [&](Session& session) {
        if (!capacity)
            return CMATRIX_ERR_INVALID_PARAM;
        *capacity = session.capacity();
        return CMATRIX_OK;
    });
}

int CMatrix_Free(CMHANDLE handle, void* list)
{
    return withSession(handle, [&](Session& session) { return session.release(list); });
}

int CMatrixInternal_SetHeartbeat(CMHANDLE handle, int intervalMs, int silenceMs)
{
    return withSession(handle, [&](Session& session) {
        if (intervalMs <= 0 || silenceMs <= 0)
            return CMATRIX_ERR_INVALID_PARAM;
        session.setTiming({ std::chrono::milliseconds(intervalMs), std::chrono::milliseconds(silenceMs) });
        return CMATRIX_OK;
    });
}

} // extern "C"
