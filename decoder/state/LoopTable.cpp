#include "LoopTable.h"

#include "SchemeBook.h"
#include "WindowTable.h"

#include <algorithm>
#include <cstring>
#include <vector>

namespace vdec {

namespace {

// The protocol numbers behind the names a scheme source carries.
int32_t protocolOf(const char* name)
{
    static const struct {
        const char* name;
        int32_t protocol;
    } kNames[] = { { "kst1.0", 0 }, { "kst2.0", 1 }, { "onvif", 2 }, { "rtsp", 3 }, { "rtspPlayback", 7 } };
    for (const auto& n : kNames) {
        if (strcmp(name, n.name) == 0)
            return n.protocol;
    }
    return 0;
}

const Scheme* playable(const SchemeBook& schemes, uint32_t id)
{
    const Scheme* s = schemes.find(id);
    return s && !s->devices.empty() ? s : nullptr;
}

} // namespace

DeviceInfo_t LoopTable::toDevice(const SchemeDevice_t& s, int32_t subWindow)
{
    DeviceInfo_t d {};
    d.subWindow = subWindow;
    memcpy(d.devId, s.devId, sizeof d.devId);
    d.channel = s.channel;
    d.stream = s.stream;
    memcpy(d.name, s.name, sizeof d.name);
    // A source without a device id is an empty place in the scheme.
    d.protocol = s.devId[0] ? protocolOf(s.protocolName) : 8;
    memcpy(d.ip, s.ip, sizeof d.ip);
    d.port = s.port;
    memcpy(d.mainUrl, s.mainUrl, sizeof d.mainUrl);
    memcpy(d.subUrl, s.subUrl, sizeof d.subUrl);
    memcpy(d.userName, s.userName, sizeof d.userName);
    memcpy(d.password, s.password, sizeof d.password);
    d.mode = s.mode;
    return d;
}

LoopTable::Clock::duration LoopTable::period(const Scheme& scheme, int unitMs)
{
    return std::chrono::milliseconds(int64_t(scheme.info.interval) * std::max(unitMs, 1));
}

void LoopTable::show(WindowTable& windows, int32_t windowId, const Scheme& scheme, const LoopRun& run)
{
    const Window* w = windows.find(windowId);
    if (!w)
        return;
    const int64_t count = int64_t(scheme.devices.size());
    const int64_t n = w->division;
    const int64_t first = ((run.startIndex + (run.turn % count) * n) % count + count) % count;
    std::vector<DeviceInfo_t> devices;
    devices.reserve(size_t(n));
    for (int64_t k = 0; k < n; ++k)
        devices.push_back(toDevice(scheme.devices[size_t((first + k) % count)], int32_t(k + 1)));
    windows.placeSources(windowId, devices, true);
    windows.setTurn(windowId, 1, int32_t(first + 1));
}

int32_t LoopTable::select(WindowTable& windows, const SchemeBook& schemes, int32_t windowId, uint32_t schemeId,
    int32_t startIndex, Clock::time_point now, int unitMs)
{
    if (!windows.find(windowId))
        return CMATRIX_ERR_WINDOW_NOT_FOUND;
    const Scheme* scheme = schemes.find(schemeId);
    if (!scheme)
        return CMATRIX_ERR_SCHEME_NOT_FOUND;
    // Nothing to turn, or a start outside the list.
    if (scheme->devices.empty() || startIndex < 0 || size_t(startIndex) >= scheme->devices.size())
        return CMATRIX_ERR_INVALID_PARAM;
    LoopRun run;
    run.schemeId = schemeId;
    run.startIndex = startIndex;
    run.due = now + period(*scheme, unitMs);
    runs_[windowId] = run;
    show(windows, windowId, *scheme, run);
    return CMATRIX_OK;
}

int32_t LoopTable::setEnabled(WindowTable& windows, int32_t windowId, int32_t enable)
{
    if (!windows.find(windowId))
        return CMATRIX_ERR_WINDOW_NOT_FOUND;
    if (enable != 0 && enable != 1)
        return CMATRIX_ERR_INVALID_PARAM;
    const bool running = runs_.count(windowId) != 0;
    if (enable == 1) // a loop is started by selecting its scheme
        return running ? CMATRIX_OK : CMATRIX_ERR_INVALID_PARAM;
    if (running) {
        runs_.erase(windowId);
        windows.removeSources(windowId, {}, true);
        windows.setTurn(windowId, 0, 0);
    }
    return CMATRIX_OK;
}

LoopTable::Clock::time_point LoopTable::advance(
    WindowTable& windows, const SchemeBook& schemes, Clock::time_point now, int unitMs)
{
    Clock::time_point next = Clock::time_point::max();
    for (auto& [windowId, run] : runs_) {
        const Scheme* scheme = playable(schemes, run.schemeId);
        if (!scheme || !windows.find(windowId))
            continue; // pruned after the request that caused it
        if (run.due <= now) {
            const Clock::duration step = period(*scheme, unitMs);
            ++run.turn;
            run.due += step;
            if (run.due <= now) // fell behind (a stalled machine): no burst of catch-up steps
                run.due = now + step;
            show(windows, windowId, *scheme, run);
        }
        next = std::min(next, run.due);
    }
    return next;
}

void LoopTable::prune(WindowTable& windows, const SchemeBook& schemes)
{
    for (auto it = runs_.begin(); it != runs_.end();) {
        if (windows.find(it->first) && playable(schemes, it->second.schemeId)) {
            ++it;
            continue;
        }
        // A scheme that lost its sources leaves its window empty, as a stop does.
        if (windows.find(it->first)) {
            windows.removeSources(it->first, {}, true);
            windows.setTurn(it->first, 0, 0);
        }
        it = runs_.erase(it);
    }
    for (const Window& w : windows.windows()) {
        if ((w.sourceKind != 0 || w.turnIndex != 0) && !runs_.count(int32_t(w.id)))
            windows.setTurn(w.id, 0, 0);
    }
}

void LoopTable::resume(WindowTable& windows, const SchemeBook& schemes, Clock::time_point now, int unitMs, bool showNow)
{
    for (auto it = runs_.begin(); it != runs_.end();) {
        const Scheme* scheme = playable(schemes, it->second.schemeId);
        if (!scheme || !windows.find(it->first)) {
            it = runs_.erase(it); // the window keeps what it showed
            continue;
        }
        it->second.due = now + period(*scheme, unitMs);
        if (showNow)
            show(windows, it->first, *scheme, it->second);
        ++it;
    }
    prune(windows, schemes);
}

} // namespace vdec
