#include "MediaRecords.h"

namespace mediarecords {

bool layOut(CMHANDLE handle, int division)
{
    const MatrixWindow_t whole = window(1, 0, 0, 32768, 32768);
    return CMatrix_SetMatrix(handle, 1, 1, "Media") == CMATRIX_OK
        && CMatrix_WindowAdd(handle, &whole, 1, true) == CMATRIX_OK
        && CMatrix_WindowSetDivision(handle, 1, division) == CMATRIX_OK;
}

int display(CMHANDLE handle, int windowId, int sub, const FrameSamples::Bytes& frame)
{
    return CMatrix_DisplayFrame(handle, windowId, sub, frame.data(), int(frame.size()));
}

} // namespace mediarecords
