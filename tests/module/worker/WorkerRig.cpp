#include "WorkerRig.h"

#include "LoopbackPool.h"
#include "TestTimeout.h"

#include "KSingleton.h"
#include "LogInfo.h"

#include <QFile>
#include <QtTest>

using kvms_matrix::CSharedHandle;
using kvms_matrix::MatrixInfo;
using kvms_matrix::MatrixSdkWorker;
using kvmstest::scaled;

MatrixSdkWorker* WorkerRig::worker()
{
    return KCOMMON::KSingleton<MatrixSdkWorker>::instance();
}

MatrixInfo WorkerRig::infoOf(const vdec::VirtualDecoder* decoder, const QString& password)
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

WorkerRig::Handle WorkerRig::rawConnection(const vdec::VirtualDecoder* decoder)
{
    Handle handle(new CSharedHandle(CMatrix_Create()));
    handle->setIp(decoder->address());
    const int rc = CMatrix_Connect(handle->handle(), decoder->address().toLatin1().constData(), decoder->port(),
        "admin", "admin123", scaled(3000));
    return rc == CMATRIX_OK ? handle : Handle();
}

WorkerRig::Handle WorkerRig::connectWorker(const vdec::VirtualDecoder* decoder, int* ret)
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

QString WorkerRig::logText()
{
    QFile file(vms_sdk::log_file());
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

bool WorkerRig::setUp()
{
    if (!dir_.isValid() || !worker())
        return false;
    vms_sdk::set_log_file(dir_.filePath("client.log"));
    return true;
}

bool WorkerRig::settle()
{
    // The disconnect tasks run while the decoders still live.
    MatrixSdkWorker* w = worker();
    bool settled = true;
    if (w->isRunning() && w->isWorkerRunning()) {
        w->disconnectAllMatrix();
        settled = QTest::qWaitFor(
            [w] { return w->registeredHandles().isEmpty() && w->pendingTaskCount() == 0; }, scaled(10000));
    } else {
        for (const QString& ip : w->registeredHandles().keys())
            w->removeHandle(ip);
    }
    fixture_.cleanup();
    return settled;
}

QString WorkerRig::spare(int index)
{
    while (spares_.size() <= index)
        spares_.append(kvmstest::LoopbackPool::claim());
    return spares_.at(index);
}
