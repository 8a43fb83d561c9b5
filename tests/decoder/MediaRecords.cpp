#include "MediaRecords.h"

#include <cstring>

namespace mediarecords {

DeviceInfo_t source(int sub, const char* devId, int protocol, int channel, const char* url)
{
    DeviceInfo_t d {};
    d.subWindow = sub;
    std::strncpy(d.devId, devId, sizeof d.devId - 1);
    std::strncpy(d.name, devId, sizeof d.name - 1);
    std::strncpy(d.mainUrl, url, sizeof d.mainUrl - 1);
    std::strncpy(d.subUrl, url, sizeof d.subUrl - 1);
    d.protocol = protocol;
    d.channel = channel;
    d.mode = 2;
    return d;
}

bool layOut(
    CMHANDLE handle, int cols, int rows, const std::vector<MatrixWindow_t>& windows, const std::vector<int>& divisions)
{
    if (CMatrix_SetMatrix(handle, cols, rows, "Media") != CMATRIX_OK
        || CMatrix_WindowAdd(handle, windows.data(), int(windows.size()), true) != CMATRIX_OK)
        return false;
    for (size_t i = 0; i < windows.size() && i < divisions.size(); ++i) {
        if (CMatrix_WindowSetDivision(handle, int(windows[i].id), divisions[i]) != CMATRIX_OK)
            return false;
    }
    return true;
}

int display(CMHANDLE handle, int windowId, int sub, const FrameSamples::Bytes& frame)
{
    return CMatrix_DisplayFrame(handle, windowId, sub, frame.data(), int(frame.size()));
}

} // namespace mediarecords
