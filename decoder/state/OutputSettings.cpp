#include "OutputSettings.h"

#include "TextRules.h"
#include "WindowTable.h"

#include <cstring>

namespace vdec {

namespace {

bool isPercent(int32_t v)
{
    return v >= 0 && v <= 100;
}

bool inGrid(OutputSettings::Cell cell, int32_t cols, int32_t rows)
{
    return cell.first >= 0 && cell.first < cols && cell.second >= 0 && cell.second < rows;
}

// A hidden banner may keep its old rectangle or none at all, but nothing outside the wall.
bool isHiddenRect(const BannerInfo_t& b)
{
    return b.x >= 0 && b.y >= 0 && b.w >= 0 && b.h >= 0 && int64_t(b.x) + b.w <= WindowTable::kWallUnits
        && int64_t(b.y) + b.h <= WindowTable::kWallUnits;
}

bool isOpen(const DeviceAudioInfo_t& a)
{
    return strcmp(a.state, "open") == 0;
}

} // namespace

OutputSettings::OutputSettings()
    : audio_(defaultAudio())
{
}

ScreenColor OutputSettings::defaultColor()
{
    ScreenColor c {};
    c.brightness = c.contrast = c.saturation = c.hue = kDefaultColor;
    return c;
}

DeviceAudioInfo_t OutputSettings::defaultAudio()
{
    DeviceAudioInfo_t a {};
    strcpy(a.state, "close");
    a.volume = kDefaultVolume;
    return a;
}

int32_t OutputSettings::setBanner(const BannerInfo_t& b)
{
    if (b.show > 1 || !TextRules::isTerminated(b.message, sizeof b.message))
        return CMATRIX_ERR_INVALID_PARAM;
    if (b.show) {
        if (!WindowTable::isRect(b.x, b.y, b.w, b.h))
            return CMATRIX_ERR_GEOMETRY;
        if (b.fontSize <= 0 || b.fontSize > WindowTable::kWallUnits)
            return CMATRIX_ERR_INVALID_PARAM;
    } else if (!isHiddenRect(b)) {
        return CMATRIX_ERR_GEOMETRY;
    }
    banner_ = b;
    return CMATRIX_OK;
}

int32_t OutputSettings::screenColor(Cell cell, int32_t cols, int32_t rows, ScreenColor& out) const
{
    if (!inGrid(cell, cols, rows))
        return CMATRIX_ERR_INVALID_PARAM;
    auto it = colors_.find(cell);
    out = it == colors_.end() ? defaultColor() : it->second;
    return CMATRIX_OK;
}

int32_t OutputSettings::setScreenColor(Cell cell, int32_t cols, int32_t rows, const ScreenColor& color)
{
    if (!inGrid(cell, cols, rows) || !isPercent(color.brightness) || !isPercent(color.contrast)
        || !isPercent(color.saturation) || !isPercent(color.hue))
        return CMATRIX_ERR_INVALID_PARAM;
    colors_[cell] = color;
    // Screens the grid lost since (a smaller wall) are forgotten here.
    for (auto it = colors_.begin(); it != colors_.end();)
        it = inGrid(it->first, cols, rows) ? std::next(it) : colors_.erase(it);
    return CMATRIX_OK;
}

int32_t OutputSettings::setAudio(const DeviceAudioInfo_t& a, const WindowTable& windows)
{
    if (!TextRules::isTerminated(a.state, sizeof a.state) || !isPercent(a.volume))
        return CMATRIX_ERR_INVALID_PARAM;
    if (!isOpen(a) && strcmp(a.state, "close") != 0)
        return CMATRIX_ERR_INVALID_PARAM;
    if (isOpen(a)) {
        const Window* w = windows.find(a.windowId);
        if (!w)
            return CMATRIX_ERR_WINDOW_NOT_FOUND;
        if (a.subWindowId < 1 || a.subWindowId > w->division)
            return CMATRIX_ERR_SUBWINDOW;
    }
    audio_ = a;
    return CMATRIX_OK;
}

void OutputSettings::prune(const WindowTable& windows)
{
    if (!isOpen(audio_))
        return;
    const Window* w = windows.find(audio_.windowId);
    if (!w || audio_.subWindowId > w->division) {
        memset(audio_.state, 0, sizeof audio_.state);
        strcpy(audio_.state, "close");
    }
}

} // namespace vdec
