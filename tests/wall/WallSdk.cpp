#include "WallSdk.h"

#include "TestTimeout.h"
#include "core/VirtualDecoder.h"

WallSdk::WallSdk()
    : handle_(CMatrix_Create())
{
}

WallSdk::~WallSdk()
{
    if (handle_)
        CMatrix_Destroy(handle_);
}

int WallSdk::connect(const vdec::VirtualDecoder* decoder)
{
    if (!decoder || !handle_)
        return CMATRIX_ERR_FAILED;
    const vdec::DecoderConfig& c = decoder->config();
    const int rc = CMatrix_Connect(handle_, c.address.toLatin1().constData(), decoder->port(),
        c.adminUser.toUtf8().constData(), c.adminPassword.toUtf8().constData(), kvmstest::scaled(3000));
    if (rc == CMATRIX_OK)
        CMatrix_SetTimeout(handle_, kvmstest::scaled(5000));
    return rc;
}
