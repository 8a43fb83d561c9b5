// Read by AddressSanitizer's runtime in sanitizer builds, unused otherwise. The
// offscreen platform the daemon draws its monitor with never frees the screen it
// creates with the application object; that allocation is only recognisable by a
// full stack, hence the slower unwinding.

extern "C" {

__attribute__((used, visibility("default"))) const char* __asan_default_options()
{
    return "fast_unwind_on_malloc=0";
}

__attribute__((used, visibility("default"))) const char* __lsan_default_suppressions()
{
    return "leak:QGuiApplicationPrivate::createPlatformIntegration\n";
}

} // extern "C"
