#pragma once

#include "WireBuilders.h"

#include "CMatrixSDK.h"
#include "core/DecoderSnapshot.h"

#include <QByteArray>
#include <QString>

#include <vector>

// Records and payloads the decoder tests send, and a readable form of the state.
namespace wirerecords {

using kvmstest::window;
// Every byte set, reserved ones included, so a read-back proves the bytes were kept.
DeviceInfo_t source(int32_t subWindow, const char* devId, int32_t channel = 1);
ScreenInfo_t screen(int32_t position, const char* name);
QByteArray bytesOf(const void* data, size_t size);
template <class Record> QByteArray bytesOf(const Record& r)
{
    return bytesOf(&r, sizeof r);
}
// One line per fact; equal texts mean equal state.
QString stateText(const vdec::DecoderSnapshot& s);

} // namespace wirerecords
