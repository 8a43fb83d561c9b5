#pragma once

#include <QtGlobal>

#include <chrono>

namespace kvms_matrix {

// Optional timing of the capture loop's stages, for benchmarks: thread CPU time and wall time
// spent in each stage of one round. Without an observer the loop pays one atomic load a round.
// The clock of the running round is reachable from the capture thread, so the frame sender can
// tell packing from sending without the loop changing its order.
class CaptureStageClock {
public:
    enum Stage { Grab, Pointer, Scale, Encode, Pack, Send, StageCount };

    struct Round {
        qint64 cpuNs[StageCount] = {};
        qint64 wallNs[StageCount] = {};
        bool grabbed = false; // a picture was taken and handed on
        bool sharedMemory = false; // taken through MIT-SHM rather than the toolkit
    };

    // Called on the capture thread at the end of every round. Set it before the loop starts;
    // nullptr removes it.
    using Observer = void (*)(const Round& round, void* context);
    static void setObserver(Observer observer, void* context);
    static bool observed();

    // Times the current round when `active`; the calling thread's clock until destroyed,
    // which reports the round to the observer.
    explicit CaptureStageClock(bool active);
    ~CaptureStageClock();
    CaptureStageClock(const CaptureStageClock&) = delete;
    CaptureStageClock& operator=(const CaptureStageClock&) = delete;

    // The time since the previous mark (or the start) belongs to `stage`.
    void mark(Stage stage);
    // Marks on the calling thread's running clock, if there is one.
    static void markCurrent(Stage stage);
    Round& round() { return m_round; }

private:
    static qint64 threadCpuNs();

    const bool m_active;
    Round m_round;
    qint64 m_lastCpu = 0;
    std::chrono::steady_clock::time_point m_lastWall;
    CaptureStageClock* m_previous = nullptr;
};

} // namespace kvms_matrix
