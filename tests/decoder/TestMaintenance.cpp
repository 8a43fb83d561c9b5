// Maintenance refusals the worker-level suite does not reach, through the real SDK against
// in-process decoders: bad firmware, busy units, malformed configurations.

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

    void malformedImportChangesNothing_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<int>("result");
        QTest::newRow("not JSON") << QByteArray("{\"format\":") << CMATRIX_ERR_CONFIG;
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
