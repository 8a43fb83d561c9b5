#include "SdkSession.h"

#include "TestTimeout.h"
#include "core/VirtualDecoder.h"

namespace kvmstest {

SdkSession::SdkSession()
    : handle_(CMatrix_Create())
    , created_(handle_)
{
    CMatrix_RegisterCallback(handle_, &SdkSession::statusCallback, this);
}

SdkSession::~SdkSession()
{
    destroy();
}

int SdkSession::connect(const vdec::VirtualDecoder* decoder, const char* password)
{
    if (!decoder)
        return CMATRIX_ERR_INVALID_PARAM;
    const vdec::DecoderConfig& c = decoder->config();
    const QByteArray admin = c.adminPassword.toUtf8();
    const int rc = connect(decoder->address().toLatin1().constData(), decoder->port(), c.adminUser.toUtf8().constData(),
        password ? password : admin.constData(), scaled(3000));
    if (rc == CMATRIX_OK)
        CMatrix_SetTimeout(handle_, scaled(5000));
    return rc;
}

int SdkSession::connect(const char* ip, unsigned short port, const char* user, const char* password, int timeoutMs)
{
    return CMatrix_Connect(handle_, ip, port, user, password, timeoutMs);
}

int SdkSession::destroy()
{
    const CMHANDLE handle = handle_;
    handle_ = nullptr;
    return handle ? CMatrix_Destroy(handle) : CMATRIX_ERR_INVALID_HANDLE;
}

void SdkSession::onLoss(std::function<void()> action)
{
    std::lock_guard<std::mutex> lock(mutex_);
    onLoss_ = std::move(action);
}

void SdkSession::statusCallback(CMHANDLE handle, int event, void* user)
{
    auto* self = static_cast<SdkSession*>(user);
    if (event != CMATRIX_EVENT_DISCONNECTED || handle != self->created_) {
        ++self->stray_;
        return;
    }
    ++self->losses_;
    std::function<void()> action;
    {
        std::lock_guard<std::mutex> lock(self->mutex_);
        action = self->onLoss_;
    }
    if (action)
        action();
}

} // namespace kvmstest
