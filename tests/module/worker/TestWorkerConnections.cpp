// Connections through the worker: the registry, login failures, lost decoders.
#include "WorkerRig.h"

#include "SuiteMain.h"

#include "TestTimeout.h"

#include <QElapsedTimer>
#include <QProcess>
#include <QRegularExpression>
#include <QScopeGuard>
#include <QTimer>
#include <QUuid>
#include <QtTest>
#include <csignal>
#include <sys/types.h>

using namespace kvms_matrix;
using kvmstest::scaled;

namespace {

enum class Loss { ConnectionsReset, HeartbeatsStop };

int wrongLogin(const vdec::VirtualDecoder* decoder)
{
    const CMHANDLE h = CMatrix_Create();
    const int rc = CMatrix_Connect(
        h, decoder->address().toLatin1().constData(), decoder->port(), "admin", "wrong-password", scaled(3000));
    CMatrix_Destroy(h);
    return rc;
}

} // namespace

Q_DECLARE_METATYPE(Loss)
Q_DECLARE_METATYPE(kvmstest::DecoderFixture::Tweak)

class TestWorkerConnections : public QObject, public WorkerRig {
    Q_OBJECT

private slots:
    void initTestCase() { QVERIFY(setUp()); }
    void cleanup() { QVERIFY(settle()); }
    void connectingTwiceReplacesTheRegistryEntry();
    void failedLoginReportsBothSignals_data();
    void failedLoginReportsBothSignals();
    void lostDecoderIsReportedOnce_data();
    void lostDecoderIsReportedOnce();
    void hungDecoderHoldsTheWorkerBriefly();
};

void TestWorkerConnections::connectingTwiceReplacesTheRegistryEntry()
{
    MatrixSdkWorker* w = worker();
    vdec::VirtualDecoder* d = fixture_.startDecoder();
    QVERIFY(d);
    MatrixInfo first = infoOf(d);
    first.id = QStringLiteral("first-id");
    first.version = QStringLiteral("first");
    MatrixInfo second = infoOf(d);
    second.version = QStringLiteral("second");

    QueuedSignalSpy results(w, &MatrixSdkWorker::signalConnectMatrixResult);
    w->connectMatrix(first, nullptr);
    w->connectMatrix(second, nullptr);
    QTRY_COMPARE_WITH_TIMEOUT(results.count(), 2, scaled(6000));
    QCOMPARE(results.at(0).at(1).toInt(), CMATRIX_OK);
    QCOMPARE(results.at(1).at(1).toInt(), CMATRIX_OK);
    Handle older = results.at(0).at(0).value<Handle>();
    const Handle newer = results.at(1).at(0).value<Handle>();
    QVERIFY(older && newer && older != newer);
    QCOMPARE(older->version(), QStringLiteral("first"));
    QCOMPARE(newer->version(), QStringLiteral("second"));

    QCOMPARE(w->getHandleByIp(d->address()), newer);
    QCOMPARE(w->getVmHandle(), newer);
    const MatrixInfo kept = w->connectedMatrixMap().value(d->address());
    QCOMPARE(kept.version, QStringLiteral("first"));
    QVERIFY(!QUuid(kept.id).isNull()); // a fresh id, not the caller's

    // The replaced connection ends with the last pointer to it.
    QCOMPARE(d->connectionCount(), 2);
    results.clear();
    older.clear();
    QTRY_COMPARE_WITH_TIMEOUT(d->connectionCount(), 1, scaled(3000));
}

