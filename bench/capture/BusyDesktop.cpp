#include "BusyDesktop.h"

#include <QLinearGradient>
#include <QPainter>

BusyDesktop::BusyDesktop()
    : QWidget(nullptr, Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint)
{
    setAttribute(Qt::WA_OpaquePaintEvent);
}

void BusyDesktop::paintEvent(QPaintEvent*)
{
    QPainter p(this);
    QLinearGradient background(0, 0, width(), height());
    background.setColorAt(0, QColor(24, 64, 120));
    background.setColorAt(1, QColor(120, 40, 90));
    p.fillRect(rect(), background);

    QFont font = p.font();
    font.setPixelSize(13);
    p.setFont(font);
    const QColor frames[] = { QColor(240, 240, 240), QColor(250, 250, 235), QColor(235, 245, 250) };
    for (int i = 0; i < 6; ++i) {
        const QRect window(60 + (i % 3) * 610, 60 + (i / 3) * 500, 580, 460);
        p.fillRect(window, frames[i % 3]);
        p.fillRect(window.x(), window.y(), window.width(), 28, QColor(50, 90, 160 + i * 10));
        p.setPen(Qt::white);
        p.drawText(window.adjusted(10, 6, 0, 0), QStringLiteral("Window %1 - report.txt").arg(i + 1));
        p.setPen(QColor(30, 30, 30));
        for (int line = 0; line < 26; ++line) {
            p.drawText(window.x() + 12, window.y() + 50 + line * 16,
                QStringLiteral("%1  The quick brown fox jumps over the lazy dog, 0123456789 (%2)")
                    .arg(line + 1, 3)
                    .arg((line * 37 + i * 11) % 1000));
        }
        p.setBrush(QColor::fromHsv((i * 60) % 360, 200, 230));
        p.setPen(Qt::NoPen);
        p.drawEllipse(window.right() - 90, window.bottom() - 90, 70, 70);
    }
    p.fillRect(0, height() - 40, width(), 40, QColor(20, 20, 30));
}
