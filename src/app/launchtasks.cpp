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
#include <QSet>
#include <QImage>
#include <QImageWriter>
#include <QSqlError>
#include <QSqlQuery>
#include <QtConcurrent/QtConcurrentMap>

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

using Key = std::pair<QString, QString>;

// What later starts will make of each cover, by the codec that found so: the
// covers they will write in turn, nothing once a cover comes back unchanged.
// A cover written by anyone (the app, an import, the sqlite3 shell) loses its
// record, and is decoded again.
bool prepareAhead(BookStore &store)
{
    QSqlQuery q(store.database());
    for (const char *sql : {
             "CREATE TABLE IF NOT EXISTS CoverReencodeAhead (book INTEGER PRIMARY KEY, codec TEXT NOT NULL, "
             "ahead BLOB)",
             "CREATE TRIGGER IF NOT EXISTS CoverReencodeAhead_insert AFTER INSERT ON BooksPictureImage "
             "BEGIN DELETE FROM CoverReencodeAhead WHERE book = NEW.book; END",
             "CREATE TRIGGER IF NOT EXISTS CoverReencodeAhead_update AFTER UPDATE ON BooksPictureImage "
             "BEGIN DELETE FROM CoverReencodeAhead WHERE book = OLD.book OR book = NEW.book; END",
             "CREATE TRIGGER IF NOT EXISTS CoverReencodeAhead_delete AFTER DELETE ON BooksPictureImage "
             "BEGIN DELETE FROM CoverReencodeAhead WHERE book = OLD.book; END"}) {
        if (!q.exec(QLatin1String(sql))) {
            qCWarning(lcStore).noquote() << q.lastError().text();
            return false;
        }
    }
    // Made here, where the start writes anyway, rather than when a list first opens.
    QString error;
    if (!BookListSource::prepareIndexes(store, &error))
        qCWarning(lcStore).noquote() << error;
    return true;
}

// The books with a record: true for a settled cover, false when covers are still ahead.
QHash<qint64, bool> aheadKeys(BookStore &store, const QByteArray &codec)
{
    QHash<qint64, bool> keys;
    QSqlQuery q(store.database());
    q.setForwardOnly(true);
    q.prepare(QStringLiteral("SELECT book, ahead IS NULL FROM CoverReencodeAhead WHERE codec = ?"));
    q.addBindValue(QString::fromLatin1(codec));
    if (!q.exec()) {
        qCWarning(lcStore).noquote() << q.lastError().text();
        return keys;
    }
    while (q.next())
        keys.insert(q.value(0).toLongLong(), q.value(1).toBool());
    return keys;
}

// Both statements run once per cover: each is prepared once for the whole repair.
QSqlQuery &prepared(BookStore &store, std::optional<QSqlQuery> &query, const char *sql)
{
    if (!query) {
        query.emplace(store.database());
        query->prepare(QLatin1String(sql));
    }
    return *query;
}

QList<QByteArray> readAhead(BookStore &store, std::optional<QSqlQuery> &query, qint64 pk)
{
    QSqlQuery &q = prepared(store, query, "SELECT ahead FROM CoverReencodeAhead WHERE book = ?");
    q.addBindValue(pk);
    QList<QByteArray> covers;
    if (q.exec() && q.next()) {
        QDataStream in(q.value(0).toByteArray());
        in >> covers;
    }
    q.finish();
    return covers;
}

StoreResult recordAhead(BookStore &store, std::optional<QSqlQuery> &query, qint64 pk, const QByteArray &codec,
                        const QList<QByteArray> &ahead)
{
    QByteArray blob;
    if (!ahead.isEmpty()) {
        QDataStream out(&blob, QIODevice::WriteOnly);
        out << ahead;
    }
    QSqlQuery &q = prepared(store, query,
                            "INSERT OR REPLACE INTO CoverReencodeAhead (book, codec, ahead) VALUES (?, ?, ?)");
    q.addBindValue(pk);
    q.addBindValue(QString::fromLatin1(codec));
    q.addBindValue(ahead.isEmpty() ? QVariant(QMetaType::fromType<QByteArray>()) : QVariant(blob));
    if (!q.exec())
        return {false, q.lastError().text()};
    return {};
}

// The keys of the books that have a cover, so that a book without one costs no read.
QSet<qint64> coverKeys(BookStore &store)
{
    QString error;
    auto keys = store.coverKeys(&error);
    if (!keys)
        qCWarning(lcStore).noquote() << error;
    return keys.value_or(QSet<qint64>());
}

