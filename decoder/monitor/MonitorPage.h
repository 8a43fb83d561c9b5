#pragma once

#include <QString>

#include <string>

namespace vdec {

// The monitor's HTML page: the wall moving (MJPEG) while the page is visible, under a
// header line with the decoder's identity, grid and clients.
class MonitorPage {
public:
    static std::string html(const QString& deviceId);
};

} // namespace vdec
