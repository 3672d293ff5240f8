#pragma once

#include "exchange/servicebookform.h"
#include "exchange/servicefile.h"
#include "model/books.h"

#include <QList>
#include <QMap>
#include <QSet>
#include <QString>

namespace tomewise {

class AppDelegate;

// Brings a Goodreads or StoryGraph export into the log: a preview that writes
// nothing, then one save per book. A row adds a book, or fills the one book
// with its title and author as our own import does; every row that is not
// imported, and every book imported without a date, is kept with its reason.
class ServiceImport
{
public:
    enum class Action { Add, Update, Skip };
    struct Plan
    {
        Action action = Action::Skip;
        QString reason; // why a row is skipped, or what an imported row lacks
    };
    struct Note
    {
        qint64 row = 0;
        QString title;
        QString reason;
        bool imported = false;
    };

    static constexpr int kPreviewRows = 5;

    ServiceImport(AppDelegate &app, ServiceFile::Kind kind, QList<ServiceRow> rows, bool includeUnread);
    ~ServiceImport();
    ServiceImport(const ServiceImport &) = delete;
    ServiceImport &operator=(const ServiceImport &) = delete;

    // Reads the file and maps its rows with the log's genres.
    static std::unique_ptr<ServiceImport> open(AppDelegate &app, const QString &path, bool includeUnread,
                                               QString *error);

    ServiceFile::Kind kind() const { return m_kind; }
    qsizetype rowCount() const { return m_rows.size(); }

    // What each row would do now, against the log as it stands; writes nothing.
    void preview();
    int toAdd() const { return m_toAdd; }
    int toUpdate() const { return m_toUpdate; }
    // Skipped rows counted by reason.
    const QMap<QString, int> &skipReasons() const { return m_skipReasons; }
    int toSkip() const;
    // The first rows that will be imported, as they will be saved.
    const QList<Books> &firstBooks() const { return m_firstBooks; }
    QString previewText() const;

    // Imports up to `count` more rows; true when none is left.
    bool step(int count);
    double progress() const { return m_rows.isEmpty() ? 1.0 : double(m_next) / double(m_rows.size()); }
    int added() const { return m_added; }
    int updated() const { return m_updated; }
    int failed() const { return m_failed; }
    // Rows not imported and books imported without a date, in file order:
    // those the preview foresees until the import begins.
    const QList<Note> &notes() const { return m_notes; }
    QString summaryText() const;
    // The notes as the text file the user saves.
    QString notesText() const;

private:
    // What a row does against the store now; `book` is the record to save.
    Plan plan(qsizetype index, Books &book, QString *error);
    void note(const ServiceRow &row, const QString &reason, bool imported);
    void addSeries(const Text &series);

    AppDelegate &m_app;
    ServiceBookForm m_form;
    ServiceFile::Kind m_kind;
    QList<ServiceRow> m_rows;
    bool m_includeUnread;
    QSet<QString> m_series;

    int m_toAdd = 0;
    int m_toUpdate = 0;
    QMap<QString, int> m_skipReasons;
    QList<Books> m_firstBooks;
    // Each row as the form makes it, kept from the preview for the import.
    QList<std::optional<Books>> m_made;

    qsizetype m_next = 0;
    int m_added = 0;
    int m_updated = 0;
    int m_failed = 0;
    QList<Note> m_notes;
};

} // namespace tomewise
