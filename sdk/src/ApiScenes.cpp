// Scenes: stored pictures of the whole wall.

#include "ApiSupport.h"
#include "Messages.h"

using namespace cmatrix::sdk;
using namespace cmatrix::wire;

extern "C" {

int CMatrix_SceneCreate(CMHANDLE handle, uint32_t sceneId, const char* name)
{
    return withSession(handle, [&](Session& session) {
        if (!name)
            return CMATRIX_ERR_INVALID_PARAM;
        const SceneCreateRequest request { sceneId, name };
        Empty answer;
        return session.call(MessageType::SceneCreate, request, answer);
    });
}

int CMatrix_SceneGet(CMHANDLE handle, SceneInfo_t** scenes)
{
    return withSession(handle, [&](Session& session) {
        if (!scenes)
            return CMATRIX_ERR_INVALID_PARAM;
        *scenes = nullptr;
        SceneList answer;
        const int rc
            = session.callList(MessageType::SceneGet, Empty {}, answer, answer.scenes, session.capacity().maxScenes);
        return rc != CMATRIX_OK ? rc : session.handOut(answer.scenes, scenes);
    });
}

int CMatrix_SceneApply(CMHANDLE handle, uint32_t sceneId)
{
    return withSession(handle, [&](Session& session) {
        const IdRequest request { sceneId };
        Empty answer;
        return session.call(MessageType::SceneApply, request, answer);
    });
}

int CMatrix_SceneDelete(CMHANDLE handle, const uint32_t* sceneIds, int count)
{
    return withSession(handle, [&](Session& session) {
        IdList request;
        if (const int rc = copyIn(sceneIds, count, request.ids); rc != CMATRIX_OK)
            return rc;
        Empty answer;
        return session.call(MessageType::SceneDelete, request, answer);
    });
}

} // extern "C"
