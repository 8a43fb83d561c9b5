#include "SysPaths.h"

#include "DictDef.h"

#include <QDir>
#include <QMutex>
#include <QMutexLocker>
#include <QStandardPaths>

namespace {

QMutex rootMutex;
QString rootOverride;

} // namespace

QString SysPaths::dataRoot()
{
    {
        QMutexLocker lock(&rootMutex);
        if (!rootOverride.isEmpty())
            return rootOverride;
    }
    return QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
}

void SysPaths::setDataRoot(const QString& path)
{
    QMutexLocker lock(&rootMutex);
    rootOverride = path.isEmpty() ? QString() : QDir::cleanPath(path);
}

QString SysPaths::matrixDataDir()
{
    const QString dir = dataRoot() + QLatin1Char('/') + QLatin1String(DictDef::kMatrixDataDirName);
    // Modules create one level below this directory, so it has to exist.
    QDir().mkpath(dir);
    return dir;
}
