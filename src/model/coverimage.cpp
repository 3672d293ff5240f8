#include "coverimage.h"

#include <QBuffer>
#include <QFile>
#include <QImageReader>
#include <QtEndian>

#include <new>

namespace tomewise {

namespace {

constexpr char kJpegMagic[] = "\xFF\xD8\xFF";
constexpr char kPngMagic[] = "\x89PNG\r\n\x1A\n";

void setAllocationLimitOnce()
{
    // Process-wide in Qt; set once, before the first decode on any thread.
    static const bool done = [] {
        QImageReader::setAllocationLimit(CoverImage::kAllocationLimitMb);
        return true;
    }();
    Q_UNUSED(done);
}

// libpng allocates what a text or profile chunk declares before reading it,
// so a few hundred bytes can ask for gigabytes: every chunk up to IEND must
// fit in what the device holds. The device is left where it was.
bool pngChunksFit(QIODevice &device)
{
    const qint64 start = device.pos();
    const qint64 end = device.size();
    bool fits = true;
    for (qint64 pos = start + 8; pos + 8 <= end;) {
        char header[8];
        if (!device.seek(pos) || device.read(header, 8) != 8) {
            fits = false;
            break;
        }
        const qint64 length = qFromBigEndian<quint32>(header);
        if (pos + 12 + length > end) {
            fits = false;
            break;
        }
        if (QByteArrayView(header + 4, 4) == "IEND")
            break;
        pos += 12 + length;
    }
    return device.seek(start) && fits;
}

} // namespace

const char *CoverImage::formatOf(QByteArrayView head)
{
    if (head.startsWith(QByteArrayView(kJpegMagic, 3)))
        return "jpeg";
    if (head.startsWith(QByteArrayView(kPngMagic, 8)))
        return "png";
    return nullptr;
}

std::optional<qint64> CoverImage::jpegCoefficientBytes(QByteArrayView head)
{
    const auto byte = [&](qsizetype i) { return quint8(head[i]); };
    const auto word = [&](qsizetype i) { return (byte(i) << 8) | byte(i + 1); };
    qsizetype pos = 2;
    while (pos + 4 <= head.size()) {
        if (byte(pos) != 0xFF)
            return std::nullopt;
        const quint8 marker = byte(pos + 1);
        if (marker == 0xFF) { // fill byte
            ++pos;
            continue;
        }
        if (marker == 0xDA) // scan data before any frame header
            return std::nullopt;
        const bool frame = marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
        if (frame) {
            const qsizetype at = pos + 4;
            if (at + 6 > head.size())
                return std::nullopt;
            const qint64 height = word(at + 1);
            const qint64 width = word(at + 3);
            const int count = byte(at + 5);
            if (at + 6 + 3 * count > head.size())
                return std::nullopt;
            int hMax = 1, vMax = 1;
            for (int c = 0; c < count; ++c) {
                hMax = qMax(hMax, byte(at + 7 + 3 * c) >> 4);
                vMax = qMax(vMax, byte(at + 7 + 3 * c) & 0x0F);
            }
            qint64 bytes = 0;
            for (int c = 0; c < count; ++c) {
                const int h = qMax(1, byte(at + 7 + 3 * c) >> 4);
                const int v = qMax(1, byte(at + 7 + 3 * c) & 0x0F);
                // Blocks of 8 x 8 coefficients of 2 bytes each, whole MCUs.
                const qint64 columns = (width + 8 * hMax - 1) / (8 * hMax) * h;
                const qint64 rows = (height + 8 * vMax - 1) / (8 * vMax) * v;
                bytes += columns * rows * 64 * 2;
            }
            return bytes;
        }
        if (marker == 0x01 || (marker >= 0xD0 && marker <= 0xD8)) {
            pos += 2;
            continue;
        }
        pos += 2 + word(pos + 2);
    }
    return std::nullopt;
}

QString CoverImage::notAPicture()
{
    return QStringLiteral("This is not a JPEG or PNG picture.");
}

CoverImage::Decoded CoverImage::decode(const QByteArray &bytes, int maxWidth)
{
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    return decode(buffer, maxWidth);
}

CoverImage::Decoded CoverImage::decode(QIODevice &device, int maxWidth)
{
    const char *format = formatOf(device.peek(8));
    if (!format)
        return {QImage(), notAPicture()};
    const bool png = qstrcmp(format, "png") == 0;
    qint64 coefficients = 0;
    if (png && !pngChunksFit(device))
        return {QImage(), QStringLiteral("This picture is damaged and cannot be read.")};
    if (!png) {
        // Camera JPEGs carry at most a few 64 kB segments before the frame header.
        const auto bytes = jpegCoefficientBytes(device.peek(1024 * 1024));
        if (!bytes)
            return {QImage(), notAPicture()};
        coefficients = *bytes;
    }
    setAllocationLimitOnce();
    try {
        QImageReader reader(&device, format);
        // Only the named decoder: no falling back to guessing from the content.
        reader.setAutoDetectImageFormat(false);
        reader.setDecideFormatFromContent(false);
        const QSize declared = reader.size();
        if (declared.isEmpty())
            return {QImage(), notAPicture()};
        const qint64 pixels = qint64(declared.width()) * declared.height();
        // A PNG may be decoded whole, at its own depth, before it is scaled.
        const qint64 wholeBytes = pixels * QImage::toPixelFormat(reader.imageFormat()).bitsPerPixel() / 8;
        if (declared.width() > kMaxSide || declared.height() > kMaxSide || pixels > kMaxPixels
            || (png && wholeBytes > qint64(kAllocationLimitMb) * 1024 * 1024)
            || coefficients > qint64(kJpegCoefficientLimitMb) * 1024 * 1024) {
            return {QImage(), QStringLiteral("This picture is too large to use (%1 x %2 pixels).")
                                  .arg(declared.width())
                                  .arg(declared.height())};
        }
        QSize target = declared;
        if (pixels > kWholePixels)
            target = declared.scaled(kScaledSide, kScaledSide, Qt::KeepAspectRatio);
        if (maxWidth > 0 && target.width() > maxWidth)
            target = QSize(maxWidth, qMax(1, int(qint64(target.height()) * maxWidth / target.width())));
        if (target != declared)
            reader.setScaledSize(target);
        QImage image = reader.read();
        if (image.isNull())
            return {QImage(), QStringLiteral("This picture is damaged and cannot be read.")};
        return {std::move(image), QString()};
    } catch (const std::bad_alloc &) {
        return {QImage(), QStringLiteral("There is not enough memory to read this picture.")};
    }
}

CoverImage::Decoded CoverImage::decodeFile(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {QImage(), file.errorString()};
    return decode(file);
}

} // namespace tomewise
