#pragma once

#include <cstdint>

namespace kvms_matrix {

// Description of a replayed recording's video stream, as its player fills it.
struct VideoStreamInfo {
    int32_t streamId = 0; // not read by the frame senders
    int32_t codec = 0; // 0 and 1: the two video codecs the stream source reports
    uint16_t width = 0;
    uint16_t height = 0;
    int32_t reserved = 0; // not read by the frame senders
    uint32_t frameRateNum = 0;
    uint32_t frameRateDen = 0;
};

} // namespace kvms_matrix
