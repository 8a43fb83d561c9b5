// Read by ThreadSanitizer's runtime in a tsan build of camera-sim, unused otherwise.
//
// Debian's GLib and GStreamer are not built with ThreadSanitizer, and GLib's mutexes are
// its own futex-based ones, invisible to it: every picture handed from the ticker to a
// stream's thread through appsrc's queue, and every packet the RTSP server hands between
// its threads, would be reported as racing. Only the calls these libraries make into the
// sanitizer's interceptors are ignored; camera-sim's own accesses are still checked.
#if defined(__SANITIZE_THREAD__)
#include <cstdlib>

namespace {
// GLib's slice allocator hands memory between threads under a lock TSan cannot see either.
[[maybe_unused]] const bool kPlainMalloc = setenv("G_SLICE", "always-malloc", 0) == 0;
} // namespace

extern "C" __attribute__((used, visibility("default"))) const char* __tsan_default_suppressions()
{
    return "called_from_lib:libglib-2.0.so.0\n"
           "called_from_lib:libgobject-2.0.so.0\n"
           "called_from_lib:libgio-2.0.so.0\n"
           "called_from_lib:libgstreamer-1.0.so.0\n"
           "called_from_lib:libgstbase-1.0.so.0\n"
           "called_from_lib:libgstapp-1.0.so.0\n"
           "called_from_lib:libgstrtp-1.0.so.0\n"
           "called_from_lib:libgstrtsp-1.0.so.0\n"
           "called_from_lib:libgstrtspserver-1.0.so.0\n"
           "called_from_lib:libgstrtp.so\n"
           "called_from_lib:libgstrtpmanager.so\n"
           "called_from_lib:libgstcoreelements.so\n";
}
#endif
