#pragma once

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
};

} // namespace KCOMMON
