#include "SdkHandle.h"

#include "TestTimeout.h"
#include "core/VirtualDecoder.h"

SdkHandle::SdkHandle()
    : handle_(CMatrix_Create())
{
    CMatrix_RegisterCallback(handle_, &SdkHandle::statusCallback, this);
}

SdkHandle::~SdkHandle()
{
    destroy();
}

void SdkHandle::destroy()
{
    if (handle_)
        CMatrix_Destroy(handle_);
    handle_ = nullptr;
}

int SdkHandle::connect(const vdec::VirtualDecoder* decoder)
{
    if (!decoder)
        return CMATRIX_ERR_INVALID_PARAM;
    const vdec::DecoderConfig& c = decoder->config();
    return CMatrix_Connect(handle_, decoder->address().toLatin1().constData(), decoder->port(),
        c.adminUser.toUtf8().constData(), c.adminPassword.toUtf8().constData(), kvmstest::scaled(3000));
}

void SdkHandle::statusCallback(CMHANDLE, int event, void* user)
{
    if (event == CMATRIX_EVENT_DISCONNECTED)
        ++static_cast<SdkHandle*>(user)->losses_;
}
