#include "WallMimic.h"

#include "MonitorServer.h"
#include "WallPainter.h"
#include "core/DecoderSnapshot.h"

#include <QBuffer>

namespace vdec {

bool WallMimic::acceptable(int width, int height)
{
    return width >= kMinSide && height >= kMinSide && width <= kMaxWidth && height <= kMaxHeight;
}

QByteArray WallMimic::jpeg(const DecoderSnapshot& snapshot, int width, int height)
{
    if (!acceptable(width, height))
        return {};
    QImage image = WallPainter::render(snapshot, MonitorServer::overlaysOf(snapshot), width);
    if (image.size() != QSize(width, height))
        image = image.scaled(width, height, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    QByteArray out;
    QBuffer buffer(&out);
    buffer.open(QIODevice::WriteOnly);
    if (!image.save(&buffer, "JPEG", kQuality))
        return {};
    return out;
}

} // namespace vdec
