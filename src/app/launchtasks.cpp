#include "launchtasks.h"

#include "app/appdelegate.h"
#include "app/log.h"
#include "model/coverimage.h"

#include <QBuffer>
#include <QHash>
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

namespace {

using Key = std::pair<QString, QString>;

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

struct CoverJob
{
    qint64 pk = 0;
    QByteArray bytes;
    std::optional<QByteArray> result;
};

} // namespace

RepairCounts repairDates(AppDelegate &app, const QList<Books> &bookList)
{
    BookStore &store = app.persistentContainer();
    const DateText &dates = app.dateText();
    RepairCounts counts;
    const QHash<Key, int> matches = titleAuthorCounts(store);

    // Covers are re-encoded in batches across the cores; each record is still
    // written, in order, on this thread.
    constexpr int kBatch = 128;
    QList<CoverJob> jobs;
    auto flushCovers = [&] {
        QtConcurrent::blockingMap(jobs, [](CoverJob &job) { job.result = reencodeJpeg(job.bytes, 0.05); });
        for (const auto &job : jobs) {
            if (job.result && logIfFailed(store.setCover(job.pk, job.result)))
                ++counts.covers;
        }
        jobs.clear();
    };

    BookStore::Transaction transaction(store);
    for (const Books &book : bookList) {
        ++counts.books;
        const auto date = dates.startOfDay(book.year.value_or(0), book.month.value_or(0), book.day.value_or(0));
        if (!date) {
            flushCovers();
            transaction.commit();
            qFatal("The calendar could not form a date from %d/%d/%d", int(book.year.value_or(0)),
                   int(book.month.value_or(0)), int(book.day.value_or(0)));
        }
        // Older imports and edits could leave a book nameless; it cannot be
        // identified, but it is the user's and must not keep the library shut.
        if (!book.name || !book.author) {
            qCWarning(lcApp).noquote() << QStringLiteral("A book without %1 is left as it is: %2")
                                              .arg(book.name ? QStringLiteral("an author") : QStringLiteral("a name"),
                                                   describe(book));
            continue;
        }
        if (matches.value({*book.name, *book.author}) != 1)
            continue;
        ++counts.repaired;
        if (book.dateRead != date) {
            Books repaired = book;
            repaired.dateRead = date;
            logIfFailed(store.updateBook(repaired));
        }
        if (auto bytes = store.cover(book.pk)) {
            jobs.append({book.pk, *bytes, std::nullopt});
            if (jobs.size() == kBatch)
                flushCovers();
        }
    }
    flushCovers();
    logIfFailed(transaction.commit());
    return counts;
}

} // namespace tomewise::LaunchTasks
