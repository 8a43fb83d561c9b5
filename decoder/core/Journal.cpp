#include "Journal.h"

namespace vdec {

void Journal::record(uint16_t type, uint32_t requestId, uint32_t payloadSize, uint64_t connectionId)
{
    const JournalEntry entry { type, requestId, payloadSize, connectionId, std::chrono::steady_clock::now() };
    std::lock_guard<std::mutex> lock(mutex_);
    if (entries_.size() < kCapacity) {
        entries_.push_back(entry);
    } else {
        entries_[next_] = entry;
        next_ = (next_ + 1) % kCapacity;
    }
    ++counts_[type];
    ++total_;
}

std::vector<JournalEntry> Journal::entries() const
{
    std::lock_guard<std::mutex> lock(mutex_);
    std::vector<JournalEntry> list(entries_.begin() + std::ptrdiff_t(next_), entries_.end());
    list.insert(list.end(), entries_.begin(), entries_.begin() + std::ptrdiff_t(next_));
    return list;
}

std::vector<JournalEntry> Journal::entries(Type type) const
{
    std::vector<JournalEntry> list = entries();
    std::vector<JournalEntry> matching;
    for (const JournalEntry& e : list) {
        if (e.type == uint16_t(type))
            matching.push_back(e);
    }
    return matching;
}

int Journal::count(Type type) const
{
    std::lock_guard<std::mutex> lock(mutex_);
    auto it = counts_.find(uint16_t(type));
    return it == counts_.end() ? 0 : it->second;
}

int Journal::total() const
{
    std::lock_guard<std::mutex> lock(mutex_);
    return total_;
}

void Journal::clear()
{
    std::lock_guard<std::mutex> lock(mutex_);
    entries_.clear();
    next_ = 0;
    counts_.clear();
    total_ = 0;
}

} // namespace vdec
