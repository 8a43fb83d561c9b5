// The queue and the loop: order, tasks without a handler, quitting, draining.
#include "WorkerRig.h"

#include "SuiteMain.h"

#include "TestTimeout.h"

#include "KSingleton.h"
#include "SystemMsg.h"

#include <QFile>
#include <QtTest>

#include <functional>

using namespace kvms_matrix;
using cmatrix::wire::MessageType;
using kvmstest::scaled;

using QueueStep = std::function<void(MatrixSdkWorker*, const WorkerRig::Handle&)>;
Q_DECLARE_METATYPE(QueueStep)

namespace {

// What a decoder received, heartbeats left out.
QList<MessageType> requestsOf(vdec::VirtualDecoder* decoder)
{
    QList<MessageType> types;
    for (const vdec::JournalEntry& entry : decoder->journal().entries()) {
        const MessageType type = cmatrix::wire::requestOf(entry.type);
        if (type != MessageType::Heartbeat)
            types.append(type);
    }
    return types;
}

} // namespace

class TestWorkerQueue : public QObject, public WorkerRig {
    Q_OBJECT

private slots:
    void initTestCase() { QVERIFY(setUp()); }
    void cleanup() { QVERIFY(settle()); }
    void operationsBeforeFirstConnectWaitForIt();
    void everySignalCanBeQueued();
    void tasksWithoutHandlerAreDropped_data();
    void tasksWithoutHandlerAreDropped();
};

void TestWorkerQueue::operationsBeforeFirstConnectWaitForIt()
{
    MatrixSdkWorker* w = worker();
    QVERIFY2(!w->isRunning(), "this slot needs a worker that has never been started");
    vdec::VirtualDecoder* d = fixture_.startDecoder();
    QVERIFY(d);
    const Handle own = rawConnection(d);
    QVERIFY(own);
    d->journal().clear();

    SignalRecorder recorder(w, MatrixSdkWorker::staticMetaObject);
    QueuedSignalSpy resolutions(w, &MatrixSdkWorker::signalMatrixGetResolutionResult);
    const QString exported = workDir_.filePath("before-connect.json");
    w->getMatrixResolution(own);
    w->factoryReset(Handle());
    w->exportMatrixConfig(own, exported);
    QCOMPARE(w->pendingTaskCount(), 3);
    QVERIFY(!resolutions.wait(scaled(300)));
    QVERIFY(!w->isRunning());
    QVERIFY(requestsOf(d).isEmpty());
    QCOMPARE(recorder.total(), 0);

    int tag = 0;
    w->connectMatrix(infoOf(d), &tag);
    QTRY_COMPARE_WITH_TIMEOUT(recorder.total(), 4, scaled(6000));
    QCOMPARE(recorder.names(),
        QList<QByteArray>({ "signalMatrixGetResolutionResult", "signalMatrixFactoryResetResult",
            "signalExportConfigResult", "signalConnectMatrixResult" }));
    QCOMPARE(requestsOf(d),
        QList<MessageType>(
            { MessageType::GetResolution, MessageType::ExportConfig, MessageType::Login, MessageType::SetTime }));
    QCOMPARE(recorder.argsOf("signalExportConfigResult").at(0).at(0).toInt(), CMATRIX_OK);
    QVERIFY(QFile::exists(exported));
    const QVariantList connected = recorder.argsOf("signalConnectMatrixResult").at(0);
    QCOMPARE(connected.at(1).toInt(), CMATRIX_OK);
    QCOMPARE(connected.at(3).value<void*>(), static_cast<void*>(&tag));
    QVERIFY(w->isRunning());
}

void TestWorkerQueue::everySignalCanBeQueued()
{
    // A signal whose argument type has no registered name is silently lost on its way to the GUI.
    const QMetaObject& meta = MatrixSdkWorker::staticMetaObject;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        const QMetaMethod method = meta.method(i);
        if (method.methodType() != QMetaMethod::Signal)
            continue;
        for (int p = 0; p < method.parameterCount(); ++p)
            QVERIFY2(method.parameterType(p) != QMetaType::UnknownType,
                qPrintable(method.methodSignature() + " : " + method.parameterTypes().at(p)));
    }
}

void TestWorkerQueue::tasksWithoutHandlerAreDropped_data()
{
    QTest::addColumn<QueueStep>("queue");
    const auto kind = [](int k) {
        return QueueStep([k](MatrixSdkWorker* w, const Handle& h) {
            WorkerTaskParam task;
            task.taskType = k;
            task.handle = h;
            w->queueTask(task);
        });
    };
    QTest::newRow("kind 22") << kind(22);
    QTest::newRow("kind 54, past the table") << kind(54);
    QTest::newRow("kind -7") << kind(-7);
    QTest::newRow("setStreamSwitch") << QueueStep(
        [](MatrixSdkWorker* w, const Handle& h) { w->setStreamSwitch(h, 1); });
    QTest::newRow("disconnect without a handle")
        << QueueStep([](MatrixSdkWorker* w, const Handle&) { w->disconnectMatrix(Handle()); });
}

void TestWorkerQueue::tasksWithoutHandlerAreDropped()
{
    QFETCH(QueueStep, queue);
    MatrixSdkWorker* w = worker();
    vdec::VirtualDecoder* d = fixture_.startDecoder();
    QVERIFY(d);
    const Handle h = connectWorker(d);
    QVERIFY(h);
    d->journal().clear();
    SignalRecorder recorder(w, MatrixSdkWorker::staticMetaObject);

    queue(w, h);
    w->getMatrixResolution(h); // behind it: proves the dropped task has left the queue
    QTRY_COMPARE_WITH_TIMEOUT(recorder.total(), 1, scaled(5000));
    QCOMPARE(recorder.names(), QList<QByteArray>({ "signalMatrixGetResolutionResult" }));
    QCOMPARE(requestsOf(d), QList<MessageType>({ MessageType::GetResolution }));
    QCOMPARE(w->pendingTaskCount(), 0);
    QCOMPARE(w->getHandleByIp(d->address()), h);
}

KVMS_TEST_CLASS_RANKED(TestWorkerQueue, -1) // needs a worker whose thread never started: first
#include "TestWorkerQueue.moc"
