#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QImage>
#include <QString>

#include <optional>

class QIODevice;

namespace tomewise {

// The one way cover bytes become a picture: only JPEG and PNG, recognised by
// their first bytes and read by those two decoders alone, with the declared
// size checked before any pixel is decoded. Anything else is "not a picture"
// and is never handed to another image plugin (a PDF or SVG one would render
// whatever size the file asks for).
class CoverImage
{
public:
    // Declared sizes beyond these are refused outright.
    static constexpr int kMaxSide = 20000;
    static constexpr qint64 kMaxPixels = 200'000'000;
    // Pictures up to this many pixels are decoded whole, exactly as they always
    // were; larger ones (a phone's 6000 x 8000 photo) are read scaled down to
    // fit kScaledSide, still far more than a 125 x 180 cover needs.
    static constexpr qint64 kWholePixels = 32 * 1024 * 1024;
    static constexpr int kScaledSide = 2048;
    // What one decode may allocate, in MB: a whole PNG of kWholePixels and more.
    static constexpr int kAllocationLimitMb = 256;
    // A progressive (or multi-scan) JPEG keeps every DCT coefficient of the
    // whole picture while it decodes, whatever the scaled size: a few bytes
    // can ask for gigabytes. A 48-megapixel photo at full colour needs 288 MB.
    static constexpr int kJpegCoefficientLimitMb = 320;

    struct Decoded
    {
        QImage image;
        QString error; // a sentence for the user; empty when decoded
        explicit operator bool() const { return !image.isNull(); }
    };

    // "jpeg" or "png" when the bytes start as one, else null.
    static const char *formatOf(QByteArrayView head);

    // With `maxWidth`, a wider picture is read scaled down to it (a JPEG by
    // the decoder's own DCT scaling, far cheaper than a whole decode).
    static Decoded decode(const QByteArray &bytes, int maxWidth = 0);
    static Decoded decode(QIODevice &device, int maxWidth = 0);
    static Decoded decodeFile(const QString &path);

    static QString notAPicture();

    // The bytes a JPEG's whole-picture coefficient buffers take, from its frame
    // header; null when no frame header is found in `head`.
    static std::optional<qint64> jpegCoefficientBytes(QByteArrayView head);
};

} // namespace tomewise
