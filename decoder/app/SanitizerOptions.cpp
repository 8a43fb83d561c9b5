// Read by the sanitizers' runtimes in sanitizer builds, unused otherwise.

extern "C" {

// The offscreen platform the daemon draws its monitor with never frees the screen it creates
// with the application object; that allocation is only recognisable by a full stack, hence the
// slower unwinding.
__attribute__((used, visibility("default"))) const char* __asan_default_options()
{
    return "fast_unwind_on_malloc=0";
}

__attribute__((used, visibility("default"))) const char* __lsan_default_suppressions()
{
    return "leak:QGuiApplicationPrivate::createPlatformIntegration\n";
}

// Every connection thread stamps its log lines with the local time; glibc's time-zone code
// guards its cached zone with a lock of its own that ThreadSanitizer cannot see.
__attribute__((used, visibility("default"))) const char* __tsan_default_suppressions()
{
    return "race:tzset_internal\n";
}

} // extern "C"
