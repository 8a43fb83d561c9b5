#include "SearchCollector.h"

int SearchCollector::start(int waitCentis, int probes)
{
    return Discovery_Start(waitCentis, probes, &SearchCollector::callback, this);
}

void SearchCollector::restartFromCallback(int rounds, int waitCentis, int probes)
{
    std::lock_guard<std::mutex> lock(mutex_);
    restartsLeft_ = rounds;
    waitCentis_ = waitCentis;
    probes_ = probes;
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

std::vector<int> SearchCollector::restartResults() const
{
    std::lock_guard<std::mutex> lock(mutex_);
    return restartResults_;
}

int SearchCollector::oddCalls() const
{
    std::lock_guard<std::mutex> lock(mutex_);
    return odd_;
}

void SearchCollector::callback(bool finished, const DeviceInfo_t* device, void* user)
{
    auto* self = static_cast<SearchCollector*>(user);
    std::unique_lock<std::mutex> lock(self->mutex_);
    if (finished == (device != nullptr))
        ++self->odd_;
    if (device)
        self->answers_.push_back(*device);
    if (!finished)
        return;
    ++self->finished_;
    if (self->restartsLeft_ <= 0)
        return;
    --self->restartsLeft_;
    const int waitCentis = self->waitCentis_, probes = self->probes_;
    lock.unlock(); // the next round may report before this call returns
    const int rc = Discovery_Start(waitCentis, probes, &SearchCollector::callback, self);
    lock.lock();
    self->restartResults_.push_back(rc);
}
