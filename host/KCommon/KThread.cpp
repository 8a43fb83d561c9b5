#include "KThread.h"

#include <climits>

#if defined(__SANITIZE_THREAD__)
#define KCOMMON_TSAN_ANNOTATE 1
#elif defined(__has_feature)
#if __has_feature(thread_sanitizer)
#define KCOMMON_TSAN_ANNOTATE 1
#endif
#endif

#ifdef KCOMMON_TSAN_ANNOTATE
#include <sanitizer/tsan_interface.h>
#endif

namespace KCOMMON {

KThread::KThread(QObject* parent)
    : QThread(parent)
{
#ifdef KCOMMON_TSAN_ANNOTATE
    // Emitted on the thread itself, after run() and everything Qt did on it for this object.
    connect(
        this, &QThread::finished, this, [this] { __tsan_release(this); }, Qt::DirectConnection);
#endif
}

KThread::~KThread()
{
    // Destroying a running QThread aborts the process; a subclass should stop itself first,
    // this only covers the ones that forgot.
    stopAndWait();
}

void KThread::stopAndWait()
{
    if (!isRunning())
        return;
    requestInterruption();
    quit();
    wait();
}

bool KThread::wait(QDeadlineTimer deadline)
{
    const bool ended = QThread::wait(deadline);
#ifdef KCOMMON_TSAN_ANNOTATE
    if (ended)
        __tsan_acquire(this);
#endif
    return ended;
}

bool KThread::wait(unsigned long time)
{
    return time == ULONG_MAX ? wait() : wait(QDeadlineTimer(qint64(time)));
}

} // namespace KCOMMON
