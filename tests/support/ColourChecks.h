#pragma once

#include <QColor>
#include <QImage>

// Colour checks on pictures that went through JPEG (a wall picture, a decoded frame).
namespace colourcheck {

// The colour at (fx, fy), fractions of the image's width and height.
inline QColor at(const QImage& image, double fx, double fy)
{
    return image.pixelColor(
        qBound(0, int(fx * image.width()), image.width() - 1), qBound(0, int(fy * image.height()), image.height() - 1));
}

inline bool near(const QColor& a, const QColor& b, int tolerance = 24)
{
    return qAbs(a.red() - b.red()) <= tolerance && qAbs(a.green() - b.green()) <= tolerance
        && qAbs(a.blue() - b.blue()) <= tolerance;
}

} // namespace colourcheck
