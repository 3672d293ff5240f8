#pragma once

#include "model/books.h"

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

namespace tomewise {

class BookStore;
class DateText;

// Reads an export file back into the store a batch of lines at a time: each
// record inserts a book, overwrites the one book with its author and title,
// or is skipped when several share them. The author-and-title match is made
// against an index of the store built once and kept up to date with every
// write, so a line costs no query; each record is its own savepoint inside
// one transaction per batch.
class ImportFileReader
{
public:
    static constexpr auto kMarker = "[TOMEWISE]";
    static constexpr auto kDatePattern = "yyyy-MM-dd HH:mm:ss Z";
    static constexpr int kBatch = 500;

    // The wrongFile flag: not yet known, false, true.
    enum WrongFile { NotKnown = 2, No = 0, Yes = 1 };

    ImportFileReader(BookStore &store, const DateText &dates);

    // The field keys in file order.
    static const QStringList &keys();

    // Normalises the text, walks to the marker and keeps the record lines.
    void begin(const QString &document);
    // Imports up to `count` more lines; true when none is left.
    bool step(int count);
    // begin() and every step() at once.
    void run(const QString &document);

    int wrongFile() const { return m_wrongFile; }
    double progress() const;
    int lineCount() const { return int(m_lines.size()); }
    int inserted() const { return m_inserted; }
    int updated() const { return m_updated; }
    int skipped() const { return m_skipped; }

    // Sets the attributes of one record from its fields, by position.
    static void fill(Books &book, const QStringList &fields, const DateText &dates);
    static std::optional<QDateTime> parseDate(const QString &text, const DateText &dates);
    static std::optional<QByteArray> decodeBase64(const QString &text);

private:
    using Key = std::pair<QString, QString>;
    bool buildIndex();
    void importLine(const QString &line);
    void index(const Books &book);
    void unindex(const Books &book);

    BookStore &m_store;
    const DateText &m_dates;
    int m_wrongFile = NotKnown;
    QStringList m_lines;
    qsizetype m_next = 0;
    QHash<Key, QList<qint64>> m_byAuthorAndName;
    QHash<qint64, Books> m_books;
    int m_inserted = 0;
    int m_updated = 0;
    int m_skipped = 0;
};

} // namespace tomewise
