#include "JpegEncoder.h"

#include <QBuffer>

#ifdef KVMS_HAVE_LIBJPEG
#include <csetjmp>
#include <cstdio> // jpeglib.h needs FILE
#include <jpeglib.h>
#endif

namespace kvms_matrix {

QByteArray JpegEncoder::encodeWithToolkit(const QImage& image)
{
    QByteArray jpeg;
    QBuffer buffer(&jpeg);
    buffer.open(QIODevice::WriteOnly);
    if (!image.save(&buffer, "JPG"))
        return {};
    return jpeg;
}

#if defined(KVMS_HAVE_LIBJPEG) && defined(JCS_EXTENSIONS)

namespace {

// libjpeg reports errors by calling error_exit, which must not return.
struct ErrorManager {
    jpeg_error_mgr base;
    std::jmp_buf resume;
};

[[noreturn]] void onError(j_common_ptr info)
{
    std::longjmp(reinterpret_cast<ErrorManager*>(info->err)->resume, 1);
}

void onMessage(j_common_ptr, int) { }

// Writes straight into a QByteArray that grows by doubling; trimmed at the end.
struct Destination {
    jpeg_destination_mgr base;
    QByteArray* out;
};

constexpr int kFirstCapacity = 256 * 1024;

void startDestination(j_compress_ptr info)
{
    auto* d = reinterpret_cast<Destination*>(info->dest);
    d->out->resize(kFirstCapacity);
    d->base.next_output_byte = reinterpret_cast<JOCTET*>(d->out->data());
    d->base.free_in_buffer = size_t(d->out->size());
}

boolean growDestination(j_compress_ptr info)
{
    auto* d = reinterpret_cast<Destination*>(info->dest);
    const int used = d->out->size();
    d->out->resize(used * 2);
    d->base.next_output_byte = reinterpret_cast<JOCTET*>(d->out->data()) + used;
    d->base.free_in_buffer = size_t(d->out->size() - used);
    return TRUE;
}

void finishDestination(j_compress_ptr info)
{
    auto* d = reinterpret_cast<Destination*>(info->dest);
    d->out->resize(d->out->size() - int(d->base.free_in_buffer));
}

// Plain data only between setjmp and the end: a longjmp skips no destructor.
bool compress(const QImage& image, QByteArray& out)
{
    jpeg_compress_struct info;
    ErrorManager errors;
    Destination destination;
    info.err = jpeg_std_error(&errors.base);
    errors.base.error_exit = onError;
    errors.base.emit_message = onMessage;
    if (setjmp(errors.resume)) {
        jpeg_destroy_compress(&info);
        return false;
    }
    jpeg_create_compress(&info);
    destination.base.init_destination = startDestination;
    destination.base.empty_output_buffer = growDestination;
    destination.base.term_destination = finishDestination;
    destination.out = &out;
    info.dest = &destination.base;

    info.image_width = JDIMENSION(image.width());
    info.image_height = JDIMENSION(image.height());
    info.input_components = 4;
    info.in_color_space = Q_BYTE_ORDER == Q_LITTLE_ENDIAN ? JCS_EXT_BGRX : JCS_EXT_XRGB;
    jpeg_set_defaults(&info);
    // The JFIF header carries the resolution, as the toolkit's writer puts it there.
    info.density_unit = 1; // dots per inch
    info.X_density = UINT16(qRound(image.dotsPerMeterX() * 2.54 / 100.));
    info.Y_density = UINT16(qRound(image.dotsPerMeterY() * 2.54 / 100.));
    jpeg_set_quality(&info, JpegEncoder::kDefaultQuality, TRUE);
    jpeg_start_compress(&info, TRUE);
    while (info.next_scanline < info.image_height) {
        JSAMPROW row = const_cast<JSAMPROW>(image.constScanLine(int(info.next_scanline)));
        jpeg_write_scanlines(&info, &row, 1);
    }
    jpeg_finish_compress(&info);
    jpeg_destroy_compress(&info);
    return true;
}

} // namespace

bool JpegEncoder::directAvailable()
{
    return true;
}

QByteArray JpegEncoder::encodeDirect(const QImage& image)
{
    QByteArray jpeg;
    if (!compress(image, jpeg))
        return {};
    return jpeg;
}

#else

bool JpegEncoder::directAvailable()
{
    return false;
}

QByteArray JpegEncoder::encodeDirect(const QImage& image)
{
    return encodeWithToolkit(image);
}

#endif

bool JpegEncoder::takesDirectPath(const QImage& image)
{
    return directAvailable() && image.format() == QImage::Format_RGB32 && !image.isNull();
}

QByteArray JpegEncoder::encode(const QImage& image, Path path)
{
    if (path == Path::Direct && takesDirectPath(image))
        return encodeDirect(image);
    return encodeWithToolkit(image);
}

} // namespace kvms_matrix
