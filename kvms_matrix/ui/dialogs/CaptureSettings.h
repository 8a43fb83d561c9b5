#pragma once

#include "MatrixDeviceInfo.h"

#include <QString>

namespace kvms_matrix {

// How "grab screen" puts this workstation's desktop on the wall, kept in the data directory
// between sessions.
class CaptureSettings {
public:
    enum class Sending {
        Direct, // pictures captured here and pushed to the decoder ("cap_")
        Stream, // the decoder pulls the desktop as a stream published at `streamAddress` ("caponvif_")
    };

    Sending sending = Sending::Direct;
    QString label; // the workstation's name on the wall; empty: the host name
    QString streamAddress; // IPv4 address of the stream's publisher
    bool askEachTime = true; // open the settings before each projection

    static constexpr int kMaxLabel = 20;
    static const char* const kFileName; // "captureSettings.json"

    // The settings in the data directory (the current one); defaults when absent or unreadable.
    static CaptureSettings load(const QString& path = QString());
    // Written whole or not at all.
    bool save(const QString& path = QString()) const;

    QString effectiveLabel() const;
    bool streamAddressValid() const;
    // The source to bind for the sub-window: its device id, which the decoder holds in 31 bytes,
    // keeps the window and sub-window numbers and gives up characters of the label first.
    MatrixDeviceInfo source(int windowId, int subWindowId) const;
};

} // namespace kvms_matrix
