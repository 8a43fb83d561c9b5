#pragma once

#include "CMatrixSDK.h"

#include <cstdint>
#include <memory>
#include <mutex>
#include <unordered_map>

namespace cmatrix::sdk {

class MediaDistribution;

// The live media distribution handles. Like connection handles they are numbers,
// never reused and looked up before use; they are numbered apart from connection
// handles, so one passed where the other is expected is refused.
class MediaRegistry {
public:
    static MediaRegistry& instance();

    CMMDHANDLE add(std::shared_ptr<MediaDistribution> distribution);
    std::shared_ptr<MediaDistribution> find(CMMDHANDLE handle) const;
    std::shared_ptr<MediaDistribution> remove(CMMDHANDLE handle);

private:
    static constexpr uintptr_t kFirstId = 0x4D440000; // far above any connection handle in practice

    MediaRegistry() = default;

    mutable std::mutex mutex_;
    std::unordered_map<uintptr_t, std::shared_ptr<MediaDistribution>> items_;
    uintptr_t lastId_ = kFirstId;
};

} // namespace cmatrix::sdk
