#pragma once

#include "CMatrixSDK.h"

#include <QByteArray>

#include <cstdint>
#include <cstring>

namespace kvmstest {

// A window record as the SDK takes it, zeroed apart from what is given.
MatrixWindow_t window(uint32_t id, int32_t x, int32_t y, int32_t w, int32_t h, bool floating = false);
// A source for a sub-window: devId (also its name), channel = subWindow, protocol 1,
// on 127.0.0.9, mode 2; the rest zero.
DeviceInfo_t device(int32_t subWindow, const char* devId);

// A text field cut to fit, zero-padded.
template <size_t N> void setText(char (&field)[N], const char* text)
{
    std::memset(field, 0, N);
    std::memcpy(field, text, strnlen(text, N - 1));
}

template <class Record> QByteArray bytesOf(const Record& record)
{
    return QByteArray(reinterpret_cast<const char*>(&record), int(sizeof record));
}

} // namespace kvmstest
