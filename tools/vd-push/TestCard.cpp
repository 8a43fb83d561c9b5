#include "TestCard.h"

#include <QBuffer>
#include <QImage>
#include <QPainter>

QByteArray TestCard::jpeg(const QString& caption, int width, int height)
{
    QImage image(width, height, QImage::Format_RGB32);
    {
        QPainter p(&image);
        static const QColor bars[] = { QColor(192, 192, 192), QColor(192, 192, 0), QColor(0, 192, 192),
            QColor(0, 192, 0), QColor(192, 0, 192), QColor(192, 0, 0), QColor(0, 0, 192) };
        const int n = int(std::size(bars));
        for (int i = 0; i < n; ++i)
            p.fillRect(QRect(i * width / n, 0, (i + 1) * width / n - i * width / n, height * 2 / 3), bars[i]);
        for (int i = 0; i < 16; ++i)
            p.fillRect(
                QRect(i * width / 16, height * 2 / 3, width / 16 + 1, height / 3), QColor::fromHsv(0, 0, i * 17));
        QFont font(QStringLiteral("DejaVu Sans"));
        font.setPixelSize(height / 10);
        font.setBold(true);
        p.setFont(font);
        const QRect band(0, height / 3 - height / 12, width, height / 6);
        p.fillRect(band, QColor(0, 0, 0, 170));
        p.setPen(Qt::white);
        p.drawText(band, Qt::AlignCenter, caption);
    }
    QByteArray out;
    QBuffer buffer(&out);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "JPG", 90);
    return out;
}
