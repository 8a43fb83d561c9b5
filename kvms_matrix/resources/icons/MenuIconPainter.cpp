#include "MenuIconPainter.h"

#include <QPainter>
#include <QPainterPath>

namespace {

const QColor kStroke("#d8dee9");
const QColor kAccent("#5aa0ff");
const QColor kWarn("#ff6b6b");

QPen strokePen(const QColor& color = kStroke, qreal width = 1.5)
{
    QPen pen(color, width);
    pen.setCapStyle(Qt::RoundCap);
    pen.setJoinStyle(Qt::RoundJoin);
    return pen;
}

} // namespace

QStringList MenuIconPainter::names()
{
    return { "playback_n", "exit_replay", "wnd_clean_n", "maximize_n", "maximize_quti_n", "1_n", "4_n", "6_n", "8_n",
        "9_n", "16_n", "25_n", "split_n", "tp_n", "photo_n", "ico_open_voice_n", "ico_close_voice_n", "hd_n", "sd_n",
        "auto_n", "scene_n", "matrix_tuining" };
}

QImage MenuIconPainter::draw(const QString& name)
{
    if (!names().contains(name))
        return QImage();
    QImage image(kSize, kSize, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing);
    p.setPen(strokePen());
    p.setBrush(Qt::NoBrush);

    if (name.endsWith(QLatin1String("_n")) && name.at(0).isDigit()) {
        drawDivision(p, name.section(QLatin1Char('_'), 0, 0).toInt());
    } else if (name == QLatin1String("playback_n")) {
        drawReplay(p, false);
    } else if (name == QLatin1String("exit_replay")) {
        drawReplay(p, true);
    } else if (name == QLatin1String("wnd_clean_n")) {
        // A window whose content is wiped by an eraser.
        p.drawRoundedRect(QRectF(2.5, 3.5, 15, 11), 1.5, 1.5);
        p.save();
        p.translate(12, 13);
        p.rotate(-40);
        p.setBrush(kStroke);
        p.drawRoundedRect(QRectF(-3, -2.5, 9, 5), 1, 1);
        p.restore();
        p.drawLine(QPointF(4, 17.5), QPointF(16, 17.5));
    } else if (name == QLatin1String("maximize_n")) {
        drawCorners(p, true);
    } else if (name == QLatin1String("maximize_quti_n")) {
        drawCorners(p, false);
    } else if (name == QLatin1String("split_n")) {
        // Two halves pushed apart.
        p.drawRect(QRectF(2.5, 5.5, 6, 9));
        p.drawRect(QRectF(11.5, 5.5, 6, 9));
        p.setPen(strokePen(kAccent, 1.2));
        p.drawLine(QPointF(5.5, 2.5), QPointF(2.5, 2.5));
        p.drawLine(QPointF(14.5, 2.5), QPointF(17.5, 2.5));
        p.drawLine(QPointF(10, 3), QPointF(10, 17));
    } else if (name == QLatin1String("tp_n")) {
        // A screen with an arrow leaving it: this desktop sent to the wall.
        p.drawRoundedRect(QRectF(2.5, 3.5, 13, 9), 1, 1);
        p.drawLine(QPointF(9, 12.5), QPointF(9, 15.5));
        p.drawLine(QPointF(5.5, 16.5), QPointF(12.5, 16.5));
        p.setPen(strokePen(kAccent));
        p.drawLine(QPointF(10, 10), QPointF(17.5, 2.5));
        p.drawLine(QPointF(13, 2.5), QPointF(17.5, 2.5));
        p.drawLine(QPointF(17.5, 2.5), QPointF(17.5, 7));
    } else if (name == QLatin1String("photo_n")) {
        p.drawRoundedRect(QRectF(2.5, 3.5, 15, 13), 1.5, 1.5);
        QPainterPath hills;
        hills.moveTo(3.5, 15);
        hills.lineTo(8, 9);
        hills.lineTo(11, 12.5);
        hills.lineTo(13, 10.5);
        hills.lineTo(16.5, 15);
        p.drawPath(hills);
        p.setBrush(kAccent);
        p.setPen(Qt::NoPen);
        p.drawEllipse(QPointF(13.5, 7), 1.6, 1.6);
    } else if (name == QLatin1String("ico_open_voice_n")) {
        drawSpeaker(p, true);
    } else if (name == QLatin1String("ico_close_voice_n")) {
        drawSpeaker(p, false);
    } else if (name == QLatin1String("hd_n")) {
        drawBadge(p, QStringLiteral("HD"));
    } else if (name == QLatin1String("sd_n")) {
        drawBadge(p, QStringLiteral("SD"));
    } else if (name == QLatin1String("auto_n")) {
        drawBadge(p, QStringLiteral("A"));
    } else if (name == QLatin1String("scene_n")) {
        // Stacked layouts: a saved arrangement of the wall.
        p.drawRect(QRectF(6.5, 2.5, 11, 8));
        p.drawRect(QRectF(4.5, 5.5, 11, 8));
        p.setBrush(QColor(14, 22, 36));
        p.drawRect(QRectF(2.5, 8.5, 11, 8));
        p.setPen(strokePen(kAccent, 1.2));
        p.drawLine(QPointF(8, 9), QPointF(8, 16));
        p.drawLine(QPointF(3, 12.5), QPointF(13, 12.5));
    } else if (name == QLatin1String("matrix_tuining")) {
        // Two arrows chasing each other round: sources shown in turn.
        p.drawArc(QRectF(3.5, 3.5, 13, 13), 30 * 16, 150 * 16);
        p.drawArc(QRectF(3.5, 3.5, 13, 13), 210 * 16, 150 * 16);
        p.setBrush(kStroke);
        p.setPen(Qt::NoPen);
        p.drawPolygon(QPolygonF({ QPointF(16.5, 4), QPointF(17.5, 9.5), QPointF(12, 8.5) }));
        p.drawPolygon(QPolygonF({ QPointF(3.5, 16), QPointF(2.5, 10.5), QPointF(8, 11.5) }));
    }
    return image;
}

