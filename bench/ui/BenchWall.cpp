#include "BenchWall.h"

#include <algorithm>

namespace benchwall {

QList<kvms_matrix::MatrixWindowInfo> wall(int side, int division, const QString& prefix)
{
    QList<kvms_matrix::MatrixWindowInfo> windows;
    const int unit = 32768 / side;
    for (int id = 1; id <= side * side; ++id) {
        kvms_matrix::MatrixWindowInfo window;
        window.windowId = id;
        window.windowIndex = id - 1;
        window.division = division;
        window.x = (id - 1) % side * unit;
        window.y = (id - 1) / side * unit;
        window.w = unit;
        window.h = unit;
        for (int k = 0; k < division; ++k) {
            kvms_matrix::MatrixSubWindowInfo sub;
            sub.subWindowId = k + 1;
            sub.subWindowIndex = k;
            sub.device.deviceType = 1;
            sub.device.deviceName = QStringLiteral("%1 %2-%3").arg(prefix).arg(id).arg(k + 1);
            sub.sourceState = 1;
            window.subWindows.append(sub);
        }
        windows.append(window);
    }
    return windows;
}

double median(std::vector<double> samples)
{
    if (samples.empty())
        return 0;
    std::sort(samples.begin(), samples.end());
    return samples[samples.size() / 2];
}

} // namespace benchwall
