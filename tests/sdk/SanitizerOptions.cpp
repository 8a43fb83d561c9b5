// Read by AddressSanitizer's runtime when the tests are built with it; unused otherwise.

extern "C" {

// A waiting call keeps the slot its answer goes into on its own stack; an answer
// written there after the call returned must show up as an error, not pass silently.
__attribute__((used, visibility("default"))) const char* __asan_default_options()
{
    return "detect_stack_use_after_return=1";
}

} // extern "C"
