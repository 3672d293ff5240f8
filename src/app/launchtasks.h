#pragma once

#include "model/books.h"

#include <QHash>
#include <QList>
#include <QSet>
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
    int fixedCovers = 0; // covers known to come out of the re-encoding unchanged, not decoded again
};

// Rebuilds dateRead from year/month/day for every book that is the only one
// with its title and author, and re-encodes its cover at quality 0.05. A book
// without a title or author is left alone and named in the log; a day the
// calendar cannot form is fatal. The re-encoding is a function of the bytes:
// a cover that came out of it unchanged is remembered with the codec that did
// so and skipped on later starts until its bytes or the codec change.
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
        bool settled = false; // re-encoding the result gives it back
    };
    void flushCovers();

    AppDelegate &m_app;
    QList<Books> m_books;
    qsizetype m_next = 0;
    RepairCounts m_counts;
    QHash<std::pair<QString, QString>, int> m_matches;
    QByteArray m_codec;
    bool m_marksKept = false;
    QSet<qint64> m_fixed;
    QSet<qint64> m_withCover;
    QHash<qint64, std::optional<QDateTime>> m_days;
    QList<Job> m_jobs;
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
