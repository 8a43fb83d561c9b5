#include "PictureDecoder.h"

#include <QBuffer>
#include <QImageReader>
#include <QPainter>

#include <algorithm>
#include <climits>

namespace vdec {

QSize PictureDecoder::keptSize(QSize source, QSize shown)
{
    return QSize(std::max(1, std::min({ source.width(), shown.width(), kMaxShown.width() })),
        std::max(1, std::min({ source.height(), shown.height(), kMaxShown.height() })));
}

namespace {

bool looksLikeJpeg(const uint8_t* data, size_t size)
{
    // Every JPEG starts with its start-of-image marker; anything else is not tried.
    return data && size >= 4 && size <= size_t(INT_MAX) && data[0] == 0xff && data[1] == 0xd8;
}

// The size the header claims, or an invalid size when the header is not acceptable.
QSize headerSize(QImageReader& reader)
{
    const QSize source = reader.size();
    if (!source.isValid() || source.width() > PictureDecoder::kMaxSide || source.height() > PictureDecoder::kMaxSide)
        return {};
    return source;
}

} // namespace

bool PictureDecoder::probe(const uint8_t* data, size_t size)
{
    if (!looksLikeJpeg(data, size))
        return false;
    QByteArray bytes = QByteArray::fromRawData(reinterpret_cast<const char*>(data), int(size));
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer, "jpg");
    reader.setDecideFormatFromContent(false);
    return headerSize(reader).isValid();
}

bool PictureDecoder::decode(const uint8_t* data, size_t size, QSize shown, bool atShownSize, QImage& out)
{
    if (!looksLikeJpeg(data, size))
        return false;
    QByteArray bytes = QByteArray::fromRawData(reinterpret_cast<const char*>(data), int(size));
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    // The format is fixed: a frame that says "still picture" must be one, whatever else
    // its bytes might pass for.
    QImageReader reader(&buffer, "jpg");
    reader.setDecideFormatFromContent(false);
    const QSize source = headerSize(reader);
    if (!source.isValid())
        return false;
    const QSize kept = keptSize(source, shown);
    if (atShownSize && kept != source)
        reader.setScaledSize(kept);
    QImage image;
    if (!reader.read(&image) || image.isNull())
        return false;
    if (image.size() == kept) {
        out = image;
        return true;
    }
    // Stretched to fill, as the sub-window shows it, and smoothly.
    QImage scaled(kept, QImage::Format_RGB32);
    QPainter painter(&scaled);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(scaled.rect(), image);
    painter.end();
    out = scaled;
    return true;
}

} // namespace vdec
