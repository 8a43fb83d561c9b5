#pragma once

#include "CMatrixSDK.h"

#include <QSize>
#include <QString>

namespace vdec {

// Which stream a sub-window's source is, as the decoder fetches it:
// - camera channels (protocols 0 and 1) and RTSP sources (3) are live streams;
//   HDMI inputs, USB files, pictures, distributions and ONVIF services are not;
// - the main URL (or the sub URL) of the descriptor when it has one; otherwise the
//   camera's own address: rtsp://<user>:<password>@<ip>:<port>/ch<channel>/main or
//   /sub (port 554 when 0);
// - stream 0 is the main stream, 1 the sub stream, anything else (-1: "Auto") the
//   sub stream when the sub-window is shown at most 960x540 (a quarter of a screen),
//   else the main one. A sub stream without a URL of its own falls back to the main.
class StreamUrl {
public:
    static constexpr QSize kSubAtMost { 960, 540 };

    static bool isLive(const DeviceInfo_t& source);
    static bool wantsSub(const DeviceInfo_t& source, QSize shown);
    // Empty when the source is not a live stream.
    static QString url(const DeviceInfo_t& source, bool sub);
    // The URL as reported: no user or password.
    static QString withoutCredentials(const QString& url);
};

} // namespace vdec
