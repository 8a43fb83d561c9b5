// Maintenance refusals the worker-level suite does not reach, through the real SDK against
// in-process decoders: bad firmware, busy units, a factory reset kept
// over a power cycle, modes and passwords the decoder refuses, malformed configurations.

#include "DecoderFixture.h"
#include "SdkSession.h"
#include "SuiteMain.h"
#include "TestTimeout.h"

#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

using kvmstest::scaled;

namespace {

using Client = kvmstest::SdkSession;

QByteArray image(const QByteArray& version, const QByteArray& payload = QByteArray(4096, 'p'))
{
    return QByteArray("KVFWIMG1") + version + QByteArray(1, '\0') + payload;
}

ScreenResolution_t mode(int width, int height, int rate, int output)
{
    return ScreenResolution_t { width, height, rate, output };
}

} // namespace

class TestMaintenance : public QObject {
    Q_OBJECT

    kvmstest::DecoderFixture fixture_;
    QTemporaryDir files_;

    QByteArray write(const QString& name, const QByteArray& content)
    {
        const QString path = files_.filePath(name);
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
            return {};
        return path.toLocal8Bit();
    }

    static QByteArray read(const QByteArray& path)
    {
        QFile file(QString::fromLocal8Bit(path));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

private slots:
    void cleanup() { fixture_.cleanup(); }

    void badFirmwareIsRefused_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<int>("result");
        QTest::newRow("wrong magic") << QByteArray("KVFWIMG2V2\0payload", 18) << CMATRIX_ERR_FIRMWARE;
        QTest::newRow("version without terminator")
            << QByteArray("KVFWIMG1") + QByteArray(40, 'v') << CMATRIX_ERR_FIRMWARE;
        QTest::newRow("version of 32 characters") << image(QByteArray(32, 'v')) << CMATRIX_ERR_FIRMWARE;
        QTest::newRow("control character in version") << image("V2\x01") << CMATRIX_ERR_FIRMWARE;
        QTest::newRow("version of 31 characters") << image(QByteArray(31, 'v')) << CMATRIX_OK;
    }

    void badFirmwareIsRefused()
    {
        QFETCH(QByteArray, content);
        QFETCH(int, result);
        vdec::VirtualDecoder* d = fixture_.startDecoder(0, [](vdec::DecoderConfig& c) { c.firmwareStepMs = 1; });
        QVERIFY(d);
        Client client;
        QCOMPARE(client.connect(d), CMATRIX_OK);
        QCOMPARE(CMatrix_FirmwareUpdate(client.handle(), write("fw.bin", content), nullptr, nullptr), result);
        const QString version = result == CMATRIX_OK ? QString(31, 'v') : d->config().firmwareVersion;
        QTRY_COMPARE_WITH_TIMEOUT(d->snapshot().firmwareVersion, version, scaled(5000));
        QVERIFY(!d->snapshot().upgrading);
    }

    void firmwareFileProblems()
    {
        vdec::VirtualDecoder* d = fixture_.startDecoder();
        QVERIFY(d);
        Client client;
        QCOMPARE(client.connect(d), CMATRIX_OK);
        const QByteArray missing = files_.filePath("missing.bin").toLocal8Bit();
        QCOMPARE(CMatrix_FirmwareUpdate(client.handle(), missing, nullptr, nullptr), CMATRIX_ERR_FILE_NOT_FOUND);
        QCOMPARE(CMatrix_FirmwareUpdate(client.handle(), files_.path().toLocal8Bit(), nullptr, nullptr),
            CMATRIX_ERR_FILE_IO); // a directory
        QCOMPARE(CMatrix_FirmwareUpdate(client.handle(), nullptr, nullptr, nullptr), CMATRIX_ERR_INVALID_PARAM);
        QCOMPARE(d->journal().count(cmatrix::wire::MessageType::FirmwareUpload), 0);
    }

    void secondJobWhileUpgradingIsBusy()
    {
        vdec::VirtualDecoder* d = fixture_.startDecoder(0, [](vdec::DecoderConfig& c) { c.firmwareStepMs = 500; });
        QVERIFY(d);
        Client client;
        QCOMPARE(client.connect(d), CMATRIX_OK);
        const QByteArray path = write("fw.bin", image("V2.1"));
        QCOMPARE(CMatrix_FirmwareUpdate(client.handle(), path, nullptr, nullptr), CMATRIX_OK);
        QVERIFY(d->snapshot().upgrading);
        QCOMPARE(CMatrix_FirmwareUpdate(client.handle(), path, nullptr, nullptr), CMATRIX_ERR_BUSY);
        QCOMPARE(CMatrix_FactoryReset(client.handle()), CMATRIX_ERR_BUSY);
        QVERIFY(d->snapshot().activated);
        // Stopping the decoder abandons the upgrade: the old version stays.
        d->stop();
        QCOMPARE(d->snapshot().firmwareVersion, d->config().firmwareVersion);
    }

