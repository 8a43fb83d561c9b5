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

// Passes a call on to the SDK library and notes it with its result.
template <typename F, typename... Args> int forward(SdkCall call, const char* name, Args... args)
{
    static const auto next = real<F>(name);
    const int result = next(args...);
    call.result = result;
    note(std::move(call));
    return result;
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
    return forward<decltype(&CMatrix_DisplayFrame)>(
        { SdkCall::DisplayFrame, handle, windowId, channel, bytes(frame, length), 0 }, "CMatrix_DisplayFrame", handle,
        windowId, channel, frame, length);
}

int CMatrix_DisplayFrameWithin(
    CMHANDLE handle, int windowId, int channel, const unsigned char* frame, int length, int timeoutMs)
{
    return forward<decltype(&CMatrix_DisplayFrameWithin)>(
        { SdkCall::DisplayFrame, handle, windowId, channel, bytes(frame, length), 0 }, "CMatrix_DisplayFrameWithin",
        handle, windowId, channel, frame, length, timeoutMs);
}

int CMatrix_SendMediaFrame(CMMDHANDLE media, const unsigned char* frame, int length)
{
    return forward<decltype(&CMatrix_SendMediaFrame)>({ SdkCall::SendMediaFrame, media, 0, 0, bytes(frame, length), 0 },
        "CMatrix_SendMediaFrame", media, frame, length);
}

int CMatrix_StopMediaDistribute(CMMDHANDLE media)
{
    return forward<decltype(&CMatrix_StopMediaDistribute)>(
        { SdkCall::StopMediaDistribute, media, 0, 0, {}, 0 }, "CMatrix_StopMediaDistribute", media);
}

} // extern "C"
