#pragma once

#include "CMatrixSDK.h"

#include <QString>

namespace kvms_matrix {

// A loop source as the decoder stores it, made from the device descriptor of the source. The
// scheme record names the protocol instead of numbering it.
class SchemeDeviceRecord {
public:
    // "kst1.0", "kst2.0", "onvif", "rtsp", "rtspPlayback" for 0, 1, 2, 3, 7; empty otherwise.
    static QString protocolName(int protocol);
    // Zeroed, then every field of the descriptor copied; the index is left to the decoder.
    static SchemeDevice_t fromDescriptor(const DeviceInfo_t& descriptor);
};

} // namespace kvms_matrix
