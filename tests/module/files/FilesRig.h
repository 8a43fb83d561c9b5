#pragma once

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>

#include <memory>

// The worker's files are opened by bare name: every test of these classes runs in a fresh
// temporary working directory.
class FilesRig {
public:
    static void writeText(const QString& name, const QByteArray& text);
    static QByteArray contentOf(const QString& name); // "<missing>" when it cannot be read

protected:
    bool enter(); // for init
    void leave(); // for cleanup

    std::unique_ptr<QTemporaryDir> m_dir;

private:
    QString m_previousDir;
};
