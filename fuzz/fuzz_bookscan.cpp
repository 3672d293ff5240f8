// A books service answer: the strict decoder, then the form's fill step.
#include "entry/bookfill.h"
#include "entry/bookscan.h"

#include <QCoreApplication>

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
    const auto json = QByteArray::fromRawData(reinterpret_cast<const char *>(data), qsizetype(size));
    const tomewise::BookScan::Decoded decoded = tomewise::BookScan::decode(json);
    if (decoded.scan)
        tomewise::BookFill::from(decoded.scan->items, QStringLiteral("Nov 21, 2026"));
    return 0;
}
