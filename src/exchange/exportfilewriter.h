#pragma once

#include "model/books.h"

#include <QByteArray>
#include <QList>
#include <QString>

#include <optional>

class QIODevice;

namespace tomewise {

class BookStore;
class DateText;

// Writes the export file to a device and builds its display text, a batch of
// books at a time: only the keys of the whole library and one batch of books
// with their covers are held, so that a screen can show progress between
// batches and a large library costs no more memory than a small one.
class ExportFileWriter
{
public:
    static constexpr auto kMarker = "[TOMEWISE]";
    static constexpr auto kFileName = "Tomewise.csv";
    static constexpr auto kDatePattern = "yyyy-MM-dd HH:mm:ss Z";
    static constexpr double kCoverQuality = 0.9;
    static constexpr int kBatch = 256;

    enum class Step { More, Done, Failed };

    // `out` must be open for writing and outlive the writer's steps.
    ExportFileWriter(BookStore &store, const DateText &dates, QIODevice *out);

    // Fetches the keys of every book in file order, writes the marker and
    // starts the display text; false with the error's description on failure.
    bool begin(QString *error);
    // Writes up to `count` more books; their covers are re-encoded across the
    // cores. Failed when the store or the device fails.
    Step step(int count, QString *error);
    // begin() and every step() at once.
    bool run(QString *error);

    double progress() const;
    int bookCount() const { return int(m_keys.size()); }
    const QString &displayText() const { return m_display; }

    // Fields 1 to 18 of one book, as written to the file and shown.
    static QStringList textFields(const Books &book, const DateText &dates);
    // The dateRead field: UTC, "yyyy-MM-dd HH:mm:ss Z".
    static QString dateField(const QDateTime &instant, const DateText &dates);
    // Field 19: the cover re-encoded as JPEG at 0.9, in Base64; empty when it does not decode.
    static QByteArray coverField(const QByteArray &bytes);

private:
    bool write(const QByteArray &bytes, QString *error);

    BookStore &m_store;
    const DateText &m_dates;
    QIODevice *m_out;
    QList<qint64> m_keys;
    qsizetype m_next = 0;
    QString m_display;
};

} // namespace tomewise
