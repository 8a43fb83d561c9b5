#include "LoopbackPool.h"
#include "SuiteMain.h"
#include "TestClient.h"
#include "TestTimeout.h"

#include <QDeadlineTimer>
#include <QProcess>
#include <QRegularExpression>
#include <QtTest>

using namespace cmatrix::wire;
using kvmstest::TestClient;

class TestDaemon : public QObject {
    Q_OBJECT

private slots:
    void daemonListensAndStops()
    {
        QTemporaryDir dir;
        QVERIFY(dir.isValid());
        const QString address = kvmstest::LoopbackPool::claim();
        QProcess daemon;
        daemon.setProgram(VIRTUAL_DECODER_PATH);
        daemon.setArguments({ "--address", address, "--port", "0", "--state-dir", dir.path(), "--device-id", "VD21",
            "--password", "secret99" });
        daemon.start();
        QVERIFY2(daemon.waitForStarted(kvmstest::scaled(5000)), qPrintable(daemon.errorString()));
        auto stopDaemon = qScopeGuard([&] {
            if (daemon.state() != QProcess::NotRunning) {
                daemon.kill();
                daemon.waitForFinished(kvmstest::scaled(5000));
            }
        });

        QDeadlineTimer deadline(kvmstest::scaled(5000));
        while (!daemon.canReadLine() && !deadline.hasExpired())
            daemon.waitForReadyRead(50);
        const QString line = QString::fromUtf8(daemon.readLine()).trimmed();
        const QRegularExpressionMatch match
            = QRegularExpression(R"(^virtual-decoder VD21 listening on (\S+) tcp=(\d+)(?: \w+=\d+)*$)").match(line);
        QVERIFY2(match.hasMatch(), qPrintable(line));
        QCOMPARE(match.captured(1), address);

        TestClient client;
        QVERIFY(client.connectTo(match.captured(1), quint16(match.captured(2).toUInt())));
        QCOMPARE(client.login("admin", "secret99"), CMATRIX_OK);
        QCOMPARE(client.call(MessageType::GetMatrix, Empty {}), CMATRIX_OK);

        daemon.terminate(); // SIGTERM: a clean stop
        QVERIFY(daemon.waitForFinished(kvmstest::scaled(5000)));
        QCOMPARE(daemon.exitStatus(), QProcess::NormalExit);
        QCOMPARE(daemon.exitCode(), 0);
        QVERIFY(client.waitClosed(kvmstest::scaled(2000)));
        QVERIFY(QFile::exists(dir.filePath("state.json")));
    }

    void daemonRefusesAnAddressOutsideLoopback()
    {
        QTemporaryDir dir;
        QVERIFY(dir.isValid());
        QProcess daemon;
        // Refused before anything is opened: the address is only checked, never used.
        daemon.start(VIRTUAL_DECODER_PATH, { "--address", "192.0.2.1", "--state-dir", dir.path() });
        QVERIFY(daemon.waitForFinished(kvmstest::scaled(5000)));
        QCOMPARE(daemon.exitCode(), 2);
        const QString errors = QString::fromUtf8(daemon.readAllStandardError());
        QVERIFY2(errors.contains("not a loopback address"), qPrintable(errors));
        QVERIFY(daemon.readAllStandardOutput().isEmpty());
    }
};

KVMS_TEST_CLASS(TestDaemon)
#include "TestDaemon.moc"
