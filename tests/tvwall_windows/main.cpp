#include "WindowsTests.h"

#include "QueuedSignalSpy.h"
#include "TestMain.h"
#include "TestTimeout.h"
#include "WireBuilders.h"

#include "KSingleton.h"
#include "LogInfo.h"

#include <QDir>
#include <QFile>

#include <vector>

using namespace kvms_matrix;
using kvmstest::scaled;

MatrixSdkWorker* TvWallWindowsTest::worker()
{
    return KCOMMON::KSingleton<MatrixSdkWorker>::instance();
}

vdec::VirtualDecoder* TvWallWindowsTest::startDecoder(int host)
{
    return fixture_.startDecoder(host);
}

TvWallWindowsTest::Handle TvWallWindowsTest::connectWorker(const vdec::VirtualDecoder* decoder)
{
    MatrixInfo info;
    info.type = 0;
    info.ip = decoder->address();
    info.manager_port = decoder->port();
    info.port = decoder->port();
    info.username = decoder->config().adminUser;
    info.password = decoder->config().adminPassword;
    QueuedSignalSpy results(worker(), &MatrixSdkWorker::signalConnectMatrixResult);
    worker()->connectMatrix(info, nullptr);
    if (!results.wait(scaled(6000)) || results.at(0).at(1).toInt() != CMATRIX_OK)
        return {};
    return results.at(0).at(0).value<Handle>();
}

TvWallWindowsTest::Handle TvWallWindowsTest::wallOn(int host, int rows, int cols)
{
    decoder_ = startDecoder(host);
    sdk_ = std::make_unique<kvmstest::SdkSession>();
    if (!decoder_ || sdk_->connect(decoder_) != CMATRIX_OK
        || CMatrix_SetMatrix(*sdk_, cols, rows, "Wall") != CMATRIX_OK)
        return {};
    std::vector<MatrixWindow_t> cells;
    for (int r = 0; r < rows; ++r) {
        for (int c = 0; c < cols; ++c)
            cells.push_back(kvmstest::window(
                uint32_t(r * cols + c + 1), c * (32768 / cols), r * (32768 / rows), 32768 / cols, 32768 / rows));
    }
    if (CMatrix_WindowAdd(*sdk_, cells.data(), int(cells.size()), true) != CMATRIX_OK)
        return {};
    return connectWorker(decoder_);
}

QList<MatrixWindowInfo> TvWallWindowsTest::readWall(const Handle& handle, int* rows, int* cols)
{
    QueuedSignalSpy read(worker(), &MatrixSdkWorker::signalGetWindowInfoResult);
    worker()->getWindowInfo(handle);
    if (!read.wait(scaled(10000)))
        return {};
    if (rows)
        *rows = read.at(0).at(1).toInt();
    if (cols)
        *cols = read.at(0).at(2).toInt();
    return read.at(0).at(0).value<QList<MatrixWindowInfo>>();
}

MatrixWindowInfo TvWallWindowsTest::windowInfo(int id, int division)
{
    MatrixWindowInfo window;
    window.windowId = id;
    window.windowIndex = id - 1;
    window.division = division;
    for (int k = 0; k < division; ++k) {
        MatrixSubWindowInfo sub;
        sub.subWindowId = k + 1;
        sub.subWindowIndex = k;
        window.subWindows.append(sub);
    }
    return window;
}

int TvWallWindowsTest::bind(
    const Handle& handle, const MatrixWindowInfo& window, int subWindowId, MatrixWindowInfo* echoed)
{
    QueuedSignalSpy bound(worker(), &MatrixSdkWorker::signalSetWindowSignalSourceResult);
    worker()->setWindowSignalSource(handle, window, subWindowId, false);
    if (!bound.wait(scaled(10000)))
        return INT_MIN;
    if (echoed)
        *echoed = bound.at(0).at(1).value<MatrixWindowInfo>();
    return bound.at(0).at(0).toInt();
}

QString TvWallWindowsTest::logText()
{
    QFile file(vms_sdk::log_file());
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

void TvWallWindowsTest::initTestCase()
{
    QVERIFY(dir_.isValid());
    previousDir_ = QDir::currentPath();
    QVERIFY(QDir::setCurrent(dir_.path())); // "tvWallConfig.ini" is opened by its bare name
    vms_sdk::set_log_file(dir_.filePath("client.log"));
    QVERIFY(worker());
}

void TvWallWindowsTest::cleanup()
{
    MatrixSdkWorker* w = worker();
    w->stopCaptureThread();
    if (w->isRunning() && w->isWorkerRunning()) {
        w->disconnectAllMatrix();
        QTRY_VERIFY_WITH_TIMEOUT(w->registeredHandles().isEmpty() && w->pendingTaskCount() == 0, scaled(10000));
    }
    sdk_.reset();
    fixture_.cleanup();
    decoder_ = nullptr;
    QFile::remove(dir_.filePath("tvWallConfig.ini"));
}

void TvWallWindowsTest::cleanupTestCase()
{
    worker()->finishPendingAndStop();
    QVERIFY(worker()->wait(scaled(10000)));
    QDir::setCurrent(previousDir_);
}

KVMS_TEST_MAIN(TvWallWindowsTest)
