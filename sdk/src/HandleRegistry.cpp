#include "HandleRegistry.h"

#include "Session.h"

namespace cmatrix::sdk {

HandleRegistry& HandleRegistry::instance()
{
    // Never destroyed: handles still open at exit are not torn down during static
    // destruction while their threads may still be calling back into the program.
    static HandleRegistry* registry = new HandleRegistry;
    return *registry;
}

CMHANDLE HandleRegistry::create()
{
    std::lock_guard<std::mutex> lock(mutex_);
    const uintptr_t id = ++lastId_;
    CMHANDLE handle = reinterpret_cast<CMHANDLE>(id);
    sessions_.emplace(id, std::make_shared<Session>(handle));
    return handle;
}

std::shared_ptr<Session> HandleRegistry::find(CMHANDLE handle) const
{
    std::lock_guard<std::mutex> lock(mutex_);
    const auto it = sessions_.find(reinterpret_cast<uintptr_t>(handle));
    return it == sessions_.end() ? nullptr : it->second;
}

std::shared_ptr<Session> HandleRegistry::remove(CMHANDLE handle)
{
    std::lock_guard<std::mutex> lock(mutex_);
    const auto it = sessions_.find(reinterpret_cast<uintptr_t>(handle));
    if (it == sessions_.end())
        return nullptr;
    std::shared_ptr<Session> session = std::move(it->second);
    sessions_.erase(it);
    return session;
}

} // namespace cmatrix::sdk
