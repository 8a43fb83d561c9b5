// What the wall shows besides its windows: the banner, screen colours and audio.

#include "ApiSupport.h"
#include "Messages.h"

using namespace cmatrix::sdk;
using namespace cmatrix::wire;

extern "C" {

int CMatrix_DisplayBanner(CMHANDLE handle, const BannerInfo_t* banner)
{
    return withSession(handle, [&](Session& session) {
        if (!banner)
            return CMATRIX_ERR_INVALID_PARAM;
        const BannerRecord request { *banner };
        Empty answer;
        return session.call(MessageType::DisplayBanner, request, answer);
    });
}

int CMatrix_GetBanner(CMHANDLE handle, BannerInfo_t* banner)
{
    return withSession(handle, [&](Session& session) {
        if (!banner)
            return CMATRIX_ERR_INVALID_PARAM;
        BannerRecord answer;
        const int rc = session.call(MessageType::GetBanner, Empty {}, answer);
        if (rc == CMATRIX_OK)
            *banner = answer.banner;
        return rc;
    });
}

int CMatrix_GetScreenColor(CMHANDLE handle, int col, int row, ScreenColor* color)
{
    return withSession(handle, [&](Session& session) {
        if (!color)
            return CMATRIX_ERR_INVALID_PARAM;
        const ScreenColorRecord request { col, row, {} };
        ScreenColorRecord answer;
        const int rc = session.call(MessageType::GetScreenColor, request, answer);
        if (rc == CMATRIX_OK)
            *color = answer.color;
        return rc;
    });
}

int CMatrix_SetScreenColor(CMHANDLE handle, int col, int row, const ScreenColor* color)
{
    return withSession(handle, [&](Session& session) {
        if (!color)
            return CMATRIX_ERR_INVALID_PARAM;
        const ScreenColorRecord request { col, row, *color };
        Empty answer;
        return session.call(MessageType::SetScreenColor, request, answer);
    });
}

int CMatrix_GetAudioStatus(CMHANDLE handle, DeviceAudioInfo_t* audio)
{
    return withSession(handle, [&](Session& session) {
        if (!audio)
            return CMATRIX_ERR_INVALID_PARAM;
        AudioRecord answer;
        const int rc = session.call(MessageType::GetAudioStatus, Empty {}, answer);
        if (rc == CMATRIX_OK)
            *audio = answer.audio;
        return rc;
    });
}

int CMatrix_SetAudioStatus(CMHANDLE handle, const DeviceAudioInfo_t* audio)
{
    return withSession(handle, [&](Session& session) {
        if (!audio)
            return CMATRIX_ERR_INVALID_PARAM;
        const AudioRecord request { *audio };
        Empty answer;
        return session.call(MessageType::SetAudioStatus, request, answer);
    });
}

} // extern "C"
