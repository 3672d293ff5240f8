// Any bytes offered as a cover (a file, the clipboard, an import, a download)
// go through the one decoder and, when it takes them, become a stored cover.
// A JPEG the direct re-encoder takes must come out byte for byte as Qt's
// writer makes it of the decoded picture.
#include "entry/bookform.h"
#include "model/coverimage.h"
#include "model/jpegreencoder.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QImageWriter>

#include <cstdio>
#include <cstdlib>

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    // Never destroyed: at exit, Qt's own globals (the SQL connection list) go first.
    new QCoreApplication(*argc, *argv);
    // A warning per damaged input would cost more than the input itself; a
    // fatal message still aborts once the handler returns.
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const auto bytes = QByteArray::fromRawData(reinterpret_cast<const char *>(data), qsizetype(size));
    const auto decoded = tomewise::CoverImage::decode(bytes);
    if (decoded)
        tomewise::BookForm::coverData(decoded.image);
    // The start-up's quality and the export's.
    const int quality = size % 2 ? 90 : 5;
    if (const auto direct = tomewise::JpegReencoder::reencode(bytes, quality)) {
        QByteArray expected;
        QBuffer buffer(&expected);
        buffer.open(QIODevice::WriteOnly);
        QImageWriter writer(&buffer, "jpeg");
        writer.setQuality(quality);
        if (!decoded || !writer.write(decoded.image) || expected != *direct) {
            std::fprintf(stderr, "the direct re-encode differs from Qt's decoder and writer\n");
            std::abort();
        }
    }
    return 0;
}
