#include "RawWall.h"

#include "WireBuilders.h"

#include "core/VirtualDecoder.h"

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
