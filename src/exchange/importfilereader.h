#pragma once

#include "model/books.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <functional>

class QIODevice;

namespace tomewise {

class BookStore;
class DateText;

// Reads an export file back into the store line by line, never holding more
// than a chunk and a line: each record inserts a book, overwrites the one book with its
// author and title, or is skipped when several share them. Every record asks
// the store for its match and is saved on its own, so a reader stopped at any
// point has kept every record before it.
class ImportFileReader
{
public:
    static constexpr auto kMarker = "[TOMEWISE]";
    static constexpr auto kDatePattern = "yyyy-MM-dd HH:mm:ss Z";
    static constexpr int kBatch = 500;
    // A long run of small commits copies each index page back once per
    // checkpoint: imports checkpoint less often while they last.
    static constexpr int kImportCheckpointPages = 16384;
    // How many unsaved records are kept by name; the rest are only counted.
    static constexpr int kNotSavedListed = 100;
    // A longer line is passed over as a record not saved.
    static constexpr qsizetype kMaxLineBytes = qsizetype(64) << 20;

    // The wrongFile flag: not yet known, false, true.
    enum WrongFile { NotKnown = 2, No = 0, Yes = 1 };

    // A record that did not reach the store: its line in the file, its
    // author and title as the file gives them, and why.
    struct NotSaved
    {
        qint64 line = 0;
        QString author;
        QString name;
        QString reason;
    };

    ImportFileReader(BookStore &store, const DateText &dates);
    ~ImportFileReader();
    ImportFileReader(const ImportFileReader &) = delete;
    ImportFileReader &operator=(const ImportFileReader &) = delete;

    // The field keys in file order.
    static const QStringList &keys();

    // Walks `device` to the marker, then rewinds it for the records; it must
    // be open, seekable and outlive the reader's steps.
    void begin(QIODevice *device);
    // Imports up to `count` more lines; true when none is left.
    bool step(int count);
    // begin() and every step() at once.
    void run(QIODevice *device);
    // The same over a text already in memory (a test's, a fuzzer's).
    void run(const QString &document);
    // Called after each saved record with the number saved so far; returning
    // false stops the reader there, as a process ending would.
    void setSavedHook(std::function<bool(int)> hook) { m_savedHook = std::move(hook); }
    // Smaller reads and a shorter longest line, so that a test or the fuzzer
    // reaches the edges of both with small files; set before begin().
    void setLimits(qint64 chunk, qsizetype maxLineBytes)
    {
        m_chunk = std::max<qint64>(chunk, 1);
        m_maxLineBytes = std::max<qsizetype>(maxLineBytes, 0);
    }

    int wrongFile() const { return m_wrongFile; }
    double progress() const;
    int inserted() const { return m_inserted; }
    int updated() const { return m_updated; }
    int skipped() const { return m_skipped; }
    // Lines that would have made a book without a title or an author.
    int nameless() const { return m_nameless; }
    // Records the store refused.
    int failed() const { return m_failed; }
    const QList<NotSaved> &notSaved() const { return m_notSaved; }

    // Sets the attributes of one record from its fields, by position.
    // The fields are the line's UTF-8 bytes between carets.
    static void fill(Books &book, const QList<QByteArray> &fields, const DateText &dates);
    static std::optional<QDateTime> parseDate(const QString &text, const DateText &dates);
    static std::optional<QByteArray> decodeBase64(const QByteArray &text);

private:
    static constexpr qint64 kChunk = 1 << 20;
    qint64 m_chunk = kChunk;
    qsizetype m_maxLineBytes = kMaxLineBytes;

    // The next line, normalised; false at the end of the file.
    bool nextLine(QByteArray &line);
    void importLine(const QByteArray &line);
    void notSaved(const QString &author, const QString &name, const QString &reason);

    BookStore &m_store;
    const DateText &m_dates;
    QIODevice *m_device = nullptr;
    std::function<bool(int)> m_savedHook;
    int m_wrongFile = NotKnown;
    QByteArray m_buffer; // read ahead in chunks; lines are cut from it
    qsizetype m_bufferPos = 0;
    QList<QByteArray> m_pieces; // what is left of the current line, split at carriage returns
    qint64 m_lineNumber = 0;
    int m_overlong = 0; // the line just cut was too long and was dropped
    bool m_done = true;
    int m_inserted = 0;
    int m_updated = 0;
    int m_skipped = 0;
    int m_nameless = 0;
    int m_failed = 0;
    QList<NotSaved> m_notSaved;
};

} // namespace tomewise
