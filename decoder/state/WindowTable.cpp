#include "WindowTable.h"

#include <algorithm>
#include <cstring>
#include <set>
#include <string>

namespace vdec {

namespace {

bool sameDevId(const DeviceInfo_t& a, const DeviceInfo_t& b)
{
    return strncmp(a.devId, b.devId, sizeof a.devId) == 0;
}

// Cameras only (channel, ONVIF, RTSP): pictures, pushed streams, inputs and empty slots may repeat.
bool isCamera(const DeviceInfo_t& d)
{
    return d.devId[0] != '\0' && d.protocol >= 0 && d.protocol <= 3;
}

// A camera read back and sent again loses the "&channel" tail of its id; the channel field keeps it.
std::string cameraOf(const DeviceInfo_t& d)
{
    const std::string id(d.devId, strnlen(d.devId, sizeof d.devId));
    return id.substr(0, id.find('&'));
}

bool sameCamera(const DeviceInfo_t& a, const DeviceInfo_t& b)
{
    return isCamera(a) && isCamera(b) && a.channel == b.channel && cameraOf(a) == cameraOf(b);
}

} // namespace

bool WindowTable::isDivision(int32_t division)
{
    static constexpr int32_t kDivisions[] = { 1, 4, 6, 8, 9, 16, 25 };
    return std::find(std::begin(kDivisions), std::end(kDivisions), division) != std::end(kDivisions);
}

bool WindowTable::isRect(int32_t x, int32_t y, int32_t w, int32_t h)
{
    // Compared in 64 bits so that huge values cannot wrap into range.
    return x >= 0 && y >= 0 && w > 0 && h > 0 && int64_t(x) + w <= kWallUnits && int64_t(y) + h <= kWallUnits;
}

int32_t WindowTable::checkRecord(const MatrixWindow_t& record)
{
    if (record.id == 0 || record.id > uint32_t(INT32_MAX) || record.floating > 1)
        return CMATRIX_ERR_INVALID_PARAM;
    if (!isRect(record.x, record.y, record.w, record.h))
        return CMATRIX_ERR_GEOMETRY;
    return CMATRIX_OK;
}

int32_t WindowTable::add(const std::vector<MatrixWindow_t>& records, bool replace)
{
    std::set<uint32_t> ids;
    for (const MatrixWindow_t& r : records) {
        if (int32_t rc = checkRecord(r))
            return rc;
        if (!ids.insert(r.id).second || (!replace && find(r.id)))
            return CMATRIX_ERR_WINDOW_EXISTS;
    }
    const size_t total = replace ? records.size() : windows_.size() + records.size();
    if (total > size_t(kMaxWindows))
        return CMATRIX_ERR_LIMIT;

    if (replace)
        windows_.clear();
    for (const MatrixWindow_t& r : records) {
        Window w;
        w.id = r.id;
        w.floating = r.floating != 0;
        w.x = r.x;
        w.y = r.y;
        w.w = r.w;
        w.h = r.h;
        w.layer = w.floating ? topLayer() + 1 : 0;
        windows_.push_back(std::move(w));
    }
    return CMATRIX_OK;
}

int32_t WindowTable::remove(const std::vector<uint32_t>& ids)
{
    if (ids.empty())
        return CMATRIX_ERR_INVALID_PARAM;
    for (uint32_t id : ids) {
        if (!find(id))
            return CMATRIX_ERR_WINDOW_NOT_FOUND;
    }
    const std::set<uint32_t> doomed(ids.begin(), ids.end());
    windows_.erase(
        std::remove_if(windows_.begin(), windows_.end(), [&](const Window& w) { return doomed.count(w.id); }),
        windows_.end());
    return CMATRIX_OK;
}

int32_t WindowTable::move(const MatrixWindow_t& record)
{
    if (int32_t rc = checkRecord(record))
        return rc;
    Window* w = findMutable(record.id);
    if (!w)
        return CMATRIX_ERR_WINDOW_NOT_FOUND;
    const bool floating = record.floating != 0;
    if (floating != w->floating)
        w->layer = floating ? topLayer() + 1 : 0;
    w->floating = floating;
    w->x = record.x;
    w->y = record.y;
    w->w = record.w;
    w->h = record.h;
    return CMATRIX_OK;
}

int32_t WindowTable::setFullScreen(int32_t windowId, int32_t subWindow, int32_t full)
{
    Window* w = findMutable(windowId);
    if (!w)
        return CMATRIX_ERR_WINDOW_NOT_FOUND;
    if (full != 0 && full != 1)
        return CMATRIX_ERR_INVALID_PARAM;
    // Leaving full screen may name the sub-window or not; entering it must name one.
    const int32_t lowest = full ? 1 : 0;
    if (subWindow < lowest || subWindow > w->division)
        return CMATRIX_ERR_SUBWINDOW;
    w->fullScreenSub = full ? subWindow : 0;
    return CMATRIX_OK;
}

int32_t WindowTable::setDivision(int32_t windowId, int32_t division)
{
    Window* w = findMutable(windowId);
    if (!w)
        return CMATRIX_ERR_WINDOW_NOT_FOUND;
    if (!isDivision(division))
        return CMATRIX_ERR_DIVISION;
    w->division = division;
    w->sources.erase(w->sources.upper_bound(division), w->sources.end());
    if (w->fullScreenSub > division)
        w->fullScreenSub = 0;
    return CMATRIX_OK;
}

bool WindowTable::camerasRepeat(int32_t windowId, const std::vector<DeviceInfo_t>& devices) const
{
    for (size_t i = 0; i < devices.size(); ++i) {
        for (size_t j = i + 1; j < devices.size(); ++j)
            if (sameCamera(devices[i], devices[j]))
                return true;
        for (const Window& other : windows_) {
            // A turning window's sources come and go with its loop.
            if (int64_t(other.id) == windowId || other.sourceKind == 1)
                continue;
            for (const auto& shown : other.sources)
                if (sameCamera(devices[i], shown.second))
                    return true;
        }
    }
    return false;
}

int32_t WindowTable::addSources(
    int32_t windowId, const std::vector<DeviceInfo_t>& devices, bool reset, bool uniqueCameras)
{
    const Window* w = find(windowId);
    if (!w)
        return CMATRIX_ERR_WINDOW_NOT_FOUND;
    if (w->sourceKind == 1)
        return CMATRIX_ERR_LOOP_RUNNING;
    if (uniqueCameras && camerasRepeat(windowId, devices))
        return CMATRIX_ERR_SOURCE_ON_WALL;
    return placeSources(windowId, devices, reset);
}

int32_t WindowTable::placeSources(int32_t windowId, const std::vector<DeviceInfo_t>& devices, bool reset)
{
    Window* w = findMutable(windowId);
    if (!w)
        return CMATRIX_ERR_WINDOW_NOT_FOUND;
    if (devices.size() > size_t(w->division))
        return CMATRIX_ERR_LIMIT;
    std::set<int32_t> subs;
    for (const DeviceInfo_t& d : devices) {
        if (d.subWindow < 1 || d.subWindow > w->division)
            return CMATRIX_ERR_SUBWINDOW;
        if (!subs.insert(d.subWindow).second)
            return CMATRIX_ERR_INVALID_PARAM;
    }
    if (reset)
        w->sources.clear();
    for (const DeviceInfo_t& d : devices)
        w->sources[d.subWindow] = d;
    return CMATRIX_OK;
}

int32_t WindowTable::removeSources(int32_t windowId, const std::vector<DeviceInfo_t>& devices, bool reset)
{
    Window* w = findMutable(windowId);
    if (!w)
        return CMATRIX_ERR_WINDOW_NOT_FOUND;
    for (const DeviceInfo_t& d : devices) {
        // A record without a device id names its sub-window, so that one must exist.
        const bool byDevice = d.devId[0] != '\0';
        if (d.subWindow < (byDevice ? 0 : 1) || d.subWindow > w->division)
            return CMATRIX_ERR_SUBWINDOW;
    }
    if (reset) {
        w->sources.clear();
        return CMATRIX_OK;
    }
    for (const DeviceInfo_t& d : devices) {
        for (auto it = w->sources.begin(); it != w->sources.end();) {
            const bool slotMatches = d.subWindow == 0 || it->first == d.subWindow;
            const bool deviceMatches = d.devId[0] == '\0' || sameDevId(d, it->second);
            it = slotMatches && deviceMatches ? w->sources.erase(it) : std::next(it);
        }
    }
    return CMATRIX_OK;
}

void WindowTable::setTurn(int64_t windowId, int32_t sourceKind, int32_t turnIndex)
{
    if (Window* w = findMutable(windowId)) {
        w->sourceKind = sourceKind;
        w->turnIndex = turnIndex;
    }
}

const Window* WindowTable::find(int64_t id) const
{
    auto it = std::find_if(windows_.begin(), windows_.end(), [id](const Window& w) { return w.id == id; });
    return it == windows_.end() ? nullptr : &*it;
}

Window* WindowTable::findMutable(int64_t id)
{
    return const_cast<Window*>(find(id));
}

int32_t WindowTable::topLayer() const
{
    int32_t top = 0;
    for (const Window& w : windows_)
        top = std::max(top, w.layer);
    return top;
}

std::vector<MatrixWindowStatus_t> WindowTable::statusList() const
{
    std::vector<MatrixWindowStatus_t> list;
    list.reserve(windows_.size());
    for (const Window& w : windows_) {
        MatrixWindowStatus_t s {};
        s.window = w.record();
        s.sourceKind = w.sourceKind;
        s.turnIndex = w.turnIndex;
        s.layer = w.layer;
        list.push_back(s);
    }
    return list;
}

std::vector<WindowDivision_t> WindowTable::divisions() const
{
    std::vector<WindowDivision_t> list;
    list.reserve(windows_.size());
    for (const Window& w : windows_)
        list.push_back(WindowDivision_t { int32_t(w.id), w.division });
    return list;
}

int WindowTable::restore(std::vector<Window> windows)
{
    windows_.clear();
    int dropped = 0;
    for (Window& w : windows) {
        const bool sourcesFit
            = w.sources.empty() || (w.sources.begin()->first >= 1 && w.sources.rbegin()->first <= w.division);
        const bool ok = checkRecord(w.record()) == CMATRIX_OK && !find(w.id) && isDivision(w.division) && sourcesFit
            && w.fullScreenSub >= 0 && w.fullScreenSub <= w.division && w.layer >= 0
            && windows_.size() < size_t(kMaxWindows);
        if (!ok) {
            ++dropped;
            continue;
        }
        if (!w.floating)
            w.layer = 0;
        windows_.push_back(std::move(w));
    }
    return dropped;
}

} // namespace vdec
