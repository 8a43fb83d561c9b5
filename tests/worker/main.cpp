#include "WorkerTests.h"

#include "TestMain.h"
#include "TestTimeout.h"

#include "KSingleton.h"
#include "LogInfo.h"

using kvms_matrix::CSharedHandle;
using kvms_matrix::MatrixInfo;
using kvms_matrix::MatrixSdkWorker;
using kvmstest::scaled;

kvms_matrix::MatrixSdkWorker* TestWorker::worker()
{
    return KCOMMON::KSingleton<MatrixSdkWorker>::instance();
}

MatrixInfo TestWorker::infoOf(const vdec::VirtualDecoder* decoder, const QString& password)
{
    MatrixInfo info;
    info.type = 0;
    info.ip = decoder->address();
    info.manager_port = decoder->port();
    info.port = decoder->port();
    info.username = decoder->config().adminUser;
    info.password = password;
    info.version = decoder->config().firmwareVersion;
    return info;
}

TestWorker::Handle TestWorker::rawConnection(const vdec::VirtualDecoder* decoder)
{
    Handle handle(new CSharedHandle(CMatrix_Create()));
    handle->setIp(decoder->address());
    const int rc = CMatrix_Connect(handle->handle(), decoder->address().toLatin1().constData(), decoder->port(),
        "admin", "admin123", scaled(3000));
    return rc == CMATRIX_OK ? handle : Handle();
}

TestWorker::Handle TestWorker::connectWorker(const vdec::VirtualDecoder* decoder, int* ret)
{
    QueuedSignalSpy results(worker(), &MatrixSdkWorker::signalConnectMatrixResult);
    worker()->connectMatrix(infoOf(decoder), nullptr);
    if (!results.wait(scaled(6000)))
        return {};
    const QVariantList args = results.takeFirst();
    if (ret)
        *ret = args.at(1).toInt();
    return args.at(1).toInt() == CMATRIX_OK ? args.at(0).value<Handle>() : Handle();
}

void TestWorker::initTestCase()
{
    QVERIFY(dir_.isValid());
    vms_sdk::set_log_file(dir_.filePath("client.log"));
    QVERIFY(worker());
    QVERIFY(!worker()->isRunning());
}

void TestWorker::cleanup()
{
    // Leave the registry empty for the next slot: its disconnect tasks run while decoders live.
    MatrixSdkWorker* w = worker();
    if (w->isRunning() && w->isWorkerRunning()) {
        w->disconnectAllMatrix();
        QTRY_VERIFY_WITH_TIMEOUT(w->registeredHandles().isEmpty() && w->pendingTaskCount() == 0, scaled(10000));
    } else {
        for (const QString& ip : w->registeredHandles().keys())
            w->removeHandle(ip);
    }
    fixture_.cleanup();
}

KVMS_TEST_MAIN(TestWorker)
