#include "ScenePicture.h"

#include <QBuffer>
#include <QImage>
#include <QLinearGradient>
#include <QPainter>
#include <QRandomGenerator>

QByteArray ScenePicture::jpeg(QSize size, int quality)
{
    QImage image(size, QImage::Format_RGB32);
    QRandomGenerator random(2024);
    {
        QPainter p(&image);
        QLinearGradient sky(0, 0, 0, size.height());
        sky.setColorAt(0, QColor(90, 140, 200));
        sky.setColorAt(0.55, QColor(200, 210, 220));
        sky.setColorAt(1, QColor(70, 70, 75));
        p.fillRect(image.rect(), sky);
        for (int i = 0; i < 40; ++i) { // buildings with rows of windows
            const int w = 60 + int(random.bounded(160)), h = 150 + int(random.bounded(500));
            const QRect b(int(random.bounded(size.width())), size.height() * 2 / 3 - h, w, h);
            p.fillRect(b,
                QColor::fromHsv(int(random.bounded(360)), 30 + int(random.bounded(60)), 90 + int(random.bounded(120))));
            for (int y = b.top() + 10; y < b.bottom() - 10; y += 22)
                for (int x = b.left() + 8; x < b.right() - 10; x += 18)
                    p.fillRect(x, y, 9, 12, random.bounded(3) ? QColor(40, 50, 60) : QColor(240, 220, 150));
        }
        p.setRenderHint(QPainter::Antialiasing);
        for (int i = 0; i < 120; ++i) { // people and cars on the street
            p.setBrush(QColor::fromHsv(int(random.bounded(360)), 150, 60 + int(random.bounded(180))));
            p.setPen(Qt::NoPen);
            const int x = int(random.bounded(size.width())), y = size.height() * 2 / 3 + int(random.bounded(300));
            p.drawEllipse(QRect(x, y, 14 + int(random.bounded(60)), 30 + int(random.bounded(40))));
        }
    }
    for (int y = 0; y < size.height(); ++y) { // sensor noise
        auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < size.width(); ++x) {
            const int n = int(random.bounded(7)) - 3;
            const QRgb c = line[x];
            line[x] = qRgb(qBound(0, qRed(c) + n, 255), qBound(0, qGreen(c) + n, 255), qBound(0, qBlue(c) + n, 255));
        }
    }
    QByteArray out;
    QBuffer buffer(&out);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "JPG", quality);
    return out;
}
