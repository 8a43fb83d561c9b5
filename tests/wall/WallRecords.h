#pragma once

#include "WireBuilders.h"

#include "CMatrixSDK.h"
#include "core/DecoderSnapshot.h"

#include <QByteArray>

#include <cstring>

// Records for the calls under test, and ways to compare what the decoder holds.
namespace wallrecords {

template <size_t N> void setText(char (&field)[N], const char* text)
{
    memset(field, 0, N);
    strncpy(field, text, N - 1);
}

template <class Record> QByteArray bytesOf(const Record& record)
{
    return QByteArray(reinterpret_cast<const char*>(&record), int(sizeof record));
}

using kvmstest::window;
DeviceInfo_t source(int subWindow, const char* devId);
SchemeInfo_t scheme(uint32_t id, const char* name, uint32_t interval, int32_t kind = 4);
SchemeDevice_t schemeSource(const char* devId, const char* protocolName = "kst1.0");
BannerInfo_t banner(const char* message);
ScreenColor color(int brightness, int contrast, int saturation, int hue);
DeviceAudioInfo_t audio(const char* state, int windowId, int subWindowId, int volume);

// Every window as the decoder keeps it (geometry, layer, division, full screen,
// turning mark, source bytes), so two walls compare equal only when they are.
QByteArray wallPrint(const std::vector<vdec::Window>& windows);
// Everything this area stores: scenes, schemes, loops, banner, colours, audio, and the wall.
QByteArray statePrint(const vdec::DecoderSnapshot& snapshot);

} // namespace wallrecords
