#pragma once

#include "CMatrixSDK.h"

#include <QJsonObject>

#include <cstdint>
#include <map>

namespace vdec {

// The output resolution: one mode for all outputs, and outputs set apart from it.
// Only the modes a unit's outputs can drive are taken.
class ResolutionTable {
public:
    struct Mode {
        int32_t width, height, refreshRate;
    };
    static constexpr Mode kModes[] = { { 1920, 1080, 60 }, { 1920, 1080, 50 }, { 1920, 1080, 30 }, { 3840, 2160, 30 },
        { 1280, 720, 60 }, { 1280, 720, 50 }, { 1024, 768, 60 } };
    static constexpr Mode kDefault = kModes[0];

    static bool isSupported(const ScreenResolution_t& resolution);

    // setAll: every output takes the mode and forgets its own; otherwise only output
    // outputIndex, which must be below `outputs`.
    int32_t set(const ScreenResolution_t& resolution, bool setAll, int32_t outputs);
    // The mode of one output, or of all of them for outputIndex -1.
    int32_t get(int32_t outputIndex, int32_t outputs, ScreenResolution_t& out) const;
    ScreenResolution_t common() const;

    QJsonObject toJson() const;
    bool fromJson(const QJsonObject& object);

private:
    Mode all_ = kDefault;
    std::map<int32_t, Mode> outputs_;
};

} // namespace vdec
