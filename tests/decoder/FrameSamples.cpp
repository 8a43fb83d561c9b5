#include "FrameSamples.h"

#include "KavFrame.h"

#include <QBuffer>
#include <QImage>

#include <cstring>

QByteArray FrameSamples::solidJpeg(const QColor& colour, QSize size)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(colour);
    QByteArray out;
    QBuffer buffer(&out);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "JPG", 95);
    return out;
}

QByteArray FrameSamples::withClaimedSize(QByteArray jpeg, QSize claimed)
{
    // Baseline frame header: FF C0, length (2), precision (1), height (2), width (2).
    const int sof = jpeg.indexOf(QByteArray("\xff\xc0", 2));
    if (sof < 0 || sof + 9 > jpeg.size())
        return {};
    jpeg[sof + 5] = char(claimed.height() >> 8);
    jpeg[sof + 6] = char(claimed.height() & 0xff);
    jpeg[sof + 7] = char(claimed.width() >> 8);
    jpeg[sof + 8] = char(claimed.width() & 0xff);
    return jpeg;
}

FrameSamples::Bytes FrameSamples::envelope(const QByteArray& payload, uint32_t codec, QSize size)
{
    KavFrame frame {};
    frame.type = KAV_TYPE_KEY;
    frame.data = reinterpret_cast<const unsigned char*>(payload.constData());
    frame.size = uint32_t(payload.size());
    KavStreamInfo info {};
    info.flags = KAV_STREAM_VIDEO | KAV_STREAM_AUDIO;
    info.videoCodec = codec;
    info.frameRateNum = 1;
    info.frameRateDen = 1;
    info.width = uint16_t(size.width());
    info.height = uint16_t(size.height());
    Bytes out(size_t(KavCalcFrameSize(frame.type, frame.size)));
    const int packed = KavPackFrame(&frame, &info, out.data(), int(out.size()));
    out.resize(packed > 0 ? size_t(packed) : 0);
    return out;
}

FrameSamples::Bytes FrameSamples::bareEnvelope(const QByteArray& payload)
{
    KavFrame frame {};
    frame.type = KAV_TYPE_VIDEO;
    frame.data = reinterpret_cast<const unsigned char*>(payload.constData());
    frame.size = uint32_t(payload.size());
    KavStreamInfo info {};
    Bytes out(size_t(KavCalcFrameSize(frame.type, frame.size)));
    const int packed = KavPackFrame(&frame, &info, out.data(), int(out.size()));
    out.resize(packed > 0 ? size_t(packed) : 0);
    return out;
}
