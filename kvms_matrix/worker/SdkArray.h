#pragma once

#include "SdkCallLog.h"

#include "CMatrixSDK.h"

namespace kvms_matrix {

// Owns an array the SDK handed out and gives it back on every path: CMatrix_Free for lists,
// CMatrix_FreeLog for logs, always on the handle that produced it, logged like any SDK call.
template <typename T> class SdkArray {
public:
    explicit SdkArray(CMHANDLE handle)
        : m_handle(handle)
    {
    }
    ~SdkArray() { reset(); }
    SdkArray(const SdkArray&) = delete;
    SdkArray& operator=(const SdkArray&) = delete;

    // The out-pointer to pass to the SDK call.
    T** out()
    {
        reset();
        return &m_items;
    }
    T* get() const { return m_items; }
    const T& operator[](int i) const { return m_items[i]; }

    void reset()
    {
        if (!m_items)
            return;
        release(m_items);
        m_items = nullptr;
    }

private:
    void release(LogInfo_t* logs)
    {
        SdkCallLog::Timer timer;
        const int ret = CMatrix_FreeLog(m_handle, logs);
        SdkCallLog::timed("CMatrix_FreeLog", m_handle, ret, timer.elapsedMs());
    }
    template <typename U> void release(U* list)
    {
        SdkCallLog::Timer timer;
        const int ret = CMatrix_Free(m_handle, list);
        SdkCallLog::timed("CMatrix_Free", m_handle, ret, timer.elapsedMs());
    }

    CMHANDLE m_handle;
    T* m_items = nullptr;
};

} // namespace kvms_matrix
