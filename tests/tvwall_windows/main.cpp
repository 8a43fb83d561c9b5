#include "WindowsTests.h"

#include "QueuedSignalSpy.h"
#include "TestMain.h"
#include "TestTimeout.h"
#include "WireBuilders.h"

#include <vector>

using namespace kvms_matrix;
using kvmstest::scaled;

vdec::VirtualDecoder* TvWallWindowsTest::startDecoder(int host)
{
    return fixture_.startDecoder(host);
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

void TvWallWindowsTest::initTestCase()
{
    QVERIFY(enterWorkDirectory());
}

void TvWallWindowsTest::cleanup()
{
    QVERIFY(settleWorker());
    sdk_.reset();
    fixture_.cleanup();
    decoder_ = nullptr;
}

void TvWallWindowsTest::cleanupTestCase()
{
    QVERIFY(leaveWorkDirectory());
}

KVMS_TEST_MAIN(TvWallWindowsTest)
