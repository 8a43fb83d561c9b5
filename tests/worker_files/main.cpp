#include "TestMain.h"
#include "TestWorkerFiles.h"

#include <QDir>
#include <QFile>

void writeText(const QString& name, const QByteArray& text)
{
    QFile file(name);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(text);
}

QByteArray contentOf(const QString& name)
{
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<missing>");
}

void TestWorkerFiles::init()
{
    m_previousDir = QDir::currentPath();
    m_dir = std::make_unique<QTemporaryDir>();
    QVERIFY(m_dir->isValid());
    QVERIFY(QDir::setCurrent(m_dir->path()));
}

void TestWorkerFiles::cleanup()
{
    QDir::setCurrent(m_previousDir);
    m_dir.reset();
}

KVMS_TEST_MAIN(TestWorkerFiles)
