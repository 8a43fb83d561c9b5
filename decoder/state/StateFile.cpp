#include "StateFile.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QSaveFile>

namespace vdec {

StateFile::StateFile(const QString& directory)
    : directory_(directory)
{
}

QString StateFile::path() const
{
    return QDir(directory_).filePath(QStringLiteral("state.json"));
}

StateFile::Load StateFile::load(QJsonObject& out, QString* error)
{
    if (!enabled())
        return Load::Missing;
    QFile file(path());
    if (!file.exists())
        return Load::Missing;
    QJsonParseError parse {};
    QJsonDocument document;
    if (file.open(QIODevice::ReadOnly))
        document = QJsonDocument::fromJson(file.readAll(), &parse);
    file.close();
    if (!document.isObject()) {
        if (error)
            *error = QStringLiteral("%1: not a state file (%2)").arg(path(), parse.errorString());
        return Load::Corrupt;
    }
    out = document.object();
    return Load::Loaded;
}

void StateFile::setAside()
{
    const QString aside = path() + QStringLiteral(".corrupt");
    QFile::remove(aside);
    QFile::rename(path(), aside);
}

bool StateFile::save(const QJsonObject& object, QString* error)
{
    if (!enabled())
        return true;
    QSaveFile file(path());
    const bool ok = QDir().mkpath(directory_) && file.open(QIODevice::WriteOnly)
        && file.write(QJsonDocument(object).toJson(QJsonDocument::Indented)) >= 0 && file.commit();
    if (!ok && error)
        *error = QStringLiteral("%1: %2").arg(path(), file.errorString());
    return ok;
}

} // namespace vdec
