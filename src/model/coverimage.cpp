#include "coverimage.h"

#include <QBuffer>
#include <QFile>
#include <QImageReader>

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

} // namespace

const char *CoverImage::formatOf(QByteArrayView head)
{
    if (head.startsWith(QByteArrayView(kJpegMagic, 3)))
        return "jpeg";
    if (head.startsWith(QByteArrayView(kPngMagic, 8)))
        return "png";
    return nullptr;
}

QString CoverImage::notAPicture()
{
    return QStringLiteral("This is not a JPEG or PNG picture.");
}

CoverImage::Decoded CoverImage::decode(const QByteArray &bytes)
{
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    return decode(buffer);
}

CoverImage::Decoded CoverImage::decode(QIODevice &device)
{
    const char *format = formatOf(device.peek(8));
    if (!format)
        return {QImage(), notAPicture()};
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
        const bool png = qstrcmp(format, "png") == 0;
        const qint64 wholeBytes = pixels * QImage::toPixelFormat(reader.imageFormat()).bitsPerPixel() / 8;
        if (declared.width() > kMaxSide || declared.height() > kMaxSide || pixels > kMaxPixels
            || (png && wholeBytes > qint64(kAllocationLimitMb) * 1024 * 1024)) {
            return {QImage(), QStringLiteral("This picture is too large to use (%1 x %2 pixels).")
                                  .arg(declared.width())
                                  .arg(declared.height())};
        }
        if (pixels > kWholePixels)
            reader.setScaledSize(declared.scaled(kScaledSide, kScaledSide, Qt::KeepAspectRatio));
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
