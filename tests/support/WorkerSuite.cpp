#include "WorkerSuite.h"

#include "QueuedSignalSpy.h"
#include "TestTimeout.h"

#include "core/VirtualDecoder.h"

#include "KSingleton.h"
#include "LogInfo.h"

#include <QDir>
#include <QFile>
#include <QTest>

namespace kvmstest {

using kvms_matrix::MatrixSdkWorker;

MatrixSdkWorker* WorkerSuite::worker()
{
    return KCOMMON::KSingleton<MatrixSdkWorker>::instance();
}

kvms_matrix::MatrixInfo WorkerSuite::infoOf(const vdec::VirtualDecoder* decoder, const QString& password)
{
    kvms_matrix::MatrixInfo info;
    info.type = 0;
    info.ip = decoder->address();
    info.manager_port = decoder->port();
    info.port = decoder->port();
    info.username = decoder->config().adminUser;
    info.password = password.isNull() ? decoder->config().adminPassword : password;
    info.version = decoder->config().firmwareVersion;
    return info;
}

WorkerSuite::Handle WorkerSuite::connectWorker(const vdec::VirtualDecoder* decoder, int* ret)
{
    QueuedSignalSpy results(worker(), &MatrixSdkWorker::signalConnectMatrixResult);
    worker()->connectMatrix(infoOf(decoder), nullptr);
    if (!results.wait(scaled(6000)))
        return {};
    if (ret)
        *ret = results.at(0).at(1).toInt();
    return results.at(0).at(1).toInt() == CMATRIX_OK ? results.at(0).at(0).value<Handle>() : Handle();
}

kvms_matrix::MatrixWindowInfo WorkerSuite::windowInfo(int id, int division)
{
    kvms_matrix::MatrixWindowInfo window;
    window.windowId = id;
    window.windowIndex = id - 1;
    window.division = division;
    for (int k = 0; k < division; ++k) {
        kvms_matrix::MatrixSubWindowInfo sub;
        sub.subWindowId = k + 1;
        sub.subWindowIndex = k;
        window.subWindows.append(sub);
    }
    return window;
}

QString WorkerSuite::logText()
{
    QFile file(vms_sdk::log_file());
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

bool WorkerSuite::enterWorkDirectory()
{
    previousDir_ = QDir::currentPath();
    if (!workDir_.isValid() || !QDir::setCurrent(workDir_.path()))
        return false;
    vms_sdk::set_log_file(workDir_.filePath("client.log"));
    return worker() != nullptr;
}

bool WorkerSuite::settleWorker()
{
    MatrixSdkWorker* w = worker();
    w->stopCaptureThread();
    bool settled = true;
    if (w->isRunning() && w->isWorkerRunning()) {
        w->disconnectAllMatrix();
        settled = QTest::qWaitFor(
            [w] { return w->registeredHandles().isEmpty() && w->pendingTaskCount() == 0; }, scaled(10000));
    }
    QFile::remove(workDir_.filePath("tvWallConfig.ini"));
    return settled;
}

bool WorkerSuite::leaveWorkDirectory()
{
    worker()->finishPendingAndStop();
    const bool stopped = worker()->wait(scaled(10000));
    QDir::setCurrent(previousDir_);
    return stopped;
}

} // namespace kvmstest
