#pragma once

// Shared plumbing of the C functions: handle lookup, argument checks and copies
// across the API boundary. No exception ever leaves a C function.

#include "CMatrixSDK.h"
#include "HandleRegistry.h"
#include "Session.h"
#include "WireHeader.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <string>
#include <vector>

namespace cmatrix::sdk {

// Runs fn on the session of a live handle.
template <class Fn> int withSession(CMHANDLE handle, Fn&& fn) noexcept
{
    try {
        const std::shared_ptr<Session> session = HandleRegistry::instance().find(handle);
        if (!session)
            return CMATRIX_ERR_INVALID_HANDLE;
        return fn(*session);
    } catch (const std::bad_alloc&) {
        return CMATRIX_ERR_NO_MEMORY;
    } catch (...) {
        return CMATRIX_ERR_FAILED;
    }
}

// Copies a caller's array for a request, refusing what could not be sent anyway.
template <class T> int copyIn(const T* items, int count, std::vector<T>& out)
{
    if (count < 0 || (count > 0 && !items))
        return CMATRIX_ERR_INVALID_PARAM;
    if (size_t(count) > wire::WireHeader::kMaxPayload / sizeof(T))
        return CMATRIX_ERR_TOO_LARGE;
    out.assign(items, items + count);
    return CMATRIX_OK;
}

// A caller's text, null read as empty.
inline std::string textOf(const char* text)
{
    return text ? std::string(text) : std::string();
}

// Copies text into a caller's buffer of `size` bytes, truncated and always NUL-terminated.
inline void copyOut(const std::string& text, char* buffer, int size)
{
    if (!buffer || size <= 0)
        return;
    const size_t length = std::min(text.size(), size_t(size) - 1);
    std::memcpy(buffer, text.data(), length);
    buffer[length] = '\0';
}

} // namespace cmatrix::sdk
