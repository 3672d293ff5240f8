// Reading a barcode from a picture, as the camera screen reads a frame.
#include "cli.h"

#include "entry/barcodedecoder.h"

#include <QImageReader>

namespace tomewise::cli {

// The code the camera screen would take from the picture; a message on stderr when none.
std::optional<QString> scanPicture(Context &ctx, const QString &path)
{
    QImageReader reader(path);
    reader.setAutoTransform(true);
    const QImage image = reader.read();
    if (image.isNull()) {
        ctx.err << "Not a picture: " << path << " (" << reader.errorString() << ")" << Qt::endl;
        return std::nullopt;
    }
    const auto read = BarcodeDecoder(BarcodeDecoder::captureSessionTypes()).read(image);
    if (!read) {
        ctx.err << "No barcode found in " << path << " (EAN-8, EAN-13, PDF417 or QR code)" << Qt::endl;
        return std::nullopt;
    }
    return read->text;
}

namespace {

int scan(Context &ctx)
{
    if (ctx.args.size() != 1)
        return usageError(ctx, QStringLiteral("scan IMAGE"));
    const auto text = scanPicture(ctx, ctx.args.first());
    if (!text)
        return 1;
    ctx.out << printable(*text) << Qt::endl;
    return 0;
}

const Registration r1({QStringLiteral("scan"), QStringLiteral("scan IMAGE"),
                       QStringLiteral("Print the barcode read from a picture (EAN-8, EAN-13, PDF417, QR code)."), false,
                       scan});

} // namespace
} // namespace tomewise::cli
