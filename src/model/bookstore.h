#pragma once

#include "books.h"
#include "fetchrequest.h"

#include <QHash>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QString>

#include <memory>
#include <optional>

struct sqlite3;
struct sqlite3_stmt;

namespace tomewise {

// A name in one of the three reference lists (GenreList.genre, RatingList.rating,
// SeriesList.series).
struct ReferenceEntry
{
    qint64 pk = 0;
    Text value;
    bool operator==(const ReferenceEntry &) const = default;
};

// The outcome of a fetch or a save; `error` is the description that goes to
// the diagnostic log when it fails.
struct StoreResult
{
    bool ok = true;
    QString error;
    explicit operator bool() const { return ok; }
};

// The persistent store: one SQLite file holding every entity. All access is
// from the thread that opened it. Each write is saved at once in its own
// transaction unless an enclosing Transaction groups several.
class BookStore
{
public:
    static constexpr int kSchemaVersion = 1;
    // How long a write waits for another connection's lock before it fails.
    static constexpr int kBusyTimeoutMs = 5000;
    // SQLite's own default: the WAL is copied back after this many pages.
    static constexpr int kAutoCheckpointPages = 1000;

    BookStore();
    ~BookStore();
    BookStore(const BookStore &) = delete;
    BookStore &operator=(const BookStore &) = delete;

    // Opens (creating when missing) the store file. On failure the result
    // carries the description and `userInfo` the details for the fatal message.
    StoreResult open(const QString &path, QString *userInfo = nullptr, int busyTimeoutMs = kBusyTimeoutMs);
    bool isOpen() const;
    QString path() const { return m_path; }

    // Books
    std::optional<QList<Books>> fetchBooks(const FetchRequest &request, QString *error = nullptr);
    std::optional<int> count(const FetchRequest &request, QString *error = nullptr);
    // The keys of the matching books in the request's order, so that a long
    // walk over them can load the books a slice at a time.
    std::optional<QList<qint64>> fetchKeys(const FetchRequest &request, QString *error = nullptr);
    // The books with these keys, covers included, in the keys' order.
    std::optional<QList<Books>> fetchBooks(const QList<qint64> &keys, QString *error = nullptr);
    StoreResult insertBook(Books &book); // sets book.pk
    StoreResult updateBook(const Books &book); // every attribute but the cover
    StoreResult setCover(qint64 pk, const Data &pictureImage);
    std::optional<QByteArray> cover(qint64 pk);
    // Changes whenever a cover is set, removed or deleted with its book, so that
    // an image address carrying it never names an outdated picture.
    quint64 coverRevision() const { return m_coverRevision; }
    StoreResult deleteBook(qint64 pk);

    // Reference lists (GenreList, RatingList, SeriesList)
    std::optional<QList<ReferenceEntry>> fetchEntries(const FetchRequest &request, QString *error = nullptr);
    StoreResult insertEntry(Entity entity, ReferenceEntry &entry);
    StoreResult updateEntry(Entity entity, const ReferenceEntry &entry);
    StoreResult deleteEntry(Entity entity, qint64 pk);
    static QString referenceAttribute(Entity entity);

    // Nothing is ever left unsaved; this makes the WAL durable in the main file.
    StoreResult saveContext();
    // How many WAL pages trigger a checkpoint; a long import raises it for a while.
    StoreResult setAutoCheckpoint(int pages);

    QSqlDatabase &database() { return m_db; }

    // Writes that failed since the store was opened: a caller that must not
    // report success compares it before and after.
    int failedWrites() const { return m_failedWrites; }

    // A statement of a caller's own bookkeeping tables, prepared once and
    // counted like any write; `changed` gets the rows it changed. It runs on
    // SQLite itself: a start-up runs one per cover, and QSqlQuery's binding
    // costs more than the statement.
    StoreResult execute(const QString &sql, const QVariantList &binds, int *changed = nullptr);
    // Covers written by a statement of the caller's own.
    void coversWritten() { ++m_coverRevision; }
    // Copies the log back on a connection of its own, off this thread: after
    // a start-up rewrote many covers, the menu need not wait for the copy.
    // Asked while a copy runs, it copies once more after it.
    void checkpointInBackground();
    void waitForCheckpoint();
    // SQLite itself, for reads of many rows that QSqlQuery would slow down;
    // null when the driver is not SQLite's.
    sqlite3 *nativeHandle() const;

    // Groups writes into one transaction (nested ones become savepoints).
    class Transaction
    {
    public:
        explicit Transaction(BookStore &store);
        ~Transaction();
        StoreResult commit();
        Transaction(const Transaction &) = delete;
        Transaction &operator=(const Transaction &) = delete;

    private:
        BookStore &m_store;
        QString m_name;
        bool m_active = false;
    };

private:
    StoreResult exec(const QString &sql);
    // Prepares (once), binds and runs a statement; null, with the error, when it fails.
    QSqlQuery *run(const QString &sql, const QVariantList &binds, QString *error);
    StoreResult write(const QString &sql, const QVariantList &binds, qint64 *insertId = nullptr);
    QSqlQuery &prepared(const QString &sql, bool *ok, QString *error);
    StoreResult createSchema();
    QString selectSql(const FetchRequest &request, const QString &columns, QVariantList &binds,
                      QString *error) const;
    static QString lastError(const QSqlQuery &q);
    static QVariantList bookValues(const Books &book);
    std::optional<QList<Books>> readBooks(QSqlQuery &q, bool covers);

    QString m_connection;
    QString m_path;
    QSqlDatabase m_db;
    QHash<QString, QSqlQuery> m_statements;
    QHash<QString, sqlite3_stmt *> m_native;
    struct Checkpoints;
    std::shared_ptr<Checkpoints> m_checkpoints;
    void finalizeNative();
    int m_transactionDepth = 0;
    int m_failedWrites = 0;
    quint64 m_coverRevision = 0;
};

} // namespace tomewise
