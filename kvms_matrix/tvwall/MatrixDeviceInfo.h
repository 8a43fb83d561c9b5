#pragma once

#include <QMetaType>
#include <QString>

namespace kvms_matrix {

// A video source as the module sees it. The fields named extra* come from the host's device
// lists and are only copied through.
struct MatrixDeviceInfo {
    QString deviceId; // for host cameras the text before the first '&' is the device id
    QString deviceName; // name sent to the decoder for cameras and streams
    int extraInt1 = -1;
    int extraInt2 = -1;
    int channel = 0;
    QString displayName; // name sent for display devices and pictures
    QString ip;
    int port = 0;
    QString extraText;
    QString userName;
    QString password;
    int deviceType = 1; // 0 none, 1 camera, 2 display, 3/4 picture, 5 RTSP camera, 6 HDMI, 7 USB file,
                        // 8 ONVIF, 9 RTSP URL
    int streamIndex = 0; // 0 main, 1 sub; the input number for HDMI sources
    int extraInt3 = 0;
    QString mainUrl;
    QString subUrl;
    int subWindowNumber = 0; // 1-based, as the decoder reports it
};

} // namespace kvms_matrix

Q_DECLARE_METATYPE(kvms_matrix::MatrixDeviceInfo)
