#include "ScenesTests.h"

#include "TestMain.h"
#include "TestTimeout.h"
#include "WireBuilders.h"

#include "KSingleton.h"
#include "LogInfo.h"

#include <QDir>
#include <QFile>

using kvms_matrix::MatrixSdkWorker;
using kvmstest::scaled;

RawWall::RawWall(const vdec::VirtualDecoder* decoder)
{
    m_ok = m_sdk.connect(decoder) == CMATRIX_OK;
}

int RawWall::addWindow(uint32_t id, int division)
{
    // Windows of one cell of the 2 x 2 wall, row by row.
    const int32_t cell = 16384;
    const MatrixWindow_t w
        = kvmstest::window(id, int32_t((id - 1) % 2) * cell, int32_t((id - 1) / 2) * cell, cell, cell);
    const int rc = CMatrix_WindowAdd(m_sdk.handle(), &w, 1, false);
    return rc != CMATRIX_OK ? rc : CMatrix_WindowSetDivision(m_sdk.handle(), int(id), division);
}

int RawWall::bind(int windowId, int subWindow, const char* devId)
{
    const DeviceInfo_t d = kvmstest::device(subWindow, devId);
    return CMatrix_WindowDeviceAdd(m_sdk.handle(), windowId, &d, 1, false);
}

int RawWall::createScene(uint32_t id, const char* name)
{
    return CMatrix_SceneCreate(m_sdk.handle(), id, name);
}

int RawWall::createScheme(uint32_t id, const char* name, const QStringList& sourceIds)
{
    SchemeInfo_t s {};
    s.id = id;
    kvmstest::setText(s.name, name);
    s.kind = 4;
    s.interval = 1;
    const int rc = CMatrix_SchemeSet(m_sdk.handle(), &s);
    if (rc != CMATRIX_OK || sourceIds.isEmpty())
        return rc;
    std::vector<SchemeDevice_t> devices(size_t(sourceIds.size()));
    for (int i = 0; i < sourceIds.size(); ++i) {
        kvmstest::setText(devices[size_t(i)].devId, sourceIds.at(i).toLatin1().constData());
        kvmstest::setText(devices[size_t(i)].protocolName, "kst2.0");
        devices[size_t(i)].channel = i + 1;
    }
    return CMatrix_SchemeAddDevices(m_sdk.handle(), id, devices.data(), int(devices.size()), true);
}

MatrixSdkWorker* TvWallScenesTest::worker()
{
    return KCOMMON::KSingleton<MatrixSdkWorker>::instance();
}

vdec::VirtualDecoder* TvWallScenesTest::startDecoder(int host, const kvmstest::DecoderFixture::Tweak& tweak)
{
    return fixture_.startDecoder(host, tweak);
}

TvWallScenesTest::Handle TvWallScenesTest::connectWorker(const vdec::VirtualDecoder* decoder)
{
    kvms_matrix::MatrixInfo info;
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

kvms_matrix::MatrixWindowInfo TvWallScenesTest::windowInfo(int id, int division)
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

QString TvWallScenesTest::logText()
{
    QFile file(vms_sdk::log_file());
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

void TvWallScenesTest::initTestCase()
{
    QVERIFY(dir_.isValid());
    previousDir_ = QDir::currentPath();
    QVERIFY(QDir::setCurrent(dir_.path())); // "tvWallConfig.ini" is opened by its bare name
    vms_sdk::set_log_file(dir_.filePath("client.log"));
    QVERIFY(worker());
}

void TvWallScenesTest::cleanup()
{
    MatrixSdkWorker* w = worker();
    if (w->isRunning() && w->isWorkerRunning()) {
        w->disconnectAllMatrix();
        QTRY_VERIFY_WITH_TIMEOUT(w->registeredHandles().isEmpty() && w->pendingTaskCount() == 0, scaled(10000));
    }
    fixture_.cleanup();
    QFile::remove(dir_.filePath("tvWallConfig.ini"));
}

void TvWallScenesTest::cleanupTestCase()
{
    worker()->finishPendingAndStop();
    QVERIFY(worker()->wait(scaled(10000)));
    QDir::setCurrent(previousDir_);
}

KVMS_TEST_MAIN(TvWallScenesTest)