// How many books carry each title and author, in one statement rather than a
// fetch per book; exact comparison, as the store's "=" is.
QHash<Key, int> titleAuthorCounts(BookStore &store)
{
    QHash<Key, int> counts;
    QSqlQuery q(store.database());
    q.setForwardOnly(true);
    if (!q.exec(QStringLiteral("SELECT name, author, COUNT(*) FROM Books "
                               "WHERE name IS NOT NULL AND author IS NOT NULL GROUP BY name, author"))) {
        qCWarning(lcStore).noquote() << q.lastError().text();
        return counts;
    }
    while (q.next())
        counts.insert({q.value(0).toString(), q.value(1).toString()}, q.value(2).toInt());
    return counts;
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

} // namespace

DateRepair::DateRepair(AppDelegate &app, QList<Books> bookList)
    : m_app(app)
    , m_books(std::move(bookList))
{
    BookStore &store = app.persistentContainer();
    m_matches = titleAuthorCounts(store);
    m_codec = codecFingerprint();
    m_marksKept = prepareAhead(store);
    if (m_marksKept)
        m_ahead = aheadKeys(store, m_codec);
    m_withCover = coverKeys(store);
}

void DateRepair::flushCovers()
{
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
        if (!job.result)
            continue;
        ++m_counts.covers;
        // Writing the same bytes again would change nothing.
        bool written = true;
        if (*job.result != job.bytes)
            written = logIfFailed(store.setCover(job.pk, job.result));
        if (written && job.settled && m_marksKept)
            logIfFailed(recordAhead(store, m_recordAhead, job.pk, m_codec, job.ahead));
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
    BookStore::Transaction transaction(store);
    while (m_next < m_books.size() && (budgetNs < 0 || timer.nsecsElapsed() < budgetNs)) {
        const Books &book = m_books.at(m_next++);
        ++m_counts.books;
        const int y = book.year.value_or(0), m = book.month.value_or(0), d = book.day.value_or(0);
        // Many books share a day read; the calendar is asked once for each.
        const qint64 dayKey = (qint64(y) << 32) | (qint64(m & 0xffff) << 16) | qint64(d & 0xffff);
        auto day = m_days.constFind(dayKey);
        if (day == m_days.constEnd())
            day = m_days.insert(dayKey, dates.startOfDay(y, m, d));
        const std::optional<QDateTime> &date = *day;
        if (!date) {
            flushCovers();
            transaction.commit();
            qFatal("The calendar could not form a date from %d/%d/%d", y, m, d);
        }
        // Older imports and edits could leave a book nameless; it cannot be
        // identified, but it is the user's and must not keep the library shut.
        if (!book.name || !book.author) {
            qCWarning(lcApp).noquote() << QStringLiteral("A book without %1 is left as it is: %2")
                                              .arg(book.name ? QStringLiteral("an author") : QStringLiteral("a name"),
                                                   describe(book));
            continue;
        }
        if (m_matches.value({*book.name, *book.author}) != 1)
            continue;
        ++m_counts.repaired;
        if (book.dateRead != date) {
            Books repaired = book;
            repaired.dateRead = date;
            logIfFailed(store.updateBook(repaired));
        }
        if (!m_withCover.contains(book.pk))
            continue;
        if (const auto known = m_ahead.constFind(book.pk); known != m_ahead.constEnd()) {
            if (*known) {
                ++m_counts.fixedCovers;
                continue;
            }
            // This start's cover is known already: written without decoding.
            QList<QByteArray> ahead = readAhead(store, m_readAhead, book.pk);
            if (!ahead.isEmpty()) {
                const QByteArray cover = ahead.takeFirst();
                if (logIfFailed(store.setCover(book.pk, cover))) {
                    ++m_counts.covers;
                    ++m_counts.fixedCovers;
                    logIfFailed(recordAhead(store, m_recordAhead, book.pk, m_codec, ahead));
                }
                continue;
            }
        }
        if (auto bytes = store.cover(book.pk)) {
            m_jobs.append({book.pk, *bytes, std::nullopt, false, {}});
            if (m_jobs.size() == kBatch)
                flushCovers();
        }
    }
    flushCovers();
    logIfFailed(transaction.commit());
    return done();
}

RepairCounts repairDates(AppDelegate &app, const QList<Books> &bookList)
{
    DateRepair repair(app, bookList);
    repair.runFor(-1);
    return repair.counts();
}

} // namespace tomewise::LaunchTasks
