#pragma once

#include "model/books.h"

#include <QHash>
#include <QList>
#include <QSqlQuery>

#include <algorithm>
#include <memory>
#include <optional>
#include <vector>
#include <QStringList>

namespace tomewise {

class AppDelegate;

// The main menu's start-up work over the store.
namespace LaunchTasks {

const QStringList &starterGenres();
const QStringList &starterRatings();

// Inserts the starter genres, then the starter ratings, each saved on its own.
void seedReferenceLists(AppDelegate &app);

struct RepairCounts
{
    int books = 0;      // books walked
    int repaired = 0;   // uniquely identified books given their dateRead again
    int covers = 0;     // covers re-encoded
    int fixedCovers = 0; // covers whose re-encoding was known from an earlier start, not decoded again
};

// Rebuilds dateRead from year/month/day for every book that is the only one
// with its title and author, and re-encodes its cover at quality 0.05. A book
// without a title or author is left alone and named in the log; a day the
// calendar cannot form is fatal. The re-encoding is a function of the bytes,
// and usually comes back unchanged within a generation or two: the covers the
// next starts would write are worked out once and kept with the codec that
// made them, so later starts write them (or, once settled, skip the cover)
// without decoding, until the cover or the codec changes.
// The work goes in slices, each saved on its own, so that a window can stay
// responsive between them.
class DateRepair
{
public:
    // Starts reading the books, in store order, off this thread.
    explicit DateRepair(AppDelegate &app);
    ~DateRepair();
    DateRepair(const DateRepair &) = delete;
    DateRepair &operator=(const DateRepair &) = delete;
    // Works until the time is up (nanoseconds; negative: to the end); true when all is done.
    bool runFor(qint64 budgetNs);
    bool done() const { return m_allRead && m_next >= qsizetype(m_books.size()); }
    double progress() const
    {
        return done() ? 1.0 : m_total > 0 ? std::min(1.0, double(m_next) / double(m_total)) : 0.0;
    }
    const RepairCounts &counts() const { return m_counts; }

    // What the repair reads of each book: the day and its key, whether the
    // book is the only one with its title and author, and what is known of
    // its cover's re-encodings.
    struct Row
    {
        qint64 pk = 0;
        int year = 0, month = 0, day = 0;
        std::optional<qint64> dateRead; // seconds since the epoch
        bool named = false;             // has both a title and an author
        bool unique = false;            // ... and no other book has the same two
        int step = -1;                  // re-encodings of the cover known and written; -1: none known
        int steps = 0;                  // re-encodings known
        bool open = false;              // the last known one is not yet a fixed point
        bool maybeCover = true;         // false when the book is known to have no cover
    };

private:
    struct Job
    {
        qint64 pk = 0;
        QByteArray bytes;
        std::optional<QByteArray> result;
        bool settled = false;     // re-encoding comes back to the same bytes within a few starts
        QList<QByteArray> ahead;  // what the starts after this one write, in turn
    };
    void flushCovers();
    void recordChain(const Job &job);
    void finish();
    // Takes the rows the reader has handed over since, waiting for some when
    // asked to; false when none came.
    bool take(bool wait);
    struct Feed;

    AppDelegate &m_app;
    std::shared_ptr<Feed> m_feed;
    bool m_allRead = false;
    qsizetype m_total = 0;
    std::vector<Row> m_books;
    qsizetype m_next = 0;
    RepairCounts m_counts;
    bool m_chainsKept = false;
    bool m_finished = false;
    QHash<qint64, std::optional<QDateTime>> m_days;
    QList<Job> m_jobs;
};

// The whole repair at once.
RepairCounts repairDates(AppDelegate &app);

// What identifies the JPEG codec this process re-encodes with: the bytes it
// makes of a fixed picture, so a changed codec is noticed whatever its version says.
QByteArray codecFingerprint();

// The cover re-encoded as JPEG at the given quality (0..1); nothing when the
// bytes are not an image.
std::optional<QByteArray> reencodeJpeg(const QByteArray &bytes, double quality);

} // namespace LaunchTasks
} // namespace tomewise
