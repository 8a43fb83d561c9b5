#include "SdkClient.h"

#include "FakeDecoder.h"
#include "InternalApi.h"

SdkClient::SdkClient()
    : handle_(CMatrix_Create())
    , created_(handle_)
{
    CMatrix_RegisterCallback(handle_, &SdkClient::statusCallback, this);
}

SdkClient::~SdkClient()
{
    destroy();
}

int SdkClient::connectTo(const FakeDecoder& decoder, int timeoutMs)
{
    return connectTo("127.0.0.1", decoder.port(), timeoutMs);
}

int SdkClient::connectTo(const char* ip, unsigned short port, int timeoutMs)
{
    return CMatrix_Connect(handle_, ip, port, "admin", "secret", timeoutMs);
}

void SdkClient::setHeartbeat(int intervalMs, int silenceMs)
{
    CMatrixInternal_SetHeartbeat(handle_, intervalMs, silenceMs);
}

int SdkClient::destroy()
{
    CMHANDLE handle = handle_;
    handle_ = nullptr;
    return handle ? CMatrix_Destroy(handle) : CMATRIX_ERR_INVALID_HANDLE;
}

void SdkClient::onLoss(std::function<void()> action)
{
    std::lock_guard<std::mutex> lock(mutex_);
    onLoss_ = std::move(action);
}

void SdkClient::statusCallback(CMHANDLE handle, int event, void* user)
{
    auto* self = static_cast<SdkClient*>(user);
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
