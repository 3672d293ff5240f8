#include "launchtasks.h"

#include "app/appdelegate.h"
#include "app/log.h"
#include "browse/booklistsource.h"
#include "model/coverimage.h"
#include "model/jpegreencoder.h"

#include <QBuffer>
#include <QCryptographicHash>
#include <QDataStream>
#include <QElapsedTimer>
#include <QHash>
#include <QImage>
#include <QImageWriter>
#include <QSqlError>
#include <QSqlQuery>
#include <QtConcurrent/QtConcurrentMap>
#include <QMutex>
#include <QThreadPool>
#include <QWaitCondition>

#include <sqlite3.h>

#include <functional>
#include <limits>

namespace tomewise::LaunchTasks {

const QStringList &starterGenres()
{
    // Insertion order, deliberately not alphabetical.
    static const QStringList genres{
        QStringLiteral("Action Adventure"), QStringLiteral("Autobiography"), QStringLiteral("Biography"),
        QStringLiteral("Children's Literature"), QStringLiteral("Crime"), QStringLiteral("Drama"),
        QStringLiteral("Fiction"), QStringLiteral("Historical Romance"), QStringLiteral("History"),
        QStringLiteral("Horror"), QStringLiteral("Humour"), QStringLiteral("Mystery"),
        QStringLiteral("Religious"), QStringLiteral("Science Fiction"), QStringLiteral("Romance"),
        QStringLiteral("Memoir"), QStringLiteral("Murder"), QStringLiteral("Non-fiction"),
        QStringLiteral("Novel"), QStringLiteral("Self Help"), QStringLiteral("Suspense"),
        QStringLiteral("Thriller"), QStringLiteral("Coming of Age"), QStringLiteral("Fairytale"),
        QStringLiteral("Fantasy"), QStringLiteral("Political"), QStringLiteral("Satire"),
        QStringLiteral("Health"), QStringLiteral("Poetry")};
    return genres;
}

const QStringList &starterRatings()
{
    static const QStringList ratings{QStringLiteral("*"), QStringLiteral("**"), QStringLiteral("***"),
                                     QStringLiteral("****"), QStringLiteral("*****")};
    return ratings;
}

void seedReferenceLists(AppDelegate &app)
{
    BookStore &store = app.persistentContainer();
    for (const auto &[entity, names] : {std::pair{Entity::GenreList, &starterGenres()},
                                        std::pair{Entity::RatingList, &starterRatings()}}) {
        for (const auto &name : *names) {
            ReferenceEntry entry{0, name};
            logIfFailed(store.insertEntry(entity, entry));
        }
    }
}

std::optional<QByteArray> reencodeJpeg(const QByteArray &bytes, double quality)
{
    if (auto direct = JpegReencoder::reencode(bytes, qRound(quality * 100)))
        return direct;
    const QImage image = CoverImage::decode(bytes).image;
    if (image.isNull())
        return std::nullopt;
    QByteArray out;
    QBuffer buffer(&out);
    buffer.open(QIODevice::WriteOnly);
    QImageWriter writer(&buffer, "jpeg");
    writer.setQuality(qRound(quality * 100));
    if (!writer.write(image))
        return std::nullopt;
    return out;
}

QByteArray codecFingerprint()
{
    static const QByteArray fingerprint = [] {
        QImage probe(48, 32, QImage::Format_RGB32);
        for (int y = 0; y < probe.height(); ++y) {
            for (int x = 0; x < probe.width(); ++x)
                probe.setPixel(x, y, qRgb(x * 5, y * 7, (x * y) % 256));
        }
        QByteArray png;
        QBuffer buffer(&png);
        buffer.open(QIODevice::WriteOnly);
        probe.save(&buffer, "png");
        // Through both ways a cover is re-encoded: a PNG by Qt, a JPEG by libjpeg directly.
        const QByteArray jpeg = reencodeJpeg(png, 0.05).value_or(QByteArray());
        QCryptographicHash hash(QCryptographicHash::Sha1);
        hash.addData(jpeg);
        hash.addData(reencodeJpeg(jpeg, 0.05).value_or(QByteArray()));
        return QByteArray(qVersion()) + '/' + hash.result().toHex();
    }();
    return fingerprint;
}

namespace {

// What later starts will make of each cover, for the codec named in
// CoverReencodeCodec: CoverReencodeChain holds the covers the starts after the
// one that decoded it write in turn (steps 1, 2, ...), CoverReencodeState how
// many of them are written. A start copies the next one in without decoding
// and marks the cover's row with its step, which moves the state on in the
// same statement; a cover written by anyone else (the app's forms, an import,
// the sqlite3 shell) leaves the mark as it was, and the book is forgotten, to
// be decoded again. So the app's own write costs one small row beside the
// cover, and nothing is compared.
const char *const kChainSchema[] = {
    "DROP TRIGGER IF EXISTS CoverReencodeAhead_insert",
    "DROP TRIGGER IF EXISTS CoverReencodeAhead_update",
    "DROP TRIGGER IF EXISTS CoverReencodeAhead_delete",
    "DROP TABLE IF EXISTS CoverReencodeAhead",
    "CREATE TABLE IF NOT EXISTS CoverReencodeCodec (codec TEXT NOT NULL)",
    "CREATE TABLE IF NOT EXISTS CoverReencodeState (book INTEGER PRIMARY KEY, step INTEGER NOT NULL, "
    "steps INTEGER NOT NULL, open INTEGER NOT NULL)",
    "CREATE TABLE IF NOT EXISTS CoverReencodeChain (book INTEGER NOT NULL, step INTEGER NOT NULL, "
    "cover BLOB NOT NULL, PRIMARY KEY (book, step))",
    "CREATE TRIGGER IF NOT EXISTS CoverReencodeState_step AFTER UPDATE ON BooksPictureImage "
    "WHEN NEW.reencodeMark IS NOT OLD.reencodeMark AND NEW.book = OLD.book BEGIN "
    "UPDATE CoverReencodeState SET step = NEW.reencodeMark WHERE book = NEW.book; END",
    "CREATE TRIGGER IF NOT EXISTS CoverReencodeState_update AFTER UPDATE ON BooksPictureImage "
    "WHEN NEW.reencodeMark IS OLD.reencodeMark OR NEW.book IS NOT OLD.book BEGIN "
    "DELETE FROM CoverReencodeState WHERE book IN (OLD.book, NEW.book); "
    "DELETE FROM CoverReencodeChain WHERE book IN (OLD.book, NEW.book); END",
    "CREATE TRIGGER IF NOT EXISTS CoverReencodeState_insert AFTER INSERT ON BooksPictureImage BEGIN "
    "DELETE FROM CoverReencodeState WHERE book = NEW.book; "
    "DELETE FROM CoverReencodeChain WHERE book = NEW.book; END",
    "CREATE TRIGGER IF NOT EXISTS CoverReencodeState_delete AFTER DELETE ON BooksPictureImage BEGIN "
    "DELETE FROM CoverReencodeState WHERE book = OLD.book; "
    "DELETE FROM CoverReencodeChain WHERE book = OLD.book; END",
};

bool prepareChains(BookStore &store, const QByteArray &codec)
{
    BookStore::Transaction transaction(store);
    // The mark lives beside the cover, so that no write of a cover can miss it.
    QSqlQuery columns(store.database());
    bool marked = false;
    if (columns.exec(QStringLiteral("PRAGMA table_info(BooksPictureImage)"))) {
        while (columns.next())
            marked = marked || columns.value(1).toString() == u"reencodeMark";
    }
    columns.finish();
    if (!marked && !store.execute(QStringLiteral("ALTER TABLE BooksPictureImage ADD COLUMN reencodeMark INTEGER"), {}))
        return false;
    for (const char *sql : kChainSchema) {
        if (auto r = store.execute(QLatin1String(sql), {}); !r) {
            qCWarning(lcStore).noquote() << r.error;
            return false;
        }
    }
    // Another codec may make other bytes: what was worked out with the last one goes.
    QSqlQuery q(store.database());
    if (!q.exec(QStringLiteral("SELECT codec FROM CoverReencodeCodec")))
        return false;
    const bool same = q.next() && q.value(0).toString() == QString::fromLatin1(codec);
    q.finish();
    if (!same) {
        for (const char *sql : {"DELETE FROM CoverReencodeChain", "DELETE FROM CoverReencodeState",
                                "DELETE FROM CoverReencodeCodec"}) {
            if (auto r = store.execute(QLatin1String(sql), {}); !r)
                return false;
        }
        if (!store.execute(QStringLiteral("INSERT INTO CoverReencodeCodec (codec) VALUES (?)"),
                           {QString::fromLatin1(codec)}))
            return false;
    }
    if (!transaction.commit())
        return false;
    // Made here, where the start writes anyway, rather than when a list first opens.
    QString error;
    if (!BookListSource::prepareIndexes(store, &error))
        qCWarning(lcStore).noquote() << error;
    return true;
}

// The books after `after` in store order, in one statement through SQLite
// itself (at 100,000 books QSqlQuery's values cost more than the query),
// handed over a chunk at a time. Whether a book is the only one with its
// title and author is asked of the title-and-author index, with "=" as the
// store compares. False when the read failed.
bool readRows(sqlite3 *db, bool chains, qint64 after, const std::function<void(std::vector<DateRepair::Row> &&)> &take)
{
    if (!db)
        return false;
    const char *sql = chains
        ? "SELECT b.pk, b.year, b.month, b.day, b.dateRead, b.name IS NOT NULL AND b.author IS NOT NULL, "
          "NOT EXISTS (SELECT 1 FROM Books x WHERE x.name = b.name AND x.author = b.author AND x.pk <> b.pk), "
          "s.step, s.steps, s.open, "
          "CASE WHEN s.book IS NULL THEN EXISTS (SELECT 1 FROM BooksPictureImage c WHERE c.book = b.pk) ELSE 1 END "
          "FROM Books b LEFT JOIN CoverReencodeState s ON s.book = b.pk WHERE b.pk > ? ORDER BY b.pk"
        : "SELECT b.pk, b.year, b.month, b.day, b.dateRead, b.name IS NOT NULL AND b.author IS NOT NULL, "
          "NOT EXISTS (SELECT 1 FROM Books x WHERE x.name = b.name AND x.author = b.author AND x.pk <> b.pk), "
          "NULL, 0, 0, 1 FROM Books b WHERE b.pk > ? ORDER BY b.pk";
    sqlite3_stmt *stmt = nullptr;
    if (sqlite3_prepare_v2(db, sql, -1, &stmt, nullptr) != SQLITE_OK)
        return false;
    sqlite3_bind_int64(stmt, 1, after);
    constexpr size_t kChunk = 2048;
    std::vector<DateRepair::Row> rows;
    int rc;
    while ((rc = sqlite3_step(stmt)) == SQLITE_ROW) {
        DateRepair::Row row;
        row.pk = sqlite3_column_int64(stmt, 0);
        row.year = sqlite3_column_int(stmt, 1);
        row.month = sqlite3_column_int(stmt, 2);
        row.day = sqlite3_column_int(stmt, 3);
        if (sqlite3_column_type(stmt, 4) != SQLITE_NULL)
            row.dateRead = sqlite3_column_int64(stmt, 4);
        row.named = sqlite3_column_int(stmt, 5);
        row.unique = row.named && sqlite3_column_int(stmt, 6);
        if (sqlite3_column_type(stmt, 7) != SQLITE_NULL) {
            row.step = sqlite3_column_int(stmt, 7);
            row.steps = sqlite3_column_int(stmt, 8);
            row.open = sqlite3_column_int(stmt, 9);
        }
        row.maybeCover = sqlite3_column_int(stmt, 10);
        rows.push_back(row);
        if (rows.size() == kChunk)
            take(std::exchange(rows, {}));
    }
    sqlite3_finalize(stmt);
    if (!rows.empty())
        take(std::move(rows));
    return rc == SQLITE_DONE;
}

// Whatever the book has that a user would recognise it by.
QString describe(const Books &book)
{
    QStringList parts;
    if (book.name)
        parts << QStringLiteral("\u201C%1\u201D").arg(*book.name);
    if (book.author)
        parts << QStringLiteral("by ") + *book.author;
    if (book.dt)
        parts << QStringLiteral("read ") + *book.dt;
    if (book.isbn)
        parts << QStringLiteral("ISBN ") + *book.isbn;
    if (parts.isEmpty())
        parts << QStringLiteral("record %1").arg(book.pk);
    return parts.join(QStringLiteral(", "));
}

void logNameless(BookStore &store, qint64 pk)
{
    Books book;
    book.pk = pk;
    if (auto found = store.fetchBooks(QList<qint64>{pk}); found && !found->isEmpty())
        book = found->first();
    qCWarning(lcApp).noquote() << QStringLiteral("A book without %1 is left as it is: %2")
                                      .arg(book.name ? QStringLiteral("an author") : QStringLiteral("a name"),
                                           describe(book));
}

} // namespace

// What the reader has read and not yet handed over.
struct DateRepair::Feed
{
    QMutex mutex;
    QWaitCondition more;
    std::vector<Row> rows;
    qsizetype total = 0;
    bool finished = false;
    bool failed = false;
};

DateRepair::DateRepair(AppDelegate &app)
    : m_app(app)
{
    BookStore &store = app.persistentContainer();
    // The log is copied back once, after the whole repair, and not by the window's thread.
    logIfFailed(store.setAutoCheckpoint(0));
    m_chainsKept = prepareChains(store, codecFingerprint());
    // Read on a connection of its own, so that the repair starts on the first
    // rows while the rest come, and a window goes on drawing meanwhile. Its
    // snapshot is the store as it was before the repair wrote anything.
    m_feed = std::make_shared<Feed>();
    QThreadPool::globalInstance()->start([feed = m_feed, file = store.path().toUtf8(), chains = m_chainsKept] {
        sqlite3 *db = nullptr;
        bool ok = sqlite3_open_v2(file.constData(), &db, SQLITE_OPEN_READONLY | SQLITE_OPEN_NOMUTEX, nullptr)
            == SQLITE_OK;
        sqlite3_stmt *count = nullptr;
        if (ok && sqlite3_prepare_v2(db, "SELECT COUNT(*) FROM Books", -1, &count, nullptr) == SQLITE_OK
            && sqlite3_step(count) == SQLITE_ROW) {
            QMutexLocker lock(&feed->mutex);
            feed->total = sqlite3_column_int64(count, 0);
        }
        sqlite3_finalize(count);
        ok = ok && readRows(db, chains, std::numeric_limits<qint64>::min(), [&](std::vector<Row> &&chunk) {
            QMutexLocker lock(&feed->mutex);
            feed->rows.insert(feed->rows.end(), chunk.begin(), chunk.end());
            feed->more.wakeAll();
        });
        sqlite3_close(db);
        QMutexLocker lock(&feed->mutex);
        feed->finished = true;
        feed->failed = !ok;
        feed->more.wakeAll();
    });
}

bool DateRepair::take(bool wait)
{
    QMutexLocker lock(&m_feed->mutex);
    while (wait && m_feed->rows.empty() && !m_feed->finished)
        m_feed->more.wait(&m_feed->mutex);
    m_total = m_feed->total;
    const bool any = !m_feed->rows.empty();
    m_books.insert(m_books.end(), m_feed->rows.begin(), m_feed->rows.end());
    m_feed->rows.clear();
    if (any || !m_feed->finished)
        return any;
    const bool failed = m_feed->failed;
    lock.unlock();
    m_allRead = true;
    if (!failed)
        return false;
    // The reader could not: the rest is read here, from the last book it handed over.
    BookStore &store = m_app.persistentContainer();
    const qint64 after = m_books.empty() ? std::numeric_limits<qint64>::min() : m_books.back().pk;
    const size_t before = m_books.size();
    if (!readRows(store.nativeHandle(), m_chainsKept, after, [&](std::vector<Row> &&chunk) {
            m_books.insert(m_books.end(), chunk.begin(), chunk.end());
        }))
        qCWarning(lcStore) << "The books could not be read for the start-up's repair";
    m_total = std::max<qsizetype>(m_total, qsizetype(m_books.size()));
    return m_books.size() > before;
}

DateRepair::~DateRepair()
{
    // The reader holds the store file open until it is done.
    QMutexLocker lock(&m_feed->mutex);
    while (!m_feed->finished)
        m_feed->more.wait(&m_feed->mutex);
    lock.unlock();
    finish();
}

void DateRepair::finish()
{
    if (m_finished)
        return;
    m_finished = true;
    BookStore &store = m_app.persistentContainer();
    logIfFailed(store.setAutoCheckpoint(BookStore::kAutoCheckpointPages));
    store.checkpointInBackground();
}

// The chain a decoded cover starts: its next re-encodings, and whether the
// last of them is a fixed point. A cover that does not decode stays as it is,
// a fixed point too.
void DateRepair::recordChain(const Job &job)
{
    BookStore &store = m_app.persistentContainer();
    const QVariant pk = job.pk;
    bool ok = true;
    for (qsizetype i = 0; ok && i < job.ahead.size(); ++i)
        ok = logIfFailed(store.execute(
            QStringLiteral("INSERT INTO CoverReencodeChain (book, step, cover) VALUES (?, ?, ?)"),
            {pk, int(i + 1), job.ahead[i]}));
    // Last, so that a book with a state always has its whole chain.
    if (ok)
        logIfFailed(store.execute(
            QStringLiteral("INSERT INTO CoverReencodeState (book, step, steps, open) VALUES (?, 0, ?, ?)"),
            {pk, int(job.ahead.size()), int(job.result && !job.settled)}));
}

void DateRepair::flushCovers()
{
    if (m_jobs.isEmpty())
        return;
    BookStore &store = m_app.persistentContainer();
    // Covers are re-encoded in batches across the cores; each record is still
    // written, in order, on this thread.
    // Each cover is re-encoded, and so is each result until one comes back
    // unchanged: those are the covers the next starts would write.
    constexpr int kGenerations = 4;
    QtConcurrent::blockingMap(m_jobs, [](Job &job) {
        job.result = reencodeJpeg(job.bytes, 0.05);
        if (!job.result)
            return;
        QByteArray current = *job.result;
        job.settled = current == job.bytes;
        for (int g = 0; g < kGenerations && !job.settled; ++g) {
            const auto next = reencodeJpeg(current, 0.05);
            if (!next)
                break;
            job.settled = *next == current;
            if (!job.settled)
                job.ahead.append(current = *next);
        }
    });
    for (const auto &job : m_jobs) {
        // What was known of the cover goes first: whatever fails below, no
        // state is left that does not describe the stored bytes.
        bool written = !m_chainsKept
            || (logIfFailed(store.execute(QStringLiteral("DELETE FROM CoverReencodeState WHERE book = ?"), {job.pk}))
                && logIfFailed(store.execute(QStringLiteral("DELETE FROM CoverReencodeChain WHERE book = ?"), {job.pk})));
        if (written && job.result) {
            ++m_counts.covers;
            // Writing the same bytes again would change nothing.
            if (*job.result != job.bytes) {
                written = logIfFailed(store.execute(
                    m_chainsKept ? QStringLiteral("UPDATE BooksPictureImage SET pictureImage = ?, reencodeMark = 0 "
                                                  "WHERE book = ?")
                                 : QStringLiteral("UPDATE BooksPictureImage SET pictureImage = ? WHERE book = ?"),
                    {*job.result, job.pk}));
                store.coversWritten();
            }
        }
        if (written && m_chainsKept)
            recordChain(job);
    }
    m_jobs.clear();
}

bool DateRepair::runFor(qint64 budgetNs)
{
    constexpr int kBatch = 64;
    BookStore &store = m_app.persistentContainer();
    const DateText &dates = m_app.dateText();
    QElapsedTimer timer;
    timer.start();
    const qsizetype first = m_next;
    BookStore::Transaction transaction(store);
    while (budgetNs < 0 || timer.nsecsElapsed() < budgetNs) {
        if (m_next == qsizetype(m_books.size()) && (m_allRead || !take(budgetNs < 0)))
            break;
        const Row &book = m_books[size_t(m_next++)];
        ++m_counts.books;
        // Many books share a day read; the calendar is asked once for each.
        const qint64 dayKey = (qint64(book.year) << 32) | (qint64(book.month & 0xffff) << 16)
            | qint64(book.day & 0xffff);
        auto day = m_days.constFind(dayKey);
        if (day == m_days.constEnd())
            day = m_days.insert(dayKey, dates.startOfDay(book.year, book.month, book.day));
        const std::optional<QDateTime> &date = *day;
        if (!date) {
            flushCovers();
            transaction.commit();
            qFatal("The calendar could not form a date from %d/%d/%d", book.year, book.month, book.day);
        }
        // Older imports and edits could leave a book nameless; it cannot be
        // identified, but it is the user's and must not keep the library shut.
        if (!book.named) {
            logNameless(store, book.pk);
            continue;
        }
        if (!book.unique)
            continue;
        ++m_counts.repaired;
        if (const qint64 secs = date->toSecsSinceEpoch(); book.dateRead != secs)
            logIfFailed(store.execute(QStringLiteral("UPDATE Books SET dateRead = ? WHERE pk = ?"), {secs, book.pk}));
        if (!book.maybeCover)
            continue;
        if (book.step >= 0 && book.step < book.steps) {
            // This start's cover is known already: copied in without decoding.
            int changed = 0;
            const bool ok = logIfFailed(store.execute(
                QStringLiteral("UPDATE BooksPictureImage SET pictureImage = "
                               "(SELECT cover FROM CoverReencodeChain WHERE book = ? AND step = ?), reencodeMark = ? "
                               "WHERE book = ? AND EXISTS "
                               "(SELECT 1 FROM CoverReencodeChain WHERE book = ? AND step = ?)"),
                {book.pk, book.step + 1, book.step + 1, book.pk, book.pk, book.step + 1}, &changed));
            if (ok && changed == 1) {
                store.coversWritten();
                ++m_counts.covers;
                ++m_counts.fixedCovers;
                continue;
            }
        } else if (book.step >= 0 && !book.open) {
            ++m_counts.fixedCovers; // a fixed point: this start would write the same bytes
            continue;
        }
        if (auto bytes = store.cover(book.pk)) {
            m_jobs.append({book.pk, *bytes, std::nullopt, false, {}});
            if (m_jobs.size() == kBatch)
                flushCovers();
        }
    }
    flushCovers();
    logIfFailed(transaction.commit());
    if (done())
        finish();
    else if (m_next > first)
        m_app.persistentContainer().checkpointInBackground(); // the log copied back as the slices go
    return done();
}

RepairCounts repairDates(AppDelegate &app)
{
    DateRepair repair(app);
    repair.runFor(-1);
    return repair.counts();
}

} // namespace tomewise::LaunchTasks
