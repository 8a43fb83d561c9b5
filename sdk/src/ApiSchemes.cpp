// Display-in-turn schemes and the loops they run in windows.

#include "ApiSupport.h"
#include "Messages.h"

using namespace cmatrix::sdk;
using namespace cmatrix::wire;

extern "C" {

int CMatrix_SchemeSet(CMHANDLE handle, const SchemeInfo_t* scheme)
{
    return withSession(handle, [&](Session& session) {
        if (!scheme)
            return CMATRIX_ERR_INVALID_PARAM;
        const SchemeRecord request { *scheme };
        Empty answer;
        return session.call(MessageType::SchemeSet, request, answer);
    });
}

int CMatrix_SchemeGet(CMHANDLE handle, SchemeInfo_t** schemes)
{
    return withSession(handle, [&](Session& session) {
        if (!schemes)
            return CMATRIX_ERR_INVALID_PARAM;
        *schemes = nullptr;
        SchemeList answer;
        const int rc
            = session.callList(MessageType::SchemeGet, Empty {}, answer, answer.schemes, session.capacity().maxSchemes);
        return rc != CMATRIX_OK ? rc : session.handOut(answer.schemes, schemes);
    });
}

int CMatrix_SchemeDel(CMHANDLE handle, const uint32_t* schemeIds, int count)
{
    return withSession(handle, [&](Session& session) {
        IdList request;
        if (const int rc = copyIn(schemeIds, count, request.ids); rc != CMATRIX_OK)
            return rc;
        Empty answer;
        return session.call(MessageType::SchemeDel, request, answer);
    });
}

int CMatrix_SchemeAddDevices(CMHANDLE handle, uint32_t schemeId, const SchemeDevice_t* devices, int count, bool reset)
{
    return withSession(handle, [&](Session& session) {
        SchemeDevices request;
        request.schemeId = schemeId;
        request.reset = reset;
        if (const int rc = copyIn(devices, count, request.devices); rc != CMATRIX_OK)
            return rc;
        Empty answer;
        return session.call(MessageType::SchemeAddDevices, request, answer);
    });
}

int CMatrix_SchemeGetDevices(CMHANDLE handle, uint32_t schemeId, SchemeDevice_t** devices)
{
    return withSession(handle, [&](Session& session) {
        if (!devices)
            return CMATRIX_ERR_INVALID_PARAM;
        *devices = nullptr;
        const IdRequest request { schemeId };
        SchemeDevices answer;
        const int rc = session.callList(
            MessageType::SchemeGetDevices, request, answer, answer.devices, session.capacity().maxSchemeDevices);
        return rc != CMATRIX_OK ? rc : session.handOut(answer.devices, devices);
    });
}

int CMatrix_SchemeSelect(CMHANDLE handle, int windowId, uint32_t schemeId, int startIndex)
{
    return withSession(handle, [&](Session& session) {
        const SchemeSelectRequest request { windowId, schemeId, startIndex };
        Empty answer;
        return session.call(MessageType::SchemeSelect, request, answer);
    });
}

int CMatrix_WindowSetDisplayInTurn(CMHANDLE handle, int windowId, int enable)
{
    return withSession(handle, [&](Session& session) {
        const DisplayInTurnRequest request { windowId, enable };
        Empty answer;
        return session.call(MessageType::WindowSetDisplayInTurn, request, answer);
    });
}

} // extern "C"
