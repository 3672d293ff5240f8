#pragma once

#include "model/books.h"

#include <QHash>
#include <QList>
#include <QSet>
#include <QSqlQuery>
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
    DateRepair(AppDelegate &app, QList<Books> bookList);
    // Works until the time is up (nanoseconds; negative: to the end); true when all is done.
    bool runFor(qint64 budgetNs);
    bool done() const { return m_next >= m_books.size(); }
    double progress() const { return m_books.isEmpty() ? 1.0 : double(m_next) / double(m_books.size()); }
    const RepairCounts &counts() const { return m_counts; }

private:
    struct Job
    {
        qint64 pk = 0;
        QByteArray bytes;
        std::optional<QByteArray> result;
        bool settled = false;     // re-encoding comes back to the same bytes within a few starts
        QList<QByteArray> ahead;  // what the starts after this one write, until then
    };
    void flushCovers();

    AppDelegate &m_app;
    QList<Books> m_books;
    qsizetype m_next = 0;
    RepairCounts m_counts;
    QHash<std::pair<QString, QString>, int> m_matches;
    QByteArray m_codec;
    bool m_marksKept = false;
    QHash<qint64, bool> m_ahead; // books whose next covers are known: true when settled
    QSet<qint64> m_withCover;
    QHash<qint64, std::optional<QDateTime>> m_days;
    QList<Job> m_jobs;
    std::optional<QSqlQuery> m_readAhead;
    std::optional<QSqlQuery> m_recordAhead;
};

// The whole repair at once.
RepairCounts repairDates(AppDelegate &app, const QList<Books> &bookList);

// What identifies the JPEG codec this process re-encodes with: the bytes it
// makes of a fixed picture, so a changed codec is noticed whatever its version says.
QByteArray codecFingerprint();

// The cover re-encoded as JPEG at the given quality (0..1); nothing when the
// bytes are not an image.
std::optional<QByteArray> reencodeJpeg(const QByteArray &bytes, double quality);

} // namespace LaunchTasks
} // namespace tomewise