void MenuIconPainter::drawDivision(QPainter& p, int division)
{
    int n = 1, large = 1;
    switch (division) {
    case 4:
        n = 2;
        break;
    case 6:
        n = 3;
        large = 2;
        break;
    case 8:
        n = 4;
        large = 3;
        break;
    case 9:
        n = 3;
        break;
    case 16:
        n = 4;
        break;
    case 25:
        n = 5;
        break;
    default:
        break;
    }
    const QRectF frame(2.5, 2.5, 15, 15);
    const qreal step = frame.width() / n;
    p.drawRect(frame);
    p.setPen(strokePen(kStroke, 1.0));
    for (int i = 1; i < n; ++i) {
        const qreal at = frame.left() + i * step;
        // Lines stop at the large cell, which covers the top-left corner.
        const qreal from = i < large ? frame.top() + large * step : frame.top();
        p.drawLine(QPointF(at, from), QPointF(at, frame.bottom()));
        p.drawLine(QPointF(from - frame.top() + frame.left(), at), QPointF(frame.right(), at));
    }
    if (large > 1) {
        p.setPen(Qt::NoPen);
        p.setBrush(QColor(90, 160, 255, 150));
        p.drawRect(QRectF(frame.left() + 0.5, frame.top() + 0.5, large * step - 1, large * step - 1));
    }
}

void MenuIconPainter::drawBadge(QPainter& p, const QString& text)
{
    p.drawRoundedRect(QRectF(1.5, 4.5, 17, 11), 2.5, 2.5);
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(text.size() > 1 ? 8 : 9);
    font.setBold(true);
    p.setFont(font);
    p.setPen(kStroke);
    p.drawText(QRectF(1.5, 4.5, 17, 11), Qt::AlignCenter, text);
}

void MenuIconPainter::drawSpeaker(QPainter& p, bool on)
{
    QPainterPath speaker;
    speaker.moveTo(2.5, 7.5);
    speaker.lineTo(5.5, 7.5);
    speaker.lineTo(9.5, 3.5);
    speaker.lineTo(9.5, 16.5);
    speaker.lineTo(5.5, 12.5);
    speaker.lineTo(2.5, 12.5);
    speaker.closeSubpath();
    p.drawPath(speaker);
    if (on) {
        p.setPen(strokePen(kAccent));
        p.drawArc(QRectF(8, 6.5, 6, 7), -60 * 16, 120 * 16);
        p.drawArc(QRectF(7, 3.5, 11, 13), -60 * 16, 120 * 16);
    } else {
        p.setPen(strokePen(kWarn));
        p.drawLine(QPointF(12.5, 7.5), QPointF(17.5, 12.5));
        p.drawLine(QPointF(17.5, 7.5), QPointF(12.5, 12.5));
    }
}

void MenuIconPainter::drawCorners(QPainter& p, bool outward)
{
    // Four corner brackets pointing out (show full) or in (leave full).
    const qreal a = outward ? 2.5 : 7.5;
    const qreal b = outward ? 7.5 : 2.5;
    const qreal lo = 2.5, hi = 17.5;
    const auto corner = [&](qreal cx, qreal cy, qreal sx, qreal sy) {
        QPainterPath path;
        path.moveTo(cx + sx * (b - lo), cy + sy * (a - lo));
        path.lineTo(cx + sx * (a - lo), cy + sy * (a - lo));
        path.lineTo(cx + sx * (a - lo), cy + sy * (b - lo));
        p.drawPath(path);
    };
    corner(lo, lo, 1, 1);
    corner(hi, lo, -1, 1);
    corner(lo, hi, 1, -1);
    corner(hi, hi, -1, -1);
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(90, 160, 255, outward ? 110 : 170));
    p.drawRect(outward ? QRectF(7, 7, 6, 6) : QRectF(8, 8, 4, 4));
}

void MenuIconPainter::drawReplay(QPainter& p, bool exit)
{
    // A circling arrow round a play mark: a recording played back.
    p.drawArc(QRectF(2.5, 2.5, 15, 15), 100 * 16, 290 * 16);
    p.setBrush(kStroke);
    p.setPen(Qt::NoPen);
    p.drawPolygon(QPolygonF({ QPointF(6.5, 0.8), QPointF(10.5, 2.8), QPointF(6.5, 5.2) }));
    if (!exit) {
        p.setBrush(kAccent);
        p.drawPolygon(QPolygonF({ QPointF(8, 6.5), QPointF(13.5, 10), QPointF(8, 13.5) }));
        return;
    }
    p.setPen(strokePen(kWarn, 1.8));
    p.drawLine(QPointF(7.5, 7.5), QPointF(12.5, 12.5));
    p.drawLine(QPointF(12.5, 7.5), QPointF(7.5, 12.5));
}
