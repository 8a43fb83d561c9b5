// The end of the worker's thread: quitting the client, draining the queue. Run last.
#include "WorkerRig.h"

#include "SuiteMain.h"
#include "TestTimeout.h"

#include "KSingleton.h"
#include "SystemMsg.h"

#include <QtTest>

using namespace kvms_matrix;
using cmatrix::wire::MessageType;
using kvmstest::scaled;

class TestWorkerShutdown : public QObject, public WorkerRig {
    Q_OBJECT

private slots:
    void initTestCase() { QVERIFY(setUp()); }
    void cleanup() { QVERIFY(settle()); }
    void quitQueuesOneDisconnectPerConnection();
    void queueIsDrainedAfterTheRunningFlagIsCleared();
};

void TestWorkerShutdown::quitQueuesOneDisconnectPerConnection()
{
    MatrixSdkWorker* w = worker();
    QVERIFY(w->registeredHandles().isEmpty());
    vdec::VirtualDecoder* a = fixture_.startDecoder();
    vdec::VirtualDecoder* b = fixture_.startDecoder();
    vdec::VirtualDecoder* slow = fixture_.startDecoder();
    QVERIFY(a && b && slow);
    QVERIFY(connectWorker(a));
    QVERIFY(connectWorker(b));
    slow->faults().answerLate(MessageType::Login, scaled(400));

    SignalRecorder recorder(w, MatrixSdkWorker::staticMetaObject);
    w->connectMatrix(infoOf(slow), nullptr); // still under way when the client closes
    emit KCOMMON::KSingleton<SystemMsg>::instance()->signalQuitSystem();
    QVERIFY(w->pendingTaskCount() >= 2);

    QTRY_COMPARE_WITH_TIMEOUT(recorder.total(), 3, scaled(6000));
    QCOMPARE(recorder.names(),
        QList<QByteArray>(
            { "signalConnectMatrixResult", "signalDisconnectMatrixResult", "signalDisconnectMatrixResult" }));
    QStringList disconnected;
    for (const QVariantList& args : recorder.argsOf("signalDisconnectMatrixResult")) {
        QCOMPARE(args.at(0).toInt(), CMATRIX_OK);
        disconnected.append(args.at(1).toString());
    }
    QCOMPARE(disconnected, QStringList({ a->address(), b->address() }));
    QTRY_COMPARE_WITH_TIMEOUT(a->connectionCount() + b->connectionCount(), 0, scaled(3000));
    QCOMPARE(slow->connectionCount(), 1);
    QCOMPARE(w->registeredHandles().keys(), QStringList({ slow->address() }));
    QVERIFY(w->isWorkerRunning()); // quitting does not stop the loop
}

void TestWorkerShutdown::queueIsDrainedAfterTheRunningFlagIsCleared()
{
    MatrixSdkWorker* w = worker();
    vdec::VirtualDecoder* d = fixture_.startDecoder();
    QVERIFY(d);
    const Handle h = connectWorker(d);
    QVERIFY(h);
    d->faults().answerLate(MessageType::GetResolution, 20);

    SignalRecorder recorder(w, MatrixSdkWorker::staticMetaObject);
    const int queued = 15;
    for (int i = 0; i < queued; ++i)
        w->getMatrixResolution(h);
    w->disconnectMatrix(h);
    w->finishPendingAndStop();
    QVERIFY(!w->isWorkerRunning());
    QVERIFY(w->isRunning());
    QTRY_VERIFY_WITH_TIMEOUT(w->isFinished(), scaled(10000));
    QTRY_COMPARE_WITH_TIMEOUT(recorder.total(), queued + 1, scaled(3000));
    QCOMPARE(recorder.count("signalMatrixGetResolutionResult"), queued);
    QCOMPARE(recorder.names().last(), QByteArray("signalDisconnectMatrixResult"));
    QCOMPARE(d->journal().count(MessageType::GetResolution), queued);
    QCOMPARE(w->pendingTaskCount(), 0);

    // Only a connect brings the thread back.
    w->getMatrixResolution(Handle());
    QVERIFY(!w->isRunning());
    vdec::VirtualDecoder* again = fixture_.startDecoder();
    QVERIFY(again);
    const Handle back = connectWorker(again);
    QVERIFY(back);
    QVERIFY(w->isRunning());
    QCOMPARE(recorder.count("signalMatrixGetResolutionResult"), queued + 1);
    w->disconnectMatrix(back);
    w->finishPendingAndStop();
    QTRY_VERIFY_WITH_TIMEOUT(w->isFinished(), scaled(5000));
    QVERIFY(w->registeredHandles().isEmpty());
}

KVMS_TEST_CLASS_RANKED(TestWorkerShutdown, 1) // ends the worker's thread: last
#include "TestWorkerShutdown.moc"
