#include "SdkCallTap.h"

#include "CMatrixSDK.h"

#include <dlfcn.h>

#include <mutex>

namespace {

// Noted from the capture thread, read from the test's: a standard mutex, whose locking
// ThreadSanitizer sees (it cannot see QMutex's, inside the uninstrumented Qt library).
struct Tap {
    std::mutex mutex;
    QList<SdkCall> calls;
    int count = 0;
};

Tap& tap()
{
    static Tap instance;
    return instance;
}

void note(SdkCall call)
{
    Tap& t = tap();
    std::lock_guard<std::mutex> lock(t.mutex);
    ++t.count;
    t.calls.append(std::move(call));
    while (t.calls.size() > SdkCallTap::kKept)
        t.calls.removeFirst();
}

// The SDK library's own definition, next after this program's in the lookup order.
template <typename F> F real(const char* name)
{
    void* symbol = dlsym(RTLD_NEXT, name);
    if (!symbol)
        qFatal("SDK function %s not found behind the tap", name);
    return reinterpret_cast<F>(symbol);
}

QByteArray bytes(const unsigned char* frame, int length)
{
    return frame && length > 0 ? QByteArray(reinterpret_cast<const char*>(frame), length) : QByteArray();
}

} // namespace

void SdkCallTap::clear()
{
    Tap& t = tap();
    std::lock_guard<std::mutex> lock(t.mutex);
    t.calls.clear();
    t.count = 0;
}

QList<SdkCall> SdkCallTap::calls()
{
    Tap& t = tap();
    std::lock_guard<std::mutex> lock(t.mutex);
    return t.calls;
}

int SdkCallTap::count()
{
    Tap& t = tap();
    std::lock_guard<std::mutex> lock(t.mutex);
    return t.count;
}

extern "C" {

int CMatrix_DisplayFrame(CMHANDLE handle, int windowId, int channel, const unsigned char* frame, int length)
{
    static const auto next = real<decltype(&CMatrix_DisplayFrame)>("CMatrix_DisplayFrame");
    SdkCall call { SdkCall::DisplayFrame, handle, windowId, channel, bytes(frame, length), 0 };
    call.result = next(handle, windowId, channel, frame, length);
    const int result = call.result;
    note(std::move(call));
    return result;
}

int CMatrix_DisplayFrameWithin(
    CMHANDLE handle, int windowId, int channel, const unsigned char* frame, int length, int timeoutMs)
{
    static const auto next = real<decltype(&CMatrix_DisplayFrameWithin)>("CMatrix_DisplayFrameWithin");
    SdkCall call { SdkCall::DisplayFrame, handle, windowId, channel, bytes(frame, length), 0 };
    call.result = next(handle, windowId, channel, frame, length, timeoutMs);
    const int result = call.result;
    note(std::move(call));
    return result;
}

int CMatrix_SendMediaFrame(CMMDHANDLE media, const unsigned char* frame, int length)
{
    static const auto next = real<decltype(&CMatrix_SendMediaFrame)>("CMatrix_SendMediaFrame");
    SdkCall call { SdkCall::SendMediaFrame, media, 0, 0, bytes(frame, length), 0 };
    call.result = next(media, frame, length);
    const int result = call.result;
    note(std::move(call));
    return result;
}

int CMatrix_StopMediaDistribute(CMMDHANDLE media)
{
    static const auto next = real<decltype(&CMatrix_StopMediaDistribute)>("CMatrix_StopMediaDistribute");
    SdkCall call { SdkCall::StopMediaDistribute, media, 0, 0, {}, 0 };
    call.result = next(media);
    const int result = call.result;
    note(std::move(call));
    return result;
}

} // extern "C"
