#include "WallRig.h"

#include "QueuedSignalSpy.h"
#include "TestTimeout.h"
#include "WireBuilders.h"

#include <climits>
#include <vector>

using namespace kvms_matrix;
using kvmstest::scaled;

vdec::VirtualDecoder* WallRig::startDecoder(const kvmstest::DecoderFixture::Tweak& tweak)
{
    return fixture_.startDecoder(0, tweak);
}

WallRig::Handle WallRig::wallOn(int rows, int cols)
{
    decoder_ = startDecoder();
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

QList<MatrixWindowInfo> WallRig::readWall(const Handle& handle, int* rows, int* cols)
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

int WallRig::bind(const Handle& handle, const MatrixWindowInfo& window, int subWindowId, MatrixWindowInfo* echoed)
{
    QueuedSignalSpy bound(worker(), &MatrixSdkWorker::signalSetWindowSignalSourceResult);
    worker()->setWindowSignalSource(handle, window, subWindowId, false);
    if (!bound.wait(scaled(10000)))
        return INT_MIN;
    if (echoed)
        *echoed = bound.at(0).at(1).value<MatrixWindowInfo>();
    return bound.at(0).at(0).toInt();
}

bool WallRig::settle()
{
    const bool settled = settleWorker();
    sdk_.reset();
    fixture_.cleanup();
    decoder_ = nullptr;
    return settled;
}
