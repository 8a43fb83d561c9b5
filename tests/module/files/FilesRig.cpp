#include "FilesRig.h"

#include <QDir>
#include <QFile>

void FilesRig::writeText(const QString& name, const QByteArray& text)
{
    QFile file(name);
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
        qFatal("cannot write %s", qPrintable(name));
}

QByteArray FilesRig::contentOf(const QString& name)
{
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<missing>");
}

bool FilesRig::enter()
{
    m_previousDir = QDir::currentPath();
    m_dir = std::make_unique<QTemporaryDir>();
    return m_dir->isValid() && QDir::setCurrent(m_dir->path());
}

void FilesRig::leave()
{
    QDir::setCurrent(m_previousDir);
    m_dir.reset();
}
