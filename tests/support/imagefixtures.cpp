#include "imagefixtures.h"

#include <QBuffer>
#include <QImageWriter>
#include <QPainter>

namespace tomewise::test {

QImage coverImage(QSize size, int seed)
{
    QImage image(size, QImage::Format_RGB32);
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x) {
            const int r = (x * 255 / qMax(1, size.width() - 1) + seed * 37) % 256;
            const int g = (y * 255 / qMax(1, size.height() - 1) + seed * 71) % 256;
            const int b = ((x / 7 + y / 5) % 2) ? 200 : 40;
            image.setPixel(x, y, qRgb(r, g, b));
        }
    }
    return image;
}

QByteArray encode(const QImage &image, const char *format, int quality)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QImageWriter writer(&buffer, format);
    if (quality >= 0)
        writer.setQuality(quality);
    writer.write(image);
    return bytes;
}

} // namespace tomewise::test