void TestWorkerConnections::failedLoginReportsBothSignals_data()
{
    using Tweak = kvmstest::DecoderFixture::Tweak;
    QTest::addColumn<Tweak>("tweak");
    QTest::addColumn<int>("wrongLoginsFirst");
    QTest::addColumn<bool>("stopFirst");
    QTest::addColumn<QString>("password");
    QTest::addColumn<int>("ret");
    QTest::addColumn<ConnectErrorMsgInfo>("expected"); // unlockTime 1: any time above 0

    const auto lockOut = [](int attempts, int seconds) {
        return Tweak([=](vdec::DecoderConfig& c) {
            c.maxFailedLogins = attempts;
            c.lockSeconds = seconds;
        });
    };
    // Lock time in seconds turns into whole minutes: 119 s is 1 minute.
    QTest::newRow("wrong password") << lockOut(3, 119) << 0 << false << "wrong" << CMATRIX_ERR_PASSWORD
                                    << ConnectErrorMsgInfo { "PASSWDERR", 1, 3, 1, 0 };
    QTest::newRow("second wrong password") << lockOut(3, 600) << 1 << false << "wrong" << CMATRIX_ERR_PASSWORD
                                           << ConnectErrorMsgInfo { "PASSWDERR", 2, 3, 10, 0 };
    QTest::newRow("locked account") << lockOut(1, 600) << 1 << false << "admin123" << CMATRIX_ERR_USER_LOCKED
                                    << ConnectErrorMsgInfo { "USERLOCK", 0, 0, 0, 1 };
    QTest::newRow("not activated") << Tweak([](vdec::DecoderConfig& c) { c.factoryNew = true; }) << 0 << false
                                   << "admin123" << CMATRIX_ERR_NOT_ACTIVATED
                                   << ConnectErrorMsgInfo { "DEVNOACTIVE", 0, 0, 0, 0 };
    QTest::newRow("nobody listening") << Tweak() << 0 << true << "admin123" << CMATRIX_ERR_CONNECT
                                      << ConnectErrorMsgInfo {};
}

void TestWorkerConnections::failedLoginReportsBothSignals()
{
    QFETCH(kvmstest::DecoderFixture::Tweak, tweak);
    QFETCH(int, wrongLoginsFirst);
    QFETCH(bool, stopFirst);
    QFETCH(QString, password);
    QFETCH(int, ret);
    QFETCH(ConnectErrorMsgInfo, expected);

    MatrixSdkWorker* w = worker();
    vdec::VirtualDecoder* d = fixture_.startDecoder(0, tweak);
    QVERIFY(d);
    for (int i = 0; i < wrongLoginsFirst; ++i)
        QCOMPARE(wrongLogin(d), CMATRIX_ERR_PASSWORD);
    if (stopFirst)
        d->stop();

    QueuedSignalSpy results(w, &MatrixSdkWorker::signalConnectMatrixResult);
    QueuedSignalSpy errors(w, &MatrixSdkWorker::signalConnectErrorMsg);
    QVERIFY(results.isConnected() && errors.isConnected());
    int tag = 0;
    w->connectMatrix(infoOf(d, password), &tag);
    QVERIFY(errors.wait(scaled(6000))); // emitted after the result
    QCOMPARE(results.count(), 1);
    QCOMPARE(errors.count(), 1);

    const QVariantList result = results.at(0);
    QCOMPARE(result.at(1).toInt(), ret);
    QCOMPARE(result.at(3).value<void*>(), static_cast<void*>(&tag));
    const Handle handle = result.at(0).value<Handle>();
    QVERIFY(handle);
    QCOMPARE(w->getHandleByIp(d->address()), handle); // registered although refused

    const QVariantList error = errors.at(0);
    QCOMPARE(error.at(0).toString(), d->address());
    QCOMPARE(error.at(2).value<void*>(), static_cast<void*>(&tag));
    const auto fields = [](const ConnectErrorMsgInfo& i) {
        return QVariantList { i.errCode, i.errNum, i.sumNum, i.lockTime, i.unlockTime > 0 };
    };
    QCOMPARE(fields(error.at(1).value<ConnectErrorMsgInfo>()), fields(expected));
}

void TestWorkerConnections::lostDecoderIsReportedOnce_data()
{
    QTest::addColumn<Loss>("loss");
    // A stopped decoder: the page's end-to-end suite, which shows the loss in its strip.
    QTest::newRow("connections reset") << Loss::ConnectionsReset;
    QTest::newRow("heartbeats stop") << Loss::HeartbeatsStop;
}

