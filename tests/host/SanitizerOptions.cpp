// Read by AddressSanitizer's runtime when the tests are built with it; unused otherwise.
//
// Qt's offscreen platform plug-in never frees the screen and cursor it creates with the
// application object. Those allocations are only recognisable by the frame that creates the
// platform, so full stacks are recorded for allocations (slower, but these tests are small).

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
