#pragma once

#include <QByteArray>
#include <QImage>

namespace kvms_matrix {

// "JPG" at the default quality, as the capture loop sends it. The toolkit's writer converts
// every row to RGB bytes before handing it to libjpeg; the direct path hands libjpeg-turbo the
// 32-bit pixels as they are (its SIMD colour conversion) with the same settings, so the
// picture is the same for less work. Used for RGB32 images when libjpeg-turbo is there; any
// other image goes to the toolkit's writer.
class JpegEncoder {
public:
    enum class Path { Toolkit, Direct };

    // The toolkit writer's quality when none is asked for.
    static constexpr int kDefaultQuality = 75;

    // Empty on failure.
    static QByteArray encode(const QImage& image, Path path = Path::Direct);
    static bool directAvailable();
    // Whether encode() would take the direct path for this image.
    static bool takesDirectPath(const QImage& image);

private:
    static QByteArray encodeWithToolkit(const QImage& image);
    static QByteArray encodeDirect(const QImage& image);
};

} // namespace kvms_matrix
