#pragma once

#include "MessageType.h"

#include <chrono>
#include <cstdint>
#include <map>
#include <mutex>
#include <vector>

namespace vdec {

struct JournalEntry {
    uint16_t type = 0; // as on the wire, answer flag included
    uint32_t requestId = 0;
    uint32_t payloadSize = 0;
    uint64_t connectionId = 0;
    std::chrono::steady_clock::time_point at;
};

// What the decoder received, for tests to check what a client really sent.
// Thread-safe; keeps the latest kCapacity entries and counts everything.
class Journal {
public:
    static constexpr size_t kCapacity = 20000;
    using Type = cmatrix::wire::MessageType;

    void record(uint16_t type, uint32_t requestId, uint32_t payloadSize, uint64_t connectionId);

    std::vector<JournalEntry> entries() const;
    std::vector<JournalEntry> entries(Type type) const;
    int count(Type type) const;
    int total() const;
    void clear();

private:
    mutable std::mutex mutex_;
    std::vector<JournalEntry> entries_; // ring once full
    size_t next_ = 0;
    std::map<uint16_t, int> counts_;
    int total_ = 0;
};

} // namespace vdec
