#pragma once

#include <QByteArray>
#include <QColor>
#include <QSize>

#include <cstdint>
#include <vector>

// Pictures and packed media frames for the tests, made on the spot.
class FrameSamples {
public:
    using Bytes = std::vector<uint8_t>;

    static QByteArray solidJpeg(const QColor& colour, QSize size = { 320, 180 });
    // The same picture, but claiming another size in its frame header.
    static QByteArray withClaimedSize(QByteArray jpeg, QSize claimed);

    // A media frame envelope: type 250 with stream description (codec, 1 fps, size).
    static Bytes envelope(const QByteArray& payload, uint32_t codec = 4, QSize size = { 320, 180 });
    // A type-251 envelope: payload only, no stream description.
    static Bytes bareEnvelope(const QByteArray& payload);
    static Bytes picture(const QColor& colour, QSize size = { 320, 180 })
    {
        return envelope(solidJpeg(colour, size), 4, size);
    }
};
