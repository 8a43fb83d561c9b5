#pragma once

#include <typeinfo>

namespace KCOMMON {

namespace detail {
// Returns the one object registered under typeKey, creating it with create() on first use.
// The table lives in KCommon itself, so a program and the plug-ins it loads share every
// singleton even when a plug-in is built with hidden symbols.
void* singletonInstance(const char* typeKey, void* (*create)());
} // namespace detail

// Process-wide instance of T, created on first use from any thread and never destroyed:
// objects such as worker threads must not be torn down by static destruction after the
// application object is gone.
template <typename T> class KSingleton {
public:
    KSingleton() = delete;

    static T* instance()
    {
        static T* const object = static_cast<T*>(detail::singletonInstance(typeid(T).name(), &create));
        return object;
    }

private:
    static void* create() { return new T(); }
};

} // namespace KCOMMON
