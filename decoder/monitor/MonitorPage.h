#pragma once

#include <QString>

#include <string>

namespace vdec {

// The monitor's HTML page: the wall picture, fetched afresh twice a second, under a
// header line with the decoder's identity, grid and clients.
class MonitorPage {
public:
    static std::string html(const QString& deviceId);
};

} // namespace vdec
