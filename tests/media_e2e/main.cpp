#include "MediaTests.h"
#include "TestMain.h"

#include "core/VirtualDecoder.h"

#include <cstring>

void MediaTests::cleanup()
{
    fixture_.cleanup();
}

DeviceInfo_t MediaTests::source(int sub, const char* devId, int protocol, int channel, const char* url)
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

bool MediaTests::layOut(
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

int MediaTests::display(CMHANDLE handle, int windowId, int sub, const FrameSamples::Bytes& frame)
{
    return CMatrix_DisplayFrame(handle, windowId, sub, frame.data(), int(frame.size()));
}

QColor MediaTests::at(const QImage& image, double fx, double fy)
{
    return image.pixelColor(
        qBound(0, int(fx * image.width()), image.width() - 1), qBound(0, int(fy * image.height()), image.height() - 1));
}

bool MediaTests::near(const QColor& a, const QColor& b, int tolerance)
{
    return qAbs(a.red() - b.red()) <= tolerance && qAbs(a.green() - b.green()) <= tolerance
        && qAbs(a.blue() - b.blue()) <= tolerance;
}

KVMS_TEST_MAIN(MediaTests)
