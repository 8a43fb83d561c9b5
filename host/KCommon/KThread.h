#pragma once

#include <QDeadlineTimer>
#include <QThread>

namespace KCOMMON {

// Thread base of the host's workers. Subclasses override run(); the default runs an event loop.
class KThread : public QThread {
    Q_OBJECT

public:
    explicit KThread(QObject* parent = nullptr);
    ~KThread() override;

    // Asks run() to end (interruption request and event-loop quit) and waits for it.
    void stopAndWait();

    // QThread::wait. The thread's end is ordered before the return by locks inside Qt, which
    // ThreadSanitizer cannot see; these announce that ordering, so whatever the thread did is
    // known to happen before what the waiter does next (typically destroying the object).
    bool wait(QDeadlineTimer deadline = QDeadlineTimer(QDeadlineTimer::Forever));
    bool wait(unsigned long time);
};

} // namespace KCOMMON
