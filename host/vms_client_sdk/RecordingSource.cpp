#include "RecordingSource.h"

#include "DevsMgrData.h"
#include "KSingleton.h"

#include <mutex>

namespace vms_sdk {

namespace {

struct LocatorState {
    std::mutex mutex;
    RecordingLocator locator;
};

LocatorState& state()
{
    static LocatorState* const s = new LocatorState; // read by stream threads until exit
    return *s;
}

QString catalogueSource(const PlaybackByTimeCondition& condition)
{
    DevRecord device;
    if (!KCOMMON::KSingleton<DevsMgrData>::instance()->deviceById(condition.deviceId, &device) || device.ip.isEmpty()
        || device.port <= 0)
        return {};
    return QStringLiteral("rtsp://%1:%2/ch%3/%4")
        .arg(device.ip)
        .arg(device.port)
        .arg(condition.channel)
        .arg(condition.streamType == 1 ? QStringLiteral("sub") : QStringLiteral("main"));
}

} // namespace

void set_recording_locator(RecordingLocator locator)
{
    std::lock_guard<std::mutex> lock(state().mutex);
    state().locator = std::move(locator);
}

QString recording_source(const PlaybackByTimeCondition& condition)
{
    RecordingLocator locator;
    {
        std::lock_guard<std::mutex> lock(state().mutex);
        locator = state().locator;
    }
    return locator ? locator(condition) : catalogueSource(condition);
}

} // namespace vms_sdk
