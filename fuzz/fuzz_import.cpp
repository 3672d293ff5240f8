// An export file read back into a fresh store held in memory, twice: once in a
// single read and once in reads of a few bytes with a short longest line, the
// first two bytes choosing both. The two must agree, whatever falls on the edge
// of a read.
#include "app/datetext.h"
#include "exchange/importfilereader.h"
#include "model/bookstore.h"

#include <QBuffer>
#include <QCoreApplication>

#include <cstdio>
#include <cstdlib>

namespace {

struct Outcome
{
    int wrongFile = 0;
    QList<int> counts;
    QList<qint64> notSavedLines;
    std::optional<QList<tomewise::Books>> books;
    bool operator==(const Outcome &) const = default;
};

Outcome import(const QByteArray &file, qint64 chunk, qsizetype maxLine)
{
    static const tomewise::DateText dates(QStringLiteral("en_US"), QByteArrayLiteral("America/New_York"));
    tomewise::BookStore store;
    if (!store.open(QStringLiteral(":memory:")))
        std::abort();
    tomewise::ImportFileReader reader(store, dates);
    reader.setLimits(chunk, maxLine);
    QByteArray bytes = file;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    reader.run(&buffer);
    Outcome o;
    o.wrongFile = reader.wrongFile();
    o.counts = {reader.inserted(), reader.updated(), reader.skipped(), reader.nameless(), reader.failed()};
    for (const auto &n : reader.notSaved())
        o.notSavedLines << n.line;
    o.books = store.fetchBooks(tomewise::FetchRequest{});
    return o;
}

} // namespace

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
    if (size < 2)
        return 0;
    const qint64 chunk = 1 + data[0] % 32;
    const qsizetype maxLine = data[1] < 64 ? 16 + data[1] * 16 : tomewise::ImportFileReader::kMaxLineBytes;
    const auto file = QByteArray::fromRawData(reinterpret_cast<const char *>(data + 2), qsizetype(size - 2));
    const Outcome whole = import(file, qint64(size) + 1, maxLine);
    const Outcome pieces = import(file, chunk, maxLine);
    if (!(whole == pieces)) {
        std::fprintf(stderr, "read in %lld-byte pieces, the import differs from one read\n", chunk);
        std::abort();
    }
    return 0;
}
