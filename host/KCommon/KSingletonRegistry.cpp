#include "KSingleton.h"

#include <memory>
#include <mutex>
#include <string>
#include <unordered_map>

namespace KCOMMON::detail {

namespace {

struct Slot {
    std::once_flag once;
    void* object = nullptr;
};

struct Registry {
    std::mutex mutex;
    std::unordered_map<std::string, std::unique_ptr<Slot>> slots;
};

Registry& registry()
{
    // Leaked on purpose: singletons may still be asked for during static destruction.
    static Registry* const table = new Registry;
    return *table;
}

} // namespace

void* singletonInstance(const char* typeKey, void* (*create)())
{
    Registry& table = registry();
    Slot* slot = nullptr;
    {
        std::lock_guard<std::mutex> lock(table.mutex);
        auto& entry = table.slots[typeKey];
        if (!entry)
            entry = std::make_unique<Slot>();
        slot = entry.get();
    }
    // Construct outside the table lock, so a constructor may ask for other singletons.
    std::call_once(slot->once, [slot, create] { slot->object = create(); });
    return slot->object;
}

} // namespace KCOMMON::detail
