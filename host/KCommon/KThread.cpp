#include "KThread.h"

namespace KCOMMON {

KThread::KThread(QObject* parent)
    : QThread(parent)
{
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

} // namespace KCOMMON
