#pragma once

#include "Window.h"

#include <cstdint>
#include <vector>

namespace vdec {

// The windows of the wall and the sources bound to their sub-windows. Every change
// is validated first and applied whole, or not at all; the result is a CMATRIX code.
class WindowTable {
public:
    // One window on every cell of the largest grid (16 x 16), and floating windows above them.
    static constexpr int kMaxFloating = 16;
    static constexpr int kMaxWindows = 16 * 16 + kMaxFloating;
    static constexpr int32_t kWallUnits = 32768;

    static bool isDivision(int32_t division);
    static bool isRect(int32_t x, int32_t y, int32_t w, int32_t h);

    int32_t add(const std::vector<MatrixWindow_t>& records, bool replace);
    int32_t remove(const std::vector<uint32_t>& ids);
    int32_t move(const MatrixWindow_t& record);
    int32_t setFullScreen(int32_t windowId, int32_t subWindow, int32_t full);
    int32_t setDivision(int32_t windowId, int32_t division);
    // uniqueCameras: a camera may be shown in one sub-window of the wall only, as on the units
    // that refuse to decode one stream twice. A window that displays in turn takes no sources:
    // its loop owns them.
    int32_t addSources(int32_t windowId, const std::vector<DeviceInfo_t>& devices, bool reset, bool uniqueCameras);
    // The same without those two rules: the loop's own turns.
    int32_t placeSources(int32_t windowId, const std::vector<DeviceInfo_t>& devices, bool reset);
    int32_t removeSources(int32_t windowId, const std::vector<DeviceInfo_t>& devices, bool reset);
    // Marks a window as displaying in turn (sourceKind 1) at 1-based turnIndex, or not.
    void setTurn(int64_t windowId, int32_t sourceKind, int32_t turnIndex);

    const Window* find(int64_t id) const;
    const std::vector<Window>& windows() const { return windows_; }
    std::vector<MatrixWindowStatus_t> statusList() const;
    std::vector<WindowDivision_t> divisions() const;

    void clear() { windows_.clear(); }
    // Takes windows read back from disk, dropping any that would not pass validation.
    int restore(std::vector<Window> windows);

private:
    static int32_t checkRecord(const MatrixWindow_t& record);
    // Whether a camera of `devices` is shown twice among them or in another window.
    bool camerasRepeat(int32_t windowId, const std::vector<DeviceInfo_t>& devices) const;
    Window* findMutable(int64_t id);
    int32_t topLayer() const;

    std::vector<Window> windows_; // in creation order
};

} // namespace vdec
