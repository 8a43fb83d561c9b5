#pragma once

#include "CSharedHandle.h"

#include "KThread.h"

#include <QMutex>
#include <QSharedPointer>

#include <atomic>
#include <condition_variable>
#include <mutex>

namespace kvms_matrix {

class MatrixSdkWorker;

// Projects the operator's desktop onto one window of the wall. Each round grabs the primary
// screen, draws the pointer, scales to 1920 x 1080, encodes JPEG and hands the picture to the
// worker's sendDeviceDisplayFrame directly (not through the task queue), then sleeps 40 ms.
class KovCapThread : public KCOMMON::KThread {
    Q_OBJECT

public:
    explicit KovCapThread(MatrixSdkWorker* worker, QObject* parent = nullptr);
    ~KovCapThread() override;

    // Sets the target and starts the loop; while it runs, a second call only retargets it.
    void setParams(QSharedPointer<CSharedHandle> connection, int windowId, int channel);
    // The loop ends after its current round, which is short: the send gives up after tens of
    // milliseconds and the pause between rounds ends at once.
    void stop();

    int windowId() const { return m_windowId.load(); }
    int channel() const { return m_channel.load(); }
    int width() const { return m_width; }
    int height() const { return m_height; }

    // Shared-memory grabbing and the direct JPEG path are on by default; off, every round
    // takes the toolkit's screen grab and image writer (kept to compare against).
    static void setFastPathsEnabled(bool enabled);
    static bool fastPathsEnabled();

protected:
    void run() override;

private:
    QSharedPointer<CSharedHandle> connection() const;

    MatrixSdkWorker* m_worker;
    mutable QMutex m_connectionMutex; // the target is changed by the worker while the loop reads it
    QSharedPointer<CSharedHandle> m_connection;
    std::atomic<bool> m_running { true };
    std::mutex m_pauseMutex; // the pause between rounds, cut short by stop()
    std::condition_variable m_pauseEnd;
    std::atomic<int> m_windowId { -1 };
    std::atomic<int> m_channel { -1 };
    const int m_width = 1920;
    const int m_height = 1080;
};

} // namespace kvms_matrix
