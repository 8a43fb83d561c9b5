#pragma once

#include "WallCallLog.h"

#include "CMatrixSDK.h"

namespace kvms_matrix {

// Owns a list the SDK handed out and gives it back with CMatrix_Free on every path, logging
// the release like any other SDK call.
template <typename T> class WallSdkList {
public:
    explicit WallSdkList(CMHANDLE handle)
        : m_handle(handle)
    {
    }
    ~WallSdkList() { release(); }
    WallSdkList(const WallSdkList&) = delete;
    WallSdkList& operator=(const WallSdkList&) = delete;

    T** out()
    {
        release();
        return &m_items;
    }
    const T* get() const { return m_items; }
    const T& operator[](int i) const { return m_items[i]; }

    void release()
    {
        if (!m_items)
            return;
        WallCallTimer timer;
        const int ret = CMatrix_Free(m_handle, m_items);
        WallCallLog::timed("CMatrix_Free", m_handle, ret, timer.elapsedMs());
        m_items = nullptr;
    }

private:
    CMHANDLE m_handle;
    T* m_items = nullptr;
};

} // namespace kvms_matrix
