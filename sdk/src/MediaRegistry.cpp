#include "MediaRegistry.h"

#include "MediaDistribution.h"

#include <vector>

namespace cmatrix::sdk {

MediaRegistry& MediaRegistry::instance()
{
    // Never destroyed, for the same reason as the handle registry.
    static MediaRegistry* registry = new MediaRegistry;
    return *registry;
}

CMMDHANDLE MediaRegistry::add(std::shared_ptr<MediaDistribution> distribution)
{
    std::vector<std::shared_ptr<MediaDistribution>> orphans; // released outside the lock
    std::lock_guard<std::mutex> lock(mutex_);
    // Distributions of destroyed handles are of no use; they go as new ones come.
    for (auto it = items_.begin(); it != items_.end();) {
        if (it->second->isOrphan()) {
            orphans.push_back(std::move(it->second));
            it = items_.erase(it);
        } else {
            ++it;
        }
    }
    const uintptr_t id = ++lastId_;
    items_.emplace(id, std::move(distribution));
    return reinterpret_cast<CMMDHANDLE>(id);
}

std::shared_ptr<MediaDistribution> MediaRegistry::find(CMMDHANDLE handle) const
{
    std::lock_guard<std::mutex> lock(mutex_);
    const auto it = items_.find(reinterpret_cast<uintptr_t>(handle));
    return it == items_.end() ? nullptr : it->second;
}

std::shared_ptr<MediaDistribution> MediaRegistry::remove(CMMDHANDLE handle)
{
    std::lock_guard<std::mutex> lock(mutex_);
    const auto it = items_.find(reinterpret_cast<uintptr_t>(handle));
    if (it == items_.end())
        return nullptr;
    std::shared_ptr<MediaDistribution> distribution = std::move(it->second);
    items_.erase(it);
    return distribution;
}

} // namespace cmatrix::sdk
