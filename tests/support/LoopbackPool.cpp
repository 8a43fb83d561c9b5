#include "LoopbackPool.h"

#include <QDir>
#include <QMutex>
#include <QMutexLocker>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace kvmstest {

namespace {
constexpr int kFirstHost = 30;
constexpr int kLastHost = 254;
QMutex gMutex;
int gNext = kFirstHost; // this process never goes back to an address it held
} // namespace

int LoopbackPool::claimHost()
{
    QMutexLocker lock(&gMutex);
    const QString dir = QDir::tempPath() + QStringLiteral("/kvms-test-loopback");
    QDir().mkpath(dir);
    for (; gNext <= kLastHost; ++gNext) {
        const QByteArray path = QStringLiteral("%1/127.0.0.%2.lock").arg(dir).arg(gNext).toLocal8Bit();
        const int fd = ::open(path.constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0666);
        if (fd < 0)
            continue;
        if (::flock(fd, LOCK_EX | LOCK_NB) == 0)
            return gNext++; // the descriptor stays open: the claim lasts as long as the process
        ::close(fd);
    }
    return 0;
}

QString LoopbackPool::claim()
{
    const int host = claimHost();
    return host ? QStringLiteral("127.0.0.%1").arg(host) : QString();
}

} // namespace kvmstest
