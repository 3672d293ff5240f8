// Any bytes offered as a cover (a file, the clipboard, an import, a download)
// go through the one decoder and, when it takes them, become a stored cover.
#include "entry/bookform.h"
#include "model/coverimage.h"

#include <QCoreApplication>

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    // Never destroyed: at exit, Qt's own globals (the SQL connection list) go first.
    new QCoreApplication(*argc, *argv);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const auto bytes = QByteArray::fromRawData(reinterpret_cast<const char *>(data), qsizetype(size));
    if (const auto decoded = tomewise::CoverImage::decode(bytes))
        tomewise::BookForm::coverData(decoded.image);
    return 0;
}
