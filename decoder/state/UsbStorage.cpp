#include "UsbStorage.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <cstring>

namespace vdec {

namespace {

const char kSystemFolder[] = "System Volume Information";

template <size_t N> bool copyText(const QByteArray& text, char (&field)[N])
{
    if (size_t(text.size()) >= N)
        return false;
    memcpy(field, text.constData(), size_t(text.size()));
    return true;
}

} // namespace

UsbStorage::UsbStorage(const QString& stateDir)
    : root_(folderOf(stateDir))
{
}

QString UsbStorage::folderOf(const QString& stateDir)
{
    return stateDir.isEmpty() ? QString() : QDir(stateDir).filePath(QStringLiteral("usb"));
}

bool UsbStorage::prepare() const
{
    return root_.isEmpty() || QDir(root_).mkpath(QString::fromLatin1(kSystemFolder));
}

std::vector<DevPlayFile_t> UsbStorage::list() const
{
    std::vector<DevPlayFile_t> files;
    if (root_.isEmpty())
        return files;
    const QFileInfoList entries
        = QDir(root_).entryInfoList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
            QDir::Name | QDir::DirsFirst | QDir::IgnoreCase);
    for (const QFileInfo& entry : entries) {
        if (files.size() >= size_t(kMaxEntries))
            break;
        DevPlayFile_t f {};
        f.index = int32_t(files.size());
        f.isDirectory = entry.isDir() ? 1 : 0;
        f.sizeKiB = entry.isDir() ? 0 : int32_t(std::min<qint64>((entry.size() + 1023) / 1024, INT32_MAX));
        copyText(entry.lastModified().toString(QStringLiteral("yyyy-MM-dd hh:mm:ss")).toLatin1(), f.modified);
        if (!entry.isDir())
            copyText(entry.suffix().toLower().toUtf8().left(sizeof f.format - 1), f.format);
        if (!copyText(entry.fileName().toUtf8(), f.fileName))
            continue; // a name the record cannot hold could not be asked for either
        files.push_back(f);
    }
    return files;
}

int32_t UsbStorage::checkFile(const std::string& path) const
{
    if (path.empty() || path.size() > size_t(kMaxPathBytes) || path.find('\0') != std::string::npos)
        return CMATRIX_ERR_INVALID_PARAM;
    if (root_.isEmpty())
        return CMATRIX_ERR_FILE_NOT_FOUND;
    QString relative = QString::fromStdString(path);
    while (relative.startsWith(QLatin1Char('/')))
        relative.remove(0, 1);
    relative = QDir::cleanPath(relative);
    if (relative.isEmpty() || relative == QLatin1String("..") || relative.startsWith(QLatin1String("../")))
        return CMATRIX_ERR_INVALID_PARAM;
    const QFileInfo file(QDir(root_).filePath(relative));
    if (!file.exists() || !file.isFile())
        return CMATRIX_ERR_FILE_NOT_FOUND;
    // A link on the stick must not lead off it either.
    const QString stick = QFileInfo(root_).canonicalFilePath() + QLatin1Char('/');
    if (!file.canonicalFilePath().startsWith(stick))
        return CMATRIX_ERR_INVALID_PARAM;
    return CMATRIX_OK;
}

} // namespace vdec
