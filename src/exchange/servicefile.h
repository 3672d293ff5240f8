#pragma once

#include <QDate>
#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

class QIODevice;

namespace tomewise {

// One row of another service's export as the book form's field texts, with
// what the service says about the reading.
struct ServiceRow
{
    qint64 row = 0; // as a spreadsheet numbers it: the header is row 1
    bool read = false;
    QString shelf; // the service's own word for the row's state ("to-read")
    QString title;
    QString author;
    QString isbn;
    QString publisher;
    QString pages;
    QString yearPublished;
    QString format;
    QString rating;
    QString genre;
    QString notes;
    QString series;
    QString seriesNumber;
    std::optional<QDate> dateRead;
    QString dateText; // as the file gives it, to name a date that was not understood
};

// A library export of Goodreads or StoryGraph: CSV whose columns are found by
// their header names, so columns added, dropped or moved do not shift fields.
class ServiceFile
{
public:
    enum class Kind { OwnExport, Goodreads, StoryGraph };

    // What the first line says the file is; anything not another service's
    // header is left to our own reader.
    static Kind recognise(QIODevice *device);
    static Kind recognise(const QString &path);
    static QString kindName(Kind kind);

    // Reads the whole file; false with `error` when it is not a CSV of a kind
    // recognised.
    bool read(QIODevice *device, QString *error = nullptr);
    bool read(const QString &path, QString *error = nullptr);

    Kind kind() const { return m_kind; }
    qsizetype recordCount() const { return m_records.size(); }

    // Every record mapped to form texts; `genres` is the genre reference list
    // a bookshelf or tag must name to become the genre.
    QList<ServiceRow> rows(const QStringList &genres) const;

    // The mapping rules on their own, which the tests pin down.
    static QString unguard(const QString &text);
    static QString formatName(const QString &binding);
    static QString stars(const QString &rating, Kind kind);
    static std::optional<QDate> parseDate(const QString &text);
    // "Title (Series, #2)" gives the title, the series and its number.
    struct SeriesTitle
    {
        QString title;
        QString series;
        QString number;
    };
    static SeriesTitle splitSeries(const QString &title);

private:
    static Kind kindOf(const QStringList &header);
    QString field(const QStringList &record, const char *name) const;

    Kind m_kind = Kind::OwnExport;
    QHash<QString, qsizetype> m_columns;
    QList<QStringList> m_records;
};

} // namespace tomewise
