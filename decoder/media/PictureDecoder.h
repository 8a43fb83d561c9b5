#pragma once

#include <QImage>
#include <QSize>

#include <cstddef>
#include <cstdint>

namespace vdec {

// Decodes still pictures (JPEG) no larger than they will be shown.
class PictureDecoder {
public:
    static constexpr int kMaxSide = 16384; // larger claims are refused before allocating
    static constexpr QSize kMaxShown { 1920, 1080 }; // one screen: more is never kept

    // The size to keep a picture of `source` pixels at, shown in `shown` pixels:
    // never larger than either, nor than one screen.
    static QSize keptSize(QSize source, QSize shown);

    // Decodes to at most `shown` pixels. With `atShownSize` the decoder itself works
    // at the reduced size (JPEG decodes 1/2, 1/4 or 1/8 scale far faster); without it
    // the whole picture is decoded and then scaled. False when it does not decode.
    static bool decode(const uint8_t* data, size_t size, QSize shown, bool atShownSize, QImage& out);
    // Reads only the header: true for a JPEG of an acceptable size. What decode() checks
    // before it decodes, at a fraction of the cost.
    static bool probe(const uint8_t* data, size_t size);
};

} // namespace vdec
