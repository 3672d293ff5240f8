#pragma once

#include "model/books.h"

#include <QByteArray>
#include <QList>
#include <QString>

#include <optional>

namespace tomewise {

class BookStore;
class DateText;

// Writes the export file and its display text from the store, a batch of
// books at a time so that a screen can show progress between batches.
class ExportFileWriter
{
public:
    static constexpr auto kMarker = "[TOMEWISE]";
    static constexpr auto kFileName = "Tomewise.csv";
    static constexpr auto kDatePattern = "yyyy-MM-dd HH:mm:ss Z";
    static constexpr double kCoverQuality = 0.9;
    static constexpr int kBatch = 256;

    enum class Step { More, Done, Failed };

    ExportFileWriter(BookStore &store, const DateText &dates);

    // Fetches every book in file order (covers come later, per batch) and
    // starts both texts; false with the error's description when the fetch fails.
    bool begin(QString *error);
    // Writes up to `count` more books; their covers are re-encoded across the cores.
    Step step(int count, QString *error);
    // begin() and every step() at once.
    bool run(QString *error);

    double progress() const;
    int bookCount() const { return int(m_books.size()); }
    // The file's bytes (UTF-8) and the display text.
    const QByteArray &data() const { return m_data; }
    const QString &displayText() const { return m_display; }

    // Fields 1 to 18 of one book, as written to the file and shown.
    static QStringList textFields(const Books &book, const DateText &dates);
    // The dateRead field: UTC, "yyyy-MM-dd HH:mm:ss Z".
    static QString dateField(const QDateTime &instant, const DateText &dates);
    // Field 19: the cover re-encoded as JPEG at 0.9, in Base64; empty when it does not decode.
    static QByteArray coverField(const QByteArray &bytes);

private:
    bool fetchCovers(qsizetype from, qsizetype to, QHash<qint64, QByteArray> &covers, QString *error);

    BookStore &m_store;
    const DateText &m_dates;
    QList<Books> m_books;
    qsizetype m_next = 0;
    QByteArray m_data;
    QString m_display;
};

} // namespace tomewise
