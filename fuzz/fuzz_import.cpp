// An export file read back into a fresh store held in memory.
#include "app/datetext.h"
#include "exchange/importfilereader.h"
#include "model/bookstore.h"

#include <QCoreApplication>

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    // Never destroyed: at exit, Qt's own globals (the SQL connection list) go first.
    new QCoreApplication(*argc, *argv);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static const tomewise::DateText dates(QStringLiteral("en_US"), QByteArrayLiteral("America/New_York"));
    tomewise::BookStore store;
    if (!store.open(QStringLiteral(":memory:")))
        return 0;
    tomewise::ImportFileReader reader(store, dates);
    reader.run(QString::fromUtf8(reinterpret_cast<const char *>(data), qsizetype(size)));
    return 0;
}
