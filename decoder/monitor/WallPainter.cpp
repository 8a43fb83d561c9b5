#include "WallPainter.h"

#include "core/DecoderSnapshot.h"
#include "state/SubWindowLayout.h"
#include "state/WindowTable.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QPainterPath>

#include <algorithm>

namespace vdec {

namespace {

const QColor kBackground(0x14, 0x16, 0x1a);
const QColor kScreen(0x1f, 0x22, 0x28);
const QColor kScreenBorder(0x5a, 0x60, 0x6b);
const QColor kWindowBorder(0x4a, 0x90, 0xd9);
const QColor kFloatingBorder(0xe0, 0xa0, 0x30);
const QColor kSubWindow(0x08, 0x09, 0x0b);
const QColor kSubWindowBorder(0x3c, 0x41, 0x4b);
const QColor kFaint(0x60, 0x66, 0x70);
const QColor kBezel(0x2a, 0x2d, 0x33, 200);

QString textOf(const char* field, size_t size)
{
    return QString::fromUtf8(field, int(qstrnlen(field, size)));
}

// What a sub-window's source is called on the wall: its name, else its device id.
QString sourceLabel(const DeviceInfo_t& d)
{
    const QString name = textOf(d.name, sizeof d.name);
    return name.isEmpty() ? textOf(d.devId, sizeof d.devId) : name;
}

} // namespace

QSize WallPainter::imageSize(int cols, int rows, int requested)
{
    cols = std::max(1, cols);
    rows = std::max(1, rows);
    const int width
        = requested > 0 ? std::clamp(requested, kMinWidth, kMaxSide) : std::min(cols * kScreenWidth, kMaxSide);
    // Screens are 16:9, so the wall is (cols * 16) : (rows * 9); a tall wall is bounded
    // by its height instead.
    const int height = int(qint64(width) * rows * 9 / (qint64(cols) * 16));
    if (height <= kMaxSide)
        return QSize(width, std::max(1, height));
    return QSize(std::max(1, int(qint64(kMaxSide) * cols * 16 / (qint64(rows) * 9))), kMaxSide);
}

QImage WallPainter::render(const DecoderSnapshot& snapshot, const WallOverlays& overlays, int requestedWidth)
{
    QImage image(imageSize(snapshot.cols, snapshot.rows, requestedWidth), QImage::Format_RGB32);
    image.fill(kBackground);
    {
        WallPainter painter(snapshot, image);
        painter.drawScreens();
        std::vector<const Window*> order;
        for (const Window& w : snapshot.windows)
            order.push_back(&w);
        // Cell and spliced windows below, floating ones above in their layer order.
        std::stable_sort(order.begin(), order.end(), [](const Window* a, const Window* b) {
            return std::make_pair(a->floating, a->layer) < std::make_pair(b->floating, b->layer);
        });
        for (const Window* w : order)
            painter.drawWindow(*w);
        painter.drawBezels();
        if (overlays.banner && overlays.banner->show)
            painter.drawBanner(*overlays.banner);
        if (overlays.identify)
            painter.drawScreenNumbers();
    }
    return image;
}

WallPainter::WallPainter(const DecoderSnapshot& snapshot, QImage& image)
    : snapshot_(snapshot)
    , image_(image)
    , painter_(&image)
    , text_(qobject_cast<QGuiApplication*>(QCoreApplication::instance()) != nullptr)
    , cols_(std::max(1, snapshot.cols))
    , rows_(std::max(1, snapshot.rows))
{
    painter_.setRenderHint(QPainter::SmoothPixmapTransform);
    painter_.setRenderHint(QPainter::TextAntialiasing);
}

QRect WallPainter::wallRect(int32_t x, int32_t y, int32_t w, int32_t h) const
{
    const qint64 units = WindowTable::kWallUnits, iw = image_.width(), ih = image_.height();
    const int left = int(x * iw / units), top = int(y * ih / units);
    const int right = int((qint64(x) + w) * iw / units), bottom = int((qint64(y) + h) * ih / units);
    return QRect(left, top, right - left, bottom - top);
}

void WallPainter::drawScreens()
{
    const qint64 w = image_.width(), h = image_.height();
    for (int r = 0; r < rows_; ++r) {
        for (int c = 0; c < cols_; ++c) {
            const QRect screen(QPoint(int(c * w / cols_), int(r * h / rows_)),
                QPoint(int((c + 1) * w / cols_) - 1, int((r + 1) * h / rows_) - 1));
            painter_.fillRect(screen, kScreen);
            painter_.setPen(kScreenBorder);
            painter_.drawRect(screen.adjusted(0, 0, -1, -1));
            // Which output this is, small, where windows rarely cover it.
            drawLabel(screen.adjusted(4, 2, -6, -4), QString::number(r * cols_ + c + 1),
                Qt::AlignBottom | Qt::AlignRight, std::clamp(screen.height() / 16, 8, 14), Label::Faint);
        }
    }
}

void WallPainter::drawBezels()
{
    // The screens' frames cut through windows that span them, as on the real wall.
    painter_.setPen(QPen(kBezel, 1));
    const qint64 w = image_.width(), h = image_.height();
    for (int c = 1; c < cols_; ++c) {
        const int x = int(c * w / cols_);
        painter_.drawLine(x - 1, 0, x - 1, int(h) - 1);
        painter_.drawLine(x, 0, x, int(h) - 1);
    }
    for (int r = 1; r < rows_; ++r) {
        const int y = int(r * h / rows_);
        painter_.drawLine(0, y - 1, int(w) - 1, y - 1);
        painter_.drawLine(0, y, int(w) - 1, y);
    }
}

void WallPainter::drawWindow(const Window& window)
{
    const QRect area = wallRect(window.x, window.y, window.w, window.h);
    if (area.isEmpty())
        return;
    for (int32_t sub = 1; sub <= window.division; ++sub) {
        const QRect rect = window.fullScreenSub > 0 ? (window.fullScreenSub == sub ? area : QRect())
                                                    : SubWindowLayout::rect(area, window.division, sub);
        if (!rect.isEmpty())
            drawSubWindow(window, sub, rect);
    }
    painter_.setPen(QPen(window.floating ? kFloatingBorder : kWindowBorder, 2));
    painter_.setBrush(Qt::NoBrush);
    painter_.drawRect(area.adjusted(1, 1, -1, -1));
    drawLabel(area.adjusted(3, 2, -4, -2), QStringLiteral("#%1").arg(window.id), Qt::AlignTop | Qt::AlignRight,
        std::clamp(area.height() / 12, 9, 14));
}

void WallPainter::drawSubWindow(const Window& window, int32_t sub, const QRect& rect)
{
    painter_.fillRect(rect, kSubWindow);
    const SubWindowMedia* media = snapshot_.mediaOf(window.id, sub);
    const VideoStatus* video = snapshot_.videoOf(window.id, sub);
    const bool noSignal = video && video->state == VideoStatus::State::NoSignal;
    if (media && !media->picture.isNull() && !noSignal)
        painter_.drawImage(rect, media->picture);
    if (noSignal) // as a decoder's output shows a lost source: no stale picture
        drawLabel(rect, QStringLiteral("No signal"), Qt::AlignCenter, std::clamp(rect.height() / 7, 9, 28));
    painter_.setPen(kSubWindowBorder);
    painter_.setBrush(Qt::NoBrush);
    painter_.drawRect(rect.adjusted(0, 0, -1, -1));

    const auto source = window.sources.find(sub);
    const bool bound = source != window.sources.end() && source->second.protocol != 8;
    const int pixelSize = std::clamp(rect.height() / 9, 8, 16);
    if (bound)
        drawLabel(rect.adjusted(3, 2, -3, -2), sourceLabel(source->second), Qt::AlignTop | Qt::AlignLeft, pixelSize);
    else if (!media || media->picture.isNull())
        drawLabel(rect, QString::number(sub), Qt::AlignCenter, pixelSize, Label::Faint);
}

void WallPainter::drawLabel(const QRect& rect, const QString& text, Qt::Alignment alignment, int pixelSize, Label style)
{
    if (!text_ || text.isEmpty() || rect.width() < 8 || rect.height() < pixelSize)
        return;
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(pixelSize);
    painter_.setFont(font);
    const QFontMetrics metrics(font);
    const QString shown = metrics.elidedText(text, Qt::ElideRight, rect.width() - 4);
    if (style == Label::Faint) {
        painter_.setPen(kFaint);
        painter_.drawText(rect, int(alignment), shown);
        return;
    }
    // A dark backing keeps the name readable over any picture.
    QRect box = metrics.boundingRect(rect, int(alignment), shown).adjusted(-2, 0, 2, 0);
    painter_.fillRect(box.intersected(rect), QColor(0, 0, 0, 160));
    painter_.setPen(Qt::white);
    painter_.drawText(rect, int(alignment), shown);
}

void WallPainter::drawBanner(const BannerInfo_t& banner)
{
    QRect rect = wallRect(banner.x, banner.y, banner.w, banner.h);
    const int height = image_.height();
    if (rect.isEmpty()) // no place given: a strip along the bottom
        rect = QRect(0, height - height / 12, image_.width(), height / 12);
    rect = rect.intersected(image_.rect());
    if (rect.isEmpty())
        return;
    painter_.fillRect(rect, QColor::fromRgba(banner.backColor));
    if (!text_)
        return;
    const QString message = textOf(banner.message, sizeof banner.message);
    const int units = banner.fontSize > 0 ? banner.fontSize : 1024;
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(std::clamp(int(qint64(units) * height / WindowTable::kWallUnits), 8, std::max(8, rect.height())));
    painter_.setFont(font);
    painter_.setPen(QColor::fromRgba(banner.fontColor));
    const QString shown = QFontMetrics(font).elidedText(message, Qt::ElideRight, rect.width() - 8);
    painter_.drawText(rect.adjusted(4, 0, -4, 0), int(Qt::AlignVCenter | Qt::AlignLeft), shown);
}

void WallPainter::drawScreenNumbers()
{
    if (!text_)
        return;
    const qint64 w = image_.width(), h = image_.height();
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setBold(true);
    font.setPixelSize(std::max(8, int(h / rows_ / 2)));
    for (int r = 0; r < rows_; ++r) {
        for (int c = 0; c < cols_; ++c) {
            const QRect screen(QPoint(int(c * w / cols_), int(r * h / rows_)),
                QPoint(int((c + 1) * w / cols_) - 1, int((r + 1) * h / rows_) - 1));
            QPainterPath path;
            const QString number = QString::number(r * cols_ + c + 1);
            const QRect box = QFontMetrics(font).boundingRect(number);
            path.addText(screen.center() - box.center(), font, number);
            painter_.setRenderHint(QPainter::Antialiasing);
            painter_.strokePath(path, QPen(Qt::black, 4));
            painter_.fillPath(path, QColor(255, 255, 255, 230));
        }
    }
}

} // namespace vdec
