#include "FilesRig.h"

#include "SuiteMain.h"

#include "MatrixSdkWorker.h"
#include "TvWallIni.h"

#include <QFile>
#include <QSettings>
#include <QtTest>

#include <functional>

#include <sys/stat.h>

using namespace kvms_matrix;

namespace {

using Writer = std::function<void()>;

QVariant rawIni(const QString& key)
{
    return QSettings(QStringLiteral("tvWallConfig.ini"), QSettings::IniFormat).value(key);
}

// One writer per way of writing: the decoder list shares the matrix list's, every INI key the same group writer.
QList<QPair<const char*, Writer>> writers()
{
    const MatrixInfo info;
    return {
        { "matrix list", [=] { MatrixSdkWorker::addAllOneMatrixToJson({ info }); } },
        { "last connected", [=] { MatrixSdkWorker::writeMatrixLastConnectedInfoToJson(info); } },
        { "wall list", [] { MatrixSdkWorker::addMatrixToJson({ TvWallManagement() }); } },
        { "ini login", [] { TvWallIni::writeLogin(TvWallIni::Login()); } },
    };
}

const char* fileWrittenBy(int index)
{
    static const char* const files[]
        = { "matrixConfig.json", "matrixConfig.json", "tvWallConfig.json", "tvWallConfig.ini" };
    return files[index];
}

// The mode bits themselves: QFile::permissions() mixes in what the current user may do.
int modeOf(const QString& name)
{
    struct stat status { };
    return ::stat(QFile::encodeName(name).constData(), &status) == 0 ? int(status.st_mode & 07777) : -1;
}

} // namespace

class TestIniAndModes : public QObject, public FilesRig {
    Q_OBJECT

private slots:
    void init() { QVERIFY(enter()); }
    void cleanup() { leave(); }
    void iniLogin_data();
    void iniLogin();
    void fileModes_data();
    void fileModes();
};

void TestIniAndModes::iniLogin_data()
{
    QTest::addColumn<QString>("ip");
    QTest::addColumn<QString>("user");
    QTest::addColumn<QString>("password");
    QTest::addColumn<QString>("expectedIp");

    const char* const rows[][5] = {
        { "plain", "127.0.0.2", "admin", "12345", "127.0.0.2" },
        { "blanks around ip", " \t127.0.0.3 ", "admin", "a=b;c", "127.0.0.3" },
        { "non-ASCII", "127.0.0.4", "\xE7\x94\xA8\xE6\x88\xB7", "p\xC3\xA4ss", "127.0.0.4" },
    };
    for (const auto& row : rows)
        QTest::newRow(row[0]) << QString::fromUtf8(row[1]) << QString::fromUtf8(row[2]) << QString::fromUtf8(row[3])
                              << QString::fromUtf8(row[4]);
}

void TestIniAndModes::iniLogin()
{
    QFETCH(QString, ip);
    QFETCH(QString, user);
    QFETCH(QString, password);
    QFETCH(QString, expectedIp);

    TvWallIni::writeLogin({ 3, ip, 8000, user, password });
    // On disk: Base64 of the UTF-8 bytes, never the clear text.
    QCOMPARE(rawIni(QStringLiteral("info/username")).toString(), QString::fromLatin1(user.toUtf8().toBase64()));
    QCOMPARE(rawIni(QStringLiteral("info/password")).toString(), QString::fromLatin1(password.toUtf8().toBase64()));

    const TvWallIni::Login login = TvWallIni::readLogin();
    QCOMPARE(QVariantList({ login.type, login.ip, login.port, login.username, login.password }),
        QVariantList({ 3, expectedIp, 8000, user, password }));
}

void TestIniAndModes::fileModes_data()
{
    QTest::addColumn<int>("writer");
    QTest::addColumn<int>("mode"); // of the file before the write; -1: no file yet
    const auto all = writers();
    const int modes[] = { -1, 0640, 0400 }; // one per writer, in turn
    for (int i = 0; i < all.size(); ++i) {
        const int mode = modes[i % 3];
        const QString state = mode < 0 ? QStringLiteral("new") : QStringLiteral("was 0%1").arg(mode, 0, 8);
        QTest::newRow(qPrintable(QStringLiteral("%1, %2").arg(QLatin1String(all[i].first), state))) << i << mode;
    }
}

void TestIniAndModes::fileModes()
{
    QFETCH(int, writer);
    QFETCH(int, mode);
    const QString name = QString::fromLatin1(fileWrittenBy(writer));
    if (mode >= 0) {
        writeText(name, QByteArray());
        QCOMPARE(::chmod(QFile::encodeName(name).constData(), mode_t(mode)), 0);
    }
    writers()[writer].second();
    QVERIFY(QFileInfo(name).size() > 0 || (mode & 0200) == 0); // read-only: written by root only
    // A new file is its owner's only; an existing one keeps its mode, never widened.
    QCOMPARE(modeOf(name), mode >= 0 ? mode : 0600);
}

KVMS_TEST_CLASS(TestIniAndModes)
#include "TestIniAndModes.moc"