    void factoryResetRestartsTheUnitFresh()
    {
        vdec::VirtualDecoder* d = fixture_.startDecoder();
        QVERIFY(d);
        Client client;
        Client other;
        QCOMPARE(client.connect(d), CMATRIX_OK);
        QCOMPARE(other.connect(d), CMATRIX_OK);
        const CMHANDLE h = client.handle();
        QCOMPARE(CMatrix_SetMatrix(h, 3, 3, "Lobby"), CMATRIX_OK);
        const MatrixWindow_t window { 1, 0, {}, 0, 0, 10922, 10922 };
        QCOMPARE(CMatrix_WindowAdd(h, &window, 1, false), CMATRIX_OK);
        const ScreenResolution_t uhd = mode(3840, 2160, 30, -1);
        QCOMPARE(CMatrix_SetResolution(h, &uhd, 1), CMATRIX_OK);
        QCOMPARE(CMatrix_AccountPasswdModify(h, "admin", "admin123", "Changed2024"), CMATRIX_OK);

        QCOMPARE(CMatrix_FactoryReset(h), CMATRIX_OK);
        QTRY_COMPARE_WITH_TIMEOUT(client.losses(), 1, scaled(5000)); // every connection closes, as on a reboot
        QTRY_COMPARE_WITH_TIMEOUT(other.losses(), 1, scaled(5000));
        const vdec::DecoderSnapshot s = d->snapshot();
        QCOMPARE(s.cols, 2);
        QCOMPARE(s.rows, 2);
        QVERIFY(s.windows.empty());
        QVERIFY(!s.activated);
        QCOMPARE(s.resolution.width, 1920);
        QCOMPARE(s.firmwareVersion, d->config().firmwareVersion); // firmware is not undone

        QCOMPARE(client.connect(d, "Changed2024"), CMATRIX_ERR_NOT_ACTIVATED);
        QVERIFY(d->restart());
        QVERIFY(!d->snapshot().activated); // kept over a power cycle
        QCOMPARE(d->snapshot().cols, 2);
    }

    void passwordChange_data()
    {
        QTest::addColumn<QByteArray>("user");
        QTest::addColumn<QByteArray>("oldPassword");
        QTest::addColumn<QByteArray>("newPassword");
        QTest::addColumn<int>("result");
        const auto row = [](const char* name, const QByteArray& newPassword, int result,
                             const QByteArray& oldPassword = "admin123", const QByteArray& user = "admin") {
            QTest::newRow(name) << user << oldPassword << newPassword << result;
        };
        row("unknown user", "Better2024", CMATRIX_ERR_PASSWORD, "admin123", "guest");
        row("thirty-two characters", QByteArray("a1").repeated(16), CMATRIX_ERR_WEAK_PASSWORD);
        row("thirty-one characters", QByteArray("a1").repeated(16).left(31), CMATRIX_OK);
        row("no digit", "BetterOnes", CMATRIX_ERR_WEAK_PASSWORD);
    }

    void passwordChange()
    {
        QFETCH(QByteArray, user);
        QFETCH(QByteArray, oldPassword);
        QFETCH(QByteArray, newPassword);
        QFETCH(int, result);
        vdec::VirtualDecoder* d = fixture_.startDecoder();
        QVERIFY(d);
        Client client;
        QCOMPARE(client.connect(d), CMATRIX_OK);
        QCOMPARE(CMatrix_AccountPasswdModify(client.handle(), user, oldPassword, newPassword), result);
        int cols = 0, rows = 0;
        QCOMPARE(CMatrix_GetMatrix(client.handle(), &cols, &rows, nullptr, 0), CMATRIX_OK); // the session stays
        Client later;
        QCOMPARE(later.connect(d, "admin123"), result == CMATRIX_OK ? CMATRIX_ERR_PASSWORD : CMATRIX_OK);
        if (result == CMATRIX_OK)
            QCOMPARE(later.connect(d, newPassword), CMATRIX_OK);
    }

    void malformedImportChangesNothing_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<int>("result");
        QTest::newRow("not JSON") << QByteArray("{\"format\":") << CMATRIX_ERR_CONFIG;
        QTest::newRow("wall too large") << QByteArray(R"({"format":1,"wall":{"cols":99,"rows":2,"name":"W"}})")
                                        << CMATRIX_ERR_CONFIG;
        QTest::newRow("resolution not offered")
            << QByteArray(R"({"format":1,"wall":{"cols":2,"rows":2,"name":"W"},)"
                          R"("resolution":{"all":{"width":1,"height":1,"refreshRate":1}}})")
            << CMATRIX_ERR_CONFIG;
    }

    void malformedImportChangesNothing()
    {
        QFETCH(QByteArray, content);
        QFETCH(int, result);
        vdec::VirtualDecoder* d = fixture_.startDecoder();
        QVERIFY(d);
        Client client;
        QCOMPARE(client.connect(d), CMATRIX_OK);
        QCOMPARE(CMatrix_SetMatrix(client.handle(), 3, 3, "Kept"), CMATRIX_OK);
        const QByteArray before = read(d->stateFilePath().toLocal8Bit());
        QCOMPARE(CMatrix_ImportConfig(client.handle(), write("import.json", content)), result);
        QCOMPARE(d->snapshot().name, QString("Kept"));
        QCOMPARE(d->snapshot().cols, 3);
        QCOMPARE(read(d->stateFilePath().toLocal8Bit()), before);
    }
};

KVMS_TEST_CLASS(TestMaintenance)
#include "TestMaintenance.moc"