void TestWorkerConnections::lostDecoderIsReportedOnce()
{
    QFETCH(Loss, loss);
    MatrixSdkWorker* w = worker();
    vdec::VirtualDecoder* d = fixture_.startDecoder();
    QVERIFY(d);
    const Handle h = connectWorker(d);
    QVERIFY(h);

    QueuedSignalSpy lost(w, &MatrixSdkWorker::signalDisconnectStatus);
    switch (loss) {
    case Loss::ConnectionsReset:
        d->killConnections();
        break;
    case Loss::HeartbeatsStop:
        d->faults().muteHeartbeats(true);
        break;
    }
    QVERIFY(lost.wait(scaled(10000)));
    QCOMPARE(lost.at(0).at(0).value<void*>(), static_cast<void*>(h->handle()));
    QCOMPARE(lost.at(0).at(1).toString(), d->address());
    QVERIFY(!lost.wait(scaled(1500)));
    QCOMPARE(lost.count(), 1);
    QCOMPARE(w->getHandleByIp(d->address()), h); // the form decides what becomes of it
}

void TestWorkerConnections::hungDecoderHoldsTheWorkerBriefly()
{
    MatrixSdkWorker* w = worker();
    vdec::VirtualDecoder* busy = fixture_.startDecoder();
    QVERIFY(busy);
    const Handle other = connectWorker(busy);
    QVERIFY(other);

    QTemporaryDir dir;
    QProcess daemon;
    daemon.start(QStringLiteral(VIRTUAL_DECODER_PATH),
        { "--address", spare(0), "--port", "0", "--state-dir", dir.path(), "--password", "secret99" });
    QVERIFY(daemon.waitForStarted(scaled(5000)));
    auto endDaemon = qScopeGuard([&] {
        ::kill(pid_t(daemon.processId()), SIGCONT);
        daemon.kill();
        daemon.waitForFinished(scaled(5000));
    });
    QVERIFY(QTest::qWaitFor([&] { return daemon.canReadLine(); }, scaled(5000)));
    const QRegularExpressionMatch port = QRegularExpression(QStringLiteral("tcp=(\\d+)")).match(daemon.readLine());
    QVERIFY(port.hasMatch());
    MatrixInfo info;
    info.ip = spare(0);
    info.manager_port = port.captured(1).toInt();
    info.username = QStringLiteral("admin");
    info.password = QStringLiteral("secret99");
    QueuedSignalSpy connected(w, &MatrixSdkWorker::signalConnectMatrixResult);
    w->connectMatrix(info, nullptr);
    QVERIFY(connected.wait(scaled(6000)));
    QCOMPARE(connected.at(0).at(1).toInt(), CMATRIX_OK);
    const Handle hung = connected.at(0).at(0).value<Handle>();

    // Steady load on both decoders; every result is timed.
    QElapsedTimer clock;
    clock.start();
    QList<qint64> results;
    QObject scope; // results still queued when it goes are dropped with it
    connect(
        w, &MatrixSdkWorker::signalGetWindowInfoResult, &scope, [&] { results.append(clock.elapsed()); },
        Qt::QueuedConnection);
    QTimer load;
    connect(&load, &QTimer::timeout, this, [&] {
        if (w->pendingTaskCount() < 4) {
            w->getWindowInfo(hung);
            w->getWindowInfo(other);
        }
    });
    load.start(10);
    QTRY_VERIFY(results.size() > 20);

    QueuedSignalSpy lost(w, &MatrixSdkWorker::signalDisconnectStatus);
    const qint64 stoppedAt = clock.elapsed();
    QCOMPARE(::kill(pid_t(daemon.processId()), SIGSTOP), 0);
    QVERIFY(lost.wait(scaled(2500))); // generous for a loaded machine: the heartbeat's timeout is far shorter
    const qint64 reported = clock.elapsed() - stoppedAt;
    const int atLoss = results.size();
    QTRY_VERIFY(results.size() > atLoss + 20); // they keep coming once the lost decoder's calls fail at once
    load.stop();
    qint64 stall = 0;
    for (int i = 1; i < results.size(); ++i) {
        if (results[i] > stoppedAt)
            stall = std::max(stall, results[i] - std::max(results[i - 1], stoppedAt));
    }
    qInfo("hung decoder: loss reported after %lld ms, worker held for at most %lld ms", reported, stall);
    QCOMPARE(lost.at(0).at(1).toString(), info.ip);
    QVERIFY2(stall < scaled(2500), qPrintable(QString::number(stall)));
}

KVMS_TEST_CLASS(TestWorkerConnections)
#include "TestWorkerConnections.moc"
