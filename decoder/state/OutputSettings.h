#pragma once

#include "CMatrixSDK.h"

#include <cstdint>
#include <map>
#include <utility>

namespace vdec {

class WindowTable;

// What the decoder lays over and beside the windows: the banner, the picture
// settings of each screen and the audio output. Setters validate and return a
// CMATRIX code; nothing changes on error. Records are kept byte for byte.
class OutputSettings {
public:
    static constexpr int32_t kDefaultColor = 50;
    static constexpr int32_t kDefaultVolume = 50;
    using Cell = std::pair<int32_t, int32_t>; // column, row of a screen, from 0

    OutputSettings();

    int32_t setBanner(const BannerInfo_t& banner);
    const BannerInfo_t& banner() const { return banner_; }

    // Screens outside the cols x rows grid are refused.
    int32_t screenColor(Cell cell, int32_t cols, int32_t rows, ScreenColor& out) const;
    int32_t setScreenColor(Cell cell, int32_t cols, int32_t rows, const ScreenColor& color);
    const std::map<Cell, ScreenColor>& screenColors() const { return colors_; }
    static ScreenColor defaultColor();

    // Playing audio needs the window and sub-window it comes from.
    int32_t setAudio(const DeviceAudioInfo_t& audio, const WindowTable& windows);
    const DeviceAudioInfo_t& audio() const { return audio_; }
    static DeviceAudioInfo_t defaultAudio();

    // Closes the audio when its window or sub-window has gone.
    void prune(const WindowTable& windows);

private:
    BannerInfo_t banner_ {};
    std::map<Cell, ScreenColor> colors_;
    DeviceAudioInfo_t audio_;
};

} // namespace vdec
