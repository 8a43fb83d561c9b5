#include "SearchCollector.h"

namespace kvmstest {

int SearchCollector::start(int waitCentis, int probes)
{
    return Discovery_Start(waitCentis, probes, &SearchCollector::callback, this);
}

int SearchCollector::finished() const
{
    std::lock_guard<std::mutex> lock(mutex_);
    return finished_;
}

std::vector<DeviceInfo_t> SearchCollector::answers() const
{
    std::lock_guard<std::mutex> lock(mutex_);
    return answers_;
}

std::vector<DeviceInfo_t> SearchCollector::answersFrom(const QString& devId) const
{
    std::vector<DeviceInfo_t> list;
    for (const DeviceInfo_t& d : answers()) {
        if (QString::fromLatin1(d.devId) == devId)
            list.push_back(d);
    }
    return list;
}

int SearchCollector::oddCalls() const
{
    std::lock_guard<std::mutex> lock(mutex_);
    return odd_;
}

void SearchCollector::callback(bool finished, const DeviceInfo_t* device, void* user)
{
    auto* self = static_cast<SearchCollector*>(user);
    std::lock_guard<std::mutex> lock(self->mutex_);
    if (finished == (device != nullptr))
        ++self->odd_;
    if (device)
        self->answers_.push_back(*device);
    if (finished)
        ++self->finished_;
}

} // namespace kvmstest
