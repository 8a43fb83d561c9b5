#include "MediaRecords.h"

namespace mediarecords {

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
