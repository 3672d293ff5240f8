// The group summaries and breakdowns over synthetic libraries: opening each
// summary with its counts, counting afresh when it shows again, opening a
// breakdown of 1,000 books to its first screenful, and one search keystroke,
// each beside the same SQL timed inside the sqlite3 shell in the same run.
#include "benchlibrary.h"
#include "browse/groupbreakdowntableviewcontroller.h"
#include "browse/grouptableviewcontroller.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <cstdio>

using namespace tomewise;

namespace {

constexpr int kScreenful = 16; // 45-point rows on a phone
const QString kProlific = QStringLiteral("Prolific Author");

// Many authors, about 30 genres, five ratings, six formats, published
// 1900-2026, read 1990-2026; one author with exactly 1,000 books; every
// tenth book has a cover.
void fill(AppDelegate &app, int count)
{
    BookStore &store = app.persistentContainer();
    BookStore::Transaction t(store);
    const QStringList formats{"Paperback", "Hardcover", "Kindle", "Audiobook", "Library", "PDF"};
    const QByteArray cover(20000, 'c');
    for (int i = 0; i < count; ++i) {
        Books b;
        const int y = 1990 + (i * 7) % 37, m = 1 + i % 12, d = 1 + i % 28;
        b.dateRead = app.dateText().startOfDay(y, m, d);
        b.dt = app.dateText().format(*b.dateRead, DateText::Style::Medium);
        b.year = qint16(y);
        b.month = qint16(m);
        b.day = qint16(d);
        b.name = QStringLiteral("Book number %1").arg(i);
        b.author = i < 1000 ? kProlific : QStringLiteral("Author %1").arg((i * 7919) % (count / 8 + 1));
        b.category = QStringLiteral("Genre %1").arg(i % 30);
        b.rating = QString(1 + i % 5, u'*');
        b.bookFormat = formats[i % formats.size()];
        if (i % 3 == 0) {
            b.series = QStringLiteral("Series %1").arg(i % 1009);
            b.seriesNumber = qint16(1 + i % 9);
        }
        b.numberPages = qint16(100 + i % 700);
        b.publishDate = qint16(1900 + i % 127);
        b.notes = QStringLiteral("Notes on book %1").arg(i);
        store.insertBook(b);
        if (i % 10 == 0)
            store.setCover(b.pk, cover);
    }
    t.commit();
}

double ms(const QElapsedTimer &t)
{
    return double(t.nsecsElapsed()) / 1e6;
}

// Each statement's time as the sqlite3 shell's own timer reports it.
QList<double> shellTimes(const QString &sqlite, const QString &file, const QStringList &statements)
{
    if (sqlite.isEmpty())
        return QList<double>(statements.size(), 0.0);
    QProcess p;
    p.start(sqlite, {QStringLiteral("-batch"), file});
    p.write(".timer on\n.output /dev/null\n");
    for (const auto &s : statements)
        p.write(s.toUtf8() + ";\n");
    p.closeWriteChannel();
    p.waitForFinished(-1);
    const QString out = QString::fromUtf8(p.readAllStandardOutput() + p.readAllStandardError());
    static const QRegularExpression timer(QStringLiteral("Run Time: real ([0-9.]+)"));
    QList<double> times;
    for (auto it = timer.globalMatch(out); it.hasNext();)
        times << it.next().captured(1).toDouble() * 1000;
    return times;
}

QString shellSummarySql(const GroupKindInfo &k)
{
    if (k.kind == GroupKind::YearRead) // the shell's own local-time years
        return QStringLiteral("SELECT strftime('%Y', dateRead, 'unixepoch', 'localtime') AS y, COUNT(*) FROM Books "
                              "WHERE dateRead IS NOT NULL GROUP BY y");
    if (k.kind == GroupKind::YearPublished)
        return QStringLiteral("SELECT publishDate, COUNT(*) FROM Books WHERE publishDate > 0 GROUP BY publishDate");
    return QStringLiteral("SELECT %1, COUNT(*) FROM Books WHERE %1 IS NOT NULL AND %1 <> '' GROUP BY %1")
        .arg(QLatin1String(k.attribute));
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    const QList<int> sizes = benchlib::librarySizes(argc, argv);
    const QString sqlite = QStandardPaths::findExecutable(QStringLiteral("sqlite3"));
    qputenv("TZ", "America/New_York"); // the shell's localtime matches the app's zone

    for (int count : sizes) {
        QTemporaryDir dir;
        const auto owner = benchlib::benchApp(dir.path());
        AppDelegate &app = *owner;
        fill(app, count);
        app.persistentContainer().saveContext();
        const QString file = dir.filePath(QLatin1String(AppDelegate::kStoreFileName));

        std::printf("\n%d books\n%-16s %8s %10s %10s %10s %10s\n", count, "summary", "rows", "open ms", "screen ms",
                    "again ms", "sqlite3 ms");
        QStringList statements;
        for (const auto &k : kGroupKinds)
            statements << shellSummarySql(k);
        const QList<double> shell = shellTimes(sqlite, file, statements);
        for (const auto &k : kGroupKinds) {
            GroupTableViewController summary(k.kind, &app, nullptr);
            QElapsedTimer t;
            t.start();
            summary.viewDidLoad();
            summary.viewWillAppear(); // as the tab shows it
            const double open = ms(t);
            t.restart();
            const auto *model = summary.model();
            qint64 sum = 0;
            for (int row = 0; row < std::min(kScreenful, model->rowCount()); ++row)
                sum += model->index(row).data(GroupSummaryModel::CountRole).toInt();
            const double screen = ms(t);
            // Shown again: the counts are asked afresh for the rows on screen.
            t.restart();
            summary.viewWillAppear();
            for (int row = 0; row < std::min(kScreenful, model->rowCount()); ++row)
                sum += model->index(row).data(GroupSummaryModel::CountRole).toInt();
            const double again = ms(t);
            std::printf("%-16s %8d %10.2f %10.3f %10.2f %10.2f\n", k.name, model->rowCount(), open, screen, again,
                        shell.value(int(k.kind)));
            Q_ASSERT(sum > 0);
        }

        // A breakdown of the author with 1,000 books: tap, load, appear, first screenful of rows.
        const auto escaped = QString(kProlific).replace(u'\'', QStringLiteral("''"));
        const QList<double> shellMore = shellTimes(
            sqlite, file,
            {QStringLiteral("SELECT * FROM Books WHERE author = '%1'").arg(escaped),
             QStringLiteral("SELECT author FROM Books WHERE author IS NOT NULL AND author <> '' GROUP BY author "
                            "HAVING lower(author) LIKE '%r 12%'"),
             QStringLiteral("SELECT * FROM Books WHERE author = '%1' AND lower(name) LIKE '%r 12%'").arg(escaped)});
        GroupTableViewController authors(GroupKind::Author, &app, nullptr);
        authors.viewDidLoad();
        QElapsedTimer t;
        t.start();
        authors.selectValue(kProlific);
        GroupBreakdownTableViewController breakdown(GroupKind::Author, &app, nullptr);
        breakdown.viewDidLoad();
        breakdown.viewWillAppear();
        const auto *rows = breakdown.model();
        for (int row = 0; row < std::min(6, rows->rowCount()); ++row) {
            rows->index(row).data(GroupBreakdownModel::LabelsRole);
            rows->index(row).data(GroupBreakdownModel::CoverSourceRole);
        }
        const double open = ms(t);
        std::printf("%-16s %8d %10.2f %10s %10s %10.2f\n", "breakdown", rows->rowCount(), open, "", "",
                    shellMore.value(0));

        authors.setSearchText(QStringLiteral("r 1"));
        t.restart();
        authors.setSearchText(QStringLiteral("r 12"));
        const double keySummary = ms(t);
        breakdown.setSearchText(QStringLiteral("r 1"));
        t.restart();
        breakdown.setSearchText(QStringLiteral("r 12"));
        const double keyBreakdown = ms(t);
        std::printf("%-16s %8lld %10.2f %10s %10s %10.2f\n", "key author", qlonglong(authors.shownList().size()),
                    keySummary, "", "", shellMore.value(1));
        std::printf("%-16s %8d %10.2f %10s %10s %10.2f\n", "key breakdown", rows->rowCount(), keyBreakdown, "", "",
                    shellMore.value(2));
    }
    return 0;
}
