#include "ConfigFile.h"

#include <QFile>
#include <QSaveFile>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace kvms_matrix {

const char* const ConfigFile::kMatrixConfig = "matrixConfig.json";
const char* const ConfigFile::kDecoderConfig = "decoderConfig.json";
const char* const ConfigFile::kTvWallConfig = "tvWallConfig.json";
const char* const ConfigFile::kTvWallIni = "tvWallConfig.ini";

void ConfigFile::createOwnerOnly(const QString& fileName)
{
    // O_EXCL: only a file that this call creates gets the mode; an existing one keeps its own.
    const int fd = ::open(QFile::encodeName(fileName).constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
    if (fd >= 0)
        ::close(fd);
}

int ConfigFile::modeOf(const QString& fileName)
{
    struct stat status { };
    if (::stat(QFile::encodeName(fileName).constData(), &status) != 0)
        return -1;
    return int(status.st_mode & 07777);
}

void ConfigFile::restoreMode(const QString& fileName, int mode)
{
    if (mode >= 0 && modeOf(fileName) != mode)
        ::chmod(QFile::encodeName(fileName).constData(), mode_t(mode));
}

bool ConfigFile::readAll(const QString& fileName, QByteArray& content)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly) || file.size() > kMaxFileBytes)
        return false;
    // What the file holds, not the bound: reading up to a size sets aside that much first.
    content = file.read(file.size());
    return true;
}

bool ConfigFile::replace(const QString& fileName, const QByteArray& content)
{
    createOwnerOnly(fileName);
    const int mode = modeOf(fileName); // the new file takes the mode of the one it replaces
    QSaveFile file(fileName);
    // Unbuffered: a short write shows in write()'s result, whereas a buffered one would fail
    // later, inside commit(), which renames the cut file over the old one all the same.
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        return false;
    if (file.write(content) != content.size()) {
        file.cancelWriting();
        return false;
    }
    if (!file.commit())
        return false;
    restoreMode(fileName, mode);
    return true;
}

} // namespace kvms_matrix
