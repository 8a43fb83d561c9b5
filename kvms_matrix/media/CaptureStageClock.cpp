#include "CaptureStageClock.h"

#include <atomic>
#include <ctime>

namespace kvms_matrix {

namespace {

std::atomic<CaptureStageClock::Observer> g_observer { nullptr };
std::atomic<void*> g_context { nullptr };
thread_local CaptureStageClock* t_current = nullptr;

} // namespace

void CaptureStageClock::setObserver(Observer observer, void* context)
{
    g_context.store(context);
    g_observer.store(observer);
}

bool CaptureStageClock::observed()
{
    return g_observer.load(std::memory_order_relaxed) != nullptr;
}

qint64 CaptureStageClock::threadCpuNs()
{
    timespec ts {};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &ts);
    return qint64(ts.tv_sec) * 1000000000 + ts.tv_nsec;
}

CaptureStageClock::CaptureStageClock(bool active)
    : m_active(active)
{
    if (!m_active)
        return;
    m_previous = t_current;
    t_current = this;
    m_lastCpu = threadCpuNs();
    m_lastWall = std::chrono::steady_clock::now();
}

CaptureStageClock::~CaptureStageClock()
{
    if (!m_active)
        return;
    t_current = m_previous;
    const Observer observer = g_observer.load();
    if (observer)
        observer(m_round, g_context.load());
}

void CaptureStageClock::mark(Stage stage)
{
    if (!m_active)
        return;
    const qint64 cpu = threadCpuNs();
    const auto wall = std::chrono::steady_clock::now();
    m_round.cpuNs[stage] += cpu - m_lastCpu;
    m_round.wallNs[stage] += std::chrono::duration_cast<std::chrono::nanoseconds>(wall - m_lastWall).count();
    m_lastCpu = cpu;
    m_lastWall = wall;
}

void CaptureStageClock::markCurrent(Stage stage)
{
    if (t_current)
        t_current->mark(stage);
}

} // namespace kvms_matrix
