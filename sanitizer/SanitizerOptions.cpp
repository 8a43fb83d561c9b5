// Read by the sanitizers' runtimes in sanitizer builds, unused otherwise.
#include <cstdlib>

#if defined(__SANITIZE_THREAD__)
namespace {
// GLib's slice allocator hands memory from one thread to another under a lock TSan cannot
// see; plain malloc does not. Set before main, before Qt starts GLib.
[[maybe_unused]] const bool kPlainMalloc = setenv("G_SLICE", "always-malloc", 0) == 0;
} // namespace
#endif

extern "C" {

// Qt's offscreen platform never frees the screen it creates with the application object;
// that allocation is only recognisable by a full stack, hence the slower unwinding.

__attribute__((used, visibility("default"))) const char* __asan_default_options()
{
    return "fast_unwind_on_malloc=0";
}

__attribute__((used, visibility("default"))) const char* __lsan_default_suppressions()
{
    return "leak:QGuiApplicationPrivate::createPlatformIntegration\n";
}

// Debian's Qt 5 is not built with ThreadSanitizer, so the mutexes and atomics inside it are
// invisible to TSan. Memory that Qt frees or destroys after an ordering it made itself (the
// last reference to shared QString/QVariant data dropped inside Qt, signal connection lists
// pruned while another thread connects, a QWaitCondition destroyed after its last wake, the
// test library's watchdog) is then reported as racing. Only the calls that Qt's own code
// makes into the sanitizer's interceptors are ignored: every access made by the module's,
// the SDK's and the decoder's code is still checked. The worker's QMutex locks are announced
// to TSan by SyncLocker, not hidden here.
//
// A queued signal's arguments are copied by Qt's metatype helpers on the emitting thread and
// again on the receiving one; the hand-over goes through Qt's event queue, whose lock TSan
// cannot see. glibc's time-zone code keeps a lock of its own that TSan cannot see either.
// A functor posted to another thread's event loop (QMetaObject::invokeMethod, a queued
// connection to a lambda) is built on the posting thread and called and destroyed on the
// receiving one; the hand-over is that same event queue, matched here by Qt's functor-call
// header, where every frame of such a call is.
// Qt's xcb platform and libxcb hand replies between their reader thread and the GUI thread
// under their own locks; Xlib and its extensions and GLX (loaded by the xcb platform), GObject's
// type registry and HarfBuzz (text shaping) lock their own way.
// QtGui converts and scales large images on its own thread pool, QtWidgets shares its style
// data the same way. GStreamer (the camera simulator's RTSP server) hands buffers between its
// streaming threads under GLib's locks.
// GLib (the event dispatcher of every Qt thread) frees a thread's main context and its
// sources from whichever thread drops the last reference, ordered by GLib's own locks.
__attribute__((used, visibility("default"))) const char* __tsan_default_suppressions()
{
    return "called_from_lib:libQt5Core.so.5\n"
           "called_from_lib:libQt5Test.so.5\n"
           "called_from_lib:libglib-2.0.so.0\n"
           "called_from_lib:libQt5XcbQpa.so.5\n"
           "called_from_lib:libqxcb-glx-integration.so\n"
           "called_from_lib:libxcb.so.1\n"
           "called_from_lib:libX11.so.6\n"
           "called_from_lib:libXrender.so.1\n"
           "called_from_lib:libXfixes.so.3\n"
           "called_from_lib:libXext.so.6\n"
           "called_from_lib:libXi.so.6\n"
           "called_from_lib:libXcursor.so.1\n"
           "called_from_lib:libXrandr.so.2\n"
           "mutex:libGLX_mesa.so.0\n" // loaded and unloaded again by the GLX integration
           "race:libGLX_mesa.so.0\n"
           "called_from_lib:libGLX.so.0\n"
           "called_from_lib:libgobject-2.0.so.0\n"
           "called_from_lib:libharfbuzz.so.0\n"
           "called_from_lib:libQt5Gui.so.5\n"
           "called_from_lib:libQt5Widgets.so.5\n"
           "called_from_lib:libgio-2.0.so.0\n"
           "called_from_lib:libgstreamer-1.0.so.0\n"
           "called_from_lib:libgstbase-1.0.so.0\n"
           "called_from_lib:libgstapp-1.0.so.0\n"
           "called_from_lib:libgstrtp-1.0.so.0\n"
           "called_from_lib:libgstrtsp-1.0.so.0\n"
           "called_from_lib:libgstrtspserver-1.0.so.0\n"
           "called_from_lib:libgstrtp.so\n"
           "called_from_lib:libgstcoreelements.so\n"
           "called_from_lib:libgstrtpmanager.so\n"
           "race:QtCore/qobjectdefs_impl.h\n"
           "race:QtMetaTypePrivate::QMetaTypeFunctionHelper\n"
           "race:tzset_internal\n";
}

} // extern "C"
