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

WallRig::Handle WallRig::decoderOn(const kvmstest::DecoderFixture::Tweak& tweak)
{
    decoder_ = startDecoder(tweak);
    sdk_ = std::make_unique<kvmstest::SdkSession>();
    if (!decoder_ || sdk_->connect(decoder_) != CMATRIX_OK)
        return {};
    return connectWorker(decoder_);
}

WallRig::Handle WallRig::wallOn(int rows, int cols)
{
    const Handle h = decoderOn();
    if (!h || CMatrix_SetMatrix(*sdk_, cols, rows, "Wall") != CMATRIX_OK)
        return {};
    std::vector<MatrixWindow_t> cells;
    for (int r = 0; r < rows; ++r) {
        for (int c = 0; c < cols; ++c)
            cells.push_back(kvmstest::window(
                uint32_t(r * cols + c + 1), c * (32768 / cols), r * (32768 / rows), 32768 / cols, 32768 / rows));
    }
    return CMatrix_WindowAdd(*sdk_, cells.data(), int(cells.size()), true) == CMATRIX_OK ? h : Handle();
}

int WallRig::addCell(uint32_t id, int division)
{
    const int32_t cell = 16384;
    const MatrixWindow_t w
        = kvmstest::window(id, int32_t((id - 1) % 2) * cell, int32_t((id - 1) / 2) * cell, cell, cell);
    const int rc = CMatrix_WindowAdd(*sdk_, &w, 1, false);
    return rc != CMATRIX_OK ? rc : CMatrix_WindowSetDivision(*sdk_, int(id), division);
}

int WallRig::bindRaw(int windowId, int subWindow, const char* devId)
{
    const DeviceInfo_t d = kvmstest::device(subWindow, devId);
    return CMatrix_WindowDeviceAdd(*sdk_, windowId, &d, 1, false);
}

int WallRig::createScheme(uint32_t id, const char* name, const QStringList& sourceIds)
{
    SchemeInfo_t s {};
    s.id = id;
    kvmstest::setText(s.name, name);
    s.kind = 4;
    s.interval = 1;
    const int rc = CMatrix_SchemeSet(*sdk_, &s);
    if (rc != CMATRIX_OK || sourceIds.isEmpty())
        return rc;
    std::vector<SchemeDevice_t> devices(size_t(sourceIds.size()));
    for (int i = 0; i < sourceIds.size(); ++i) {
        kvmstest::setText(devices[size_t(i)].devId, sourceIds.at(i).toLatin1().constData());
        kvmstest::setText(devices[size_t(i)].protocolName, "kst2.0");
        devices[size_t(i)].channel = i + 1;
    }
    return CMatrix_SchemeAddDevices(*sdk_, id, devices.data(), int(devices.size()), true);
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
