#pragma once

#include <QMutex>

#if defined(__SANITIZE_THREAD__)
#define KVMS_TSAN_ANNOTATE 1
#elif defined(__has_feature)
#if __has_feature(thread_sanitizer)
#define KVMS_TSAN_ANNOTATE 1
#endif
#endif

#ifdef KVMS_TSAN_ANNOTATE
#include <sanitizer/tsan_interface.h>
#endif

namespace kvms_matrix {

// Scoped lock of a QMutex. QMutex::lock() lives in the prebuilt Qt library, where
// ThreadSanitizer cannot see it; under TSan the lock and unlock are announced by hand so the
// data the mutex guards is not reported as racing. Without TSan this is a QMutexLocker.
class SyncLocker {
public:
    explicit SyncLocker(QMutex* mutex)
        : m_mutex(mutex)
    {
#ifdef KVMS_TSAN_ANNOTATE
        __tsan_mutex_pre_lock(m_mutex, 0);
#endif
        m_mutex->lock();
#ifdef KVMS_TSAN_ANNOTATE
        __tsan_mutex_post_lock(m_mutex, 0, 0);
#endif
    }
    ~SyncLocker()
    {
#ifdef KVMS_TSAN_ANNOTATE
        __tsan_mutex_pre_unlock(m_mutex, 0);
#endif
        m_mutex->unlock();
#ifdef KVMS_TSAN_ANNOTATE
        __tsan_mutex_post_unlock(m_mutex, 0);
#endif
    }
    SyncLocker(const SyncLocker&) = delete;
    SyncLocker& operator=(const SyncLocker&) = delete;

private:
    QMutex* m_mutex;
};

} // namespace kvms_matrix
