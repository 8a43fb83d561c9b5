// Maintenance tasks end to end: firmware, factory reset, resolution, password, configuration
// files and logs.
#include "WorkerRig.h"

#include "SuiteMain.h"

#include "TestTimeout.h"
#include "WireBuilders.h"

#include <QDateTime>
#include <QFile>
#include <QJsonDocument>
#include <QRegularExpression>
#include <QtTest>

using namespace kvms_matrix;
using cmatrix::wire::MessageType;
using kvmstest::bytesOf;
using kvmstest::scaled;

namespace {

ScreenResolution_t mode(int width, int height, int rate, int output = -1)
{
    return ScreenResolution_t { width, height, rate, output };
}

bool writeFile(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

// Sets the mode of all outputs through the worker and waits for the result.
int setAllOutputs(MatrixSdkWorker* w, const WorkerRig::Handle& h, const ScreenResolution_t& r)
{
    QueuedSignalSpy done(w, &MatrixSdkWorker::signalMatrixSetResolutionResult);
    w->setMatrixResolution(h, r, true);
    return done.wait(scaled(5000)) ? done.at(0).at(0).toInt() : 1;
}

} // namespace

class TestWorkerMaintenance : public QObject, public WorkerRig {
    Q_OBJECT

private slots:
    void initTestCase() { QVERIFY(setUp()); }
    void cleanup() { QVERIFY(settle()); }
    void passwordModify();
    void configurationLogsAndReset();
    void firmwareUpdate_data();
    void firmwareUpdate();
};

void TestWorkerMaintenance::passwordModify()
{
    MatrixSdkWorker* w = worker();
    vdec::VirtualDecoder* d = fixture_.startDecoder();
    QVERIFY(d);
    const Handle h = connectWorker(d);
    QVERIFY(h);
    const auto loginWith = [d](const QString& password) {
        const CMHANDLE probe = CMatrix_Create();
        const int rc = CMatrix_Connect(probe, d->address().toLatin1().constData(), d->port(), "admin",
            password.toUtf8().constData(), scaled(3000));
        CMatrix_Destroy(probe);
        return rc;
    };

    QueuedSignalSpy changed(w, &MatrixSdkWorker::signalUserPasswordModifyResult);
    w->userPasswordModify(h, QStringLiteral("admin"), QStringLiteral("nothing12"), QStringLiteral("Newpass99"));
    QVERIFY(changed.wait(scaled(5000)));
    QCOMPARE(changed.at(0), QVariantList({ CMATRIX_ERR_PASSWORD, d->address(), QStringLiteral("Newpass99") }));
    QCOMPARE(loginWith(QStringLiteral("Newpass99")), CMATRIX_ERR_PASSWORD);

    w->userPasswordModify(h, QStringLiteral("admin"), QStringLiteral("admin123"), QStringLiteral("Newpass99"));
    QVERIFY(changed.wait(scaled(5000)));
    QCOMPARE(changed.at(1), QVariantList({ CMATRIX_OK, d->address(), QStringLiteral("Newpass99") }));
    QCOMPARE(loginWith(QStringLiteral("Newpass99")), CMATRIX_OK);
}

// One decoder through export, import, logs and a factory reset, in the order an operator would.
void TestWorkerMaintenance::configurationLogsAndReset()
{
    MatrixSdkWorker* w = worker();
    vdec::VirtualDecoder* d = fixture_.startDecoder();
    QVERIFY(d);
    const Handle h = connectWorker(d);
    QVERIFY(h);

    QCOMPARE(setAllOutputs(w, h, mode(1280, 720, 60)), CMATRIX_OK); // also a change the decoder logs
    const QString exported = workDir_.filePath("exported.json");
    QueuedSignalSpy exportDone(w, &MatrixSdkWorker::signalExportConfigResult);
    w->exportMatrixConfig(h, exported);
    QVERIFY(exportDone.wait(scaled(5000)));
    QCOMPARE(exportDone.at(0).at(0).toInt(), CMATRIX_OK);
    QFile file(exported);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QVERIFY(QJsonDocument::fromJson(file.readAll()).isObject());
    QCOMPARE(setAllOutputs(w, h, mode(1024, 768, 60)), CMATRIX_OK);

    QueuedSignalSpy importDone(w, &MatrixSdkWorker::signalImportConfigResult);
    w->importMatrixConfig(h, workDir_.filePath("missing.json"));
    QVERIFY(importDone.wait(scaled(5000)));
    QCOMPARE(importDone.at(0).at(0).toInt(), CMATRIX_ERR_FILE_NOT_FOUND);
    QCOMPARE(d->snapshot().resolution.width, 1024);
    w->importMatrixConfig(h, exported);
    QVERIFY(importDone.wait(scaled(5000)));
    QCOMPARE(importDone.at(1).at(0).toInt(), CMATRIX_OK);
    QCOMPARE(d->snapshot().resolution.width, 1280);

    QueuedSignalSpy lines(w, &MatrixSdkWorker::signalGetLogsResult);
    const QDateTime now = QDateTime::currentDateTime();
    w->getLog(h, LOG_TYPE_ALL, now.addSecs(-3600), now.addSecs(3600));
    w->getLog(h, LOG_TYPE_ALL, now.addSecs(3600), now.addSecs(-3600)); // reversed span: refused
    QTRY_COMPARE_WITH_TIMEOUT(lines.count(), 2, scaled(5000));
    const QStringList found = lines.at(0).at(0).toStringList();
    QVERIFY(!found.isEmpty());
    const QRegularExpression shape(
        QStringLiteral("^\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d \\[(operation|alarm|system)\\] [^:]*: .+$"));
    for (const QString& line : found)
        QVERIFY2(shape.match(line).hasMatch(), qPrintable(line));
    QVERIFY(found.filter(QStringLiteral("] admin: ")).size() >= 1);
    QVERIFY(lines.at(1).at(0).toStringList().isEmpty());

    QueuedSignalSpy saved(w, &MatrixSdkWorker::signalGetRunLogResult);
    const QString runLog = workDir_.filePath("run.log");
    w->getRunLog(h, runLog);
    QVERIFY(saved.wait(scaled(5000)));
    QCOMPARE(saved.at(0).at(0).toInt(), CMATRIX_OK);
    QVERIFY(QFileInfo(runLog).size() > 0);

    QueuedSignalSpy reset(w, &MatrixSdkWorker::signalMatrixFactoryResetResult);
    QueuedSignalSpy lost(w, &MatrixSdkWorker::signalDisconnectStatus);
    w->factoryReset(h);
    QVERIFY(reset.wait(scaled(5000)));
    QCOMPARE(reset.at(0), QVariantList({ CMATRIX_OK, d->address() }));
    QCOMPARE(d->snapshot().resolution.width, 1920);
    // The decoder restarts, which closes the connection as a power cycle would.
    QVERIFY(lost.count() == 1 || lost.wait(scaled(6000)));
    QCOMPARE(lost.at(0).at(1).toString(), d->address());
}

void TestWorkerMaintenance::firmwareUpdate_data()
{
    QTest::addColumn<QByteArray>("image"); // empty: no file at all
    QTest::addColumn<int>("ret");
    QTest::addColumn<QString>("versionAfter");
    const QByteArray valid = QByteArray("KVFWIMG1") + "V2.0.1 build 250101" + '\0' + QByteArray(4096, '\x5a');
    QTest::newRow("valid image") << valid << CMATRIX_OK << "V2.0.1 build 250101";
    QTest::newRow("no file") << QByteArray() << CMATRIX_ERR_FILE_NOT_FOUND << "V1.0.0 build 240101";
}

void TestWorkerMaintenance::firmwareUpdate()
{
    QFETCH(QByteArray, image);
    QFETCH(int, ret);
    QFETCH(QString, versionAfter);
    MatrixSdkWorker* w = worker();
    vdec::VirtualDecoder* d = fixture_.startDecoder(0, [](vdec::DecoderConfig& c) { c.firmwareStepMs = 5; });
    QVERIFY(d);
    const Handle h = connectWorker(d);
    QVERIFY(h);
    const QString path = workDir_.filePath("firmware.bin");
    QFile::remove(path);
    if (!image.isEmpty())
        QVERIFY(writeFile(path, image));

    // A batch of two: no connection first, so the decoder's reports carry index 1.
    QueuedSignalSpy progress(w, &MatrixSdkWorker::signalUpdateMatrixProgress);
    QueuedSignalSpy result(w, &MatrixSdkWorker::signalUpdateMatrixResult);
    w->updateMatrix({ Handle(), h }, path);
    QTRY_COMPARE_WITH_TIMEOUT(result.count(), 2, scaled(5000));
    QCOMPARE(result.at(0).at(0).toInt(), CMATRIX_ERR_FAILED);
    QCOMPARE(result.at(1).at(0).toInt(), ret);
    QCOMPARE(progress.at(0), QVariantList({ UPDATE_STATE_FAILED, 0, CMATRIX_ERR_FAILED, 0, true }));
    int last = -1;
    for (int i = 1; i < progress.count(); ++i) {
        const QVariantList& step = progress.at(i);
        QCOMPARE(step.at(3).toInt(), 1);
        QVERIFY(step.at(1).toInt() >= last);
        last = step.at(1).toInt();
        QCOMPARE(step.at(4).toBool(), i == progress.count() - 1);
    }
    const QVariantList end = progress.last();
    QCOMPARE(end.at(0).toInt(), ret == CMATRIX_OK ? UPDATE_STATE_FINISHED : UPDATE_STATE_FAILED);
    QCOMPARE(end.at(2).toInt(), ret);
    QCOMPARE(last, ret == CMATRIX_OK ? 100 : 0);
    QTRY_COMPARE_WITH_TIMEOUT(d->snapshot().firmwareVersion, versionAfter, scaled(3000));
}

KVMS_TEST_CLASS(TestWorkerMaintenance)
#include "TestWorkerMaintenance.moc"
