#pragma once

#include "media/PictureStore.h"
#include "media/VideoStatus.h"
#include "state/AccountBook.h"
#include "state/LoopRun.h"
#include "state/MediaDistribution.h"
#include "state/Scene.h"
#include "state/Scheme.h"
#include "state/Window.h"

#include <QDateTime>
#include <QString>

#include <map>
#include <utility>
#include <vector>

namespace vdec {

// A copy of the decoder's state at one moment, for tests to assert on.
struct DecoderSnapshot {
    int cols = 0, rows = 0;
    QString name;
    std::vector<ScreenInfo_t> screens; // ordered by position
    std::vector<Window> windows; // in creation order
    qint64 clockOffsetSecs = 0; // time last set minus the clock then, both as wall-clock times
    QDateTime lastSetTime; // wall-clock time last given, invalid if never set
    int status = 0; // 0 alone, 1 main, 2 secondary
    QString masterIp;
    bool activated = true;
    std::vector<AccountState> accounts;
    // the unit: firmware, network settings as reported, resolution of all outputs,
    // and whether the screen numbers are shown (identification) and until when
    QString firmwareVersion;
    DeviceNetworkCfg_t network {};
    ScreenResolution_t resolution {};
    bool upgrading = false;
    bool identifyOn = false;
    QDateTime identifyUntil; // UTC; invalid once hidden
    int32_t identifyLocation = 0;
    std::vector<Scene> scenes; // by id
    std::vector<Scheme> schemes; // by id
    std::map<int32_t, LoopRun> loops; // turning windows, by window id
    BannerInfo_t banner {};
    std::map<std::pair<int32_t, int32_t>, ScreenColor> screenColors; // by (col, row); unset screens are at 50
    DeviceAudioInfo_t audio {};
    std::vector<MediaDistribution> distributions; // in start order, with their frame counters
    std::map<PictureStore::Key, SubWindowMedia> media; // by (window id, sub-window); only those that got frames
    std::map<PictureStore::Key, VideoStatus> video; // sub-windows bound to live streams

    const Window* window(uint32_t id) const
    {
        for (const Window& w : windows) {
            if (w.id == id)
                return &w;
        }
        return nullptr;
    }
    const SubWindowMedia* mediaOf(uint32_t windowId, int32_t sub) const
    {
        const auto it = media.find({ windowId, sub });
        return it == media.end() ? nullptr : &it->second;
    }
    const VideoStatus* videoOf(uint32_t windowId, int32_t sub) const
    {
        const auto it = video.find({ windowId, sub });
        return it == video.end() ? nullptr : &it->second;
    }
    const Scene* scene(uint32_t id) const
    {
        for (const Scene& sc : scenes) {
            if (sc.id == id)
                return &sc;
        }
        return nullptr;
    }
    const Scheme* scheme(uint32_t id) const
    {
        for (const Scheme& sc : schemes) {
            if (sc.info.id == id)
                return &sc;
        }
        return nullptr;
    }
    const AccountState* account(const QString& user) const
    {
        for (const AccountState& a : accounts) {
            if (a.user == user)
                return &a;
        }
        return nullptr;
    }
};

} // namespace vdec
