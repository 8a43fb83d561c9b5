#pragma once

#include "WallOverlays.h"

#include <QImage>
#include <QPainter>
#include <QRect>

namespace vdec {

struct DecoderSnapshot;
struct Window;

// Draws the wall as its screens show it: screens, windows with their sub-windows,
// source names and latest pictures, the banner and the screen numbers.
class WallPainter {
public:
    static constexpr int kScreenWidth = 480; // per screen by default, 1920x1080 scaled by 1/4
    static constexpr int kMaxSide = 3840; // of the picture, either way
    static constexpr int kMinWidth = 64;

    // The image width for `requested` pixels (0: the default), and the height that
    // keeps each screen at 16:9.
    static QSize imageSize(int cols, int rows, int requested);
    static QImage render(const DecoderSnapshot& snapshot, const WallOverlays& overlays, int requestedWidth = 0);

private:
    WallPainter(const DecoderSnapshot& snapshot, QImage& image);
    void drawScreens();
    void drawWindow(const Window& window);
    void drawSubWindow(const Window& window, int32_t sub, const QRect& rect);
    void drawBezels();
    void drawBanner(const BannerInfo_t& banner);
    void drawScreenNumbers();
    QRect wallRect(int32_t x, int32_t y, int32_t w, int32_t h) const;
    enum class Label { Boxed, Faint }; // white on a dark box, or grey on nothing
    void drawLabel(
        const QRect& rect, const QString& text, Qt::Alignment alignment, int pixelSize, Label style = Label::Boxed);

    const DecoderSnapshot& snapshot_;
    QImage& image_;
    QPainter painter_;
    const bool text_; // fonts need a GUI application; without one, no text is drawn
    int cols_, rows_;
};

} // namespace vdec
