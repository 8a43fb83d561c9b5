#pragma once

#include "CMatrixSDK.h"

#include <cstdint>
#include <memory>
#include <mutex>
#include <unordered_map>

namespace cmatrix::sdk {

class Session;

// The live handles. A handle is a number that is never reused, not a pointer, so a
// stale or made-up handle is looked up and refused instead of dereferenced.
class HandleRegistry {
public:
    static HandleRegistry& instance();

    CMHANDLE create();
    std::shared_ptr<Session> find(CMHANDLE handle) const;
    // Forgets the handle; the caller shuts the session down.
    std::shared_ptr<Session> remove(CMHANDLE handle);

private:
    HandleRegistry() = default;

    mutable std::mutex mutex_;
    std::unordered_map<uintptr_t, std::shared_ptr<Session>> sessions_;
    uintptr_t lastId_ = 0;
};

} // namespace cmatrix::sdk
