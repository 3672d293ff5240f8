// Group summaries and breakdowns: values, order, headers, counts, the chosen
// value, the breakdown's fetch and its flipping sort, search, delete, tap,
// and the command line over the same screens.
#include "browse/groupbreakdowntableviewcontroller.h"
#include "browse/grouptableviewcontroller.h"
#include "support/clirun.h"
#include "support/logcapture.h"
#include "support/testapp.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QTest>

using namespace tomewise;
using namespace tomewise::test;

Q_DECLARE_METATYPE(tomewise::GroupKind)

namespace {

// A book of every grouping: the fields the test names, read on the given day.
Books shelf(TestApp &t, const QString &name, const QVariantMap &fields, QDate read = QDate(2021, 3, 4))
{
    Books b = book(name, fields.value(QStringLiteral("author"), QStringLiteral("Anne")).toString());
    for (auto it = fields.begin(); it != fields.end(); ++it)
        setAttributeValue(b, *booksAttribute(it.key()), it.value());
    if (read.isValid()) {
        b.dateRead = t.app().dateText().startOfDay(read.year(), read.month(), read.day());
        b.dt = t.app().dateText().format(*b.dateRead, DateText::Style::Medium);
    }
    return t.insert(b);
}

QStringList names(GroupBreakdownTableViewController &screen)
{
    QStringList out;
    for (int row = 0; row < screen.model()->rowCount(); ++row)
        out << screen.model()->book(row).name.value_or(QString());
    return out;
}

QStringList rows(GroupTableViewController &summary)
{
    QStringList out;
    for (const auto &v : summary.shownList())
        out << QStringLiteral("%1=%2").arg(v).arg(summary.count(v));
    return out;
}

// A summary loaded, as its tab shows it.
std::unique_ptr<GroupTableViewController> summaryOf(TestApp &t, GroupKind kind)
{
    auto s = std::make_unique<GroupTableViewController>(kind, &t.app(), nullptr);
    s->viewDidLoad();
    return s;
}

// The breakdown of a summary's value, loaded and shown.
std::unique_ptr<GroupBreakdownTableViewController> breakdownOf(TestApp &t, GroupKind kind, const QString &value)
{
    summaryOf(t, kind)->selectValue(value);
    auto b = std::make_unique<GroupBreakdownTableViewController>(kind, &t.app(), nullptr);
    b->viewDidLoad();
    b->viewWillAppear();
    return b;
}

} // namespace

class TestGroups : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void headers_data()
    {
        QTest::addColumn<GroupKind>("kind");
        QTest::addColumn<int>("values");
        QTest::addColumn<int>("shown");
        QTest::addColumn<bool>("searching");
        QTest::addColumn<QString>("header");
        QTest::newRow("format none") << GroupKind::Format << 0 << 0 << false << "0 Format";
        QTest::newRow("format one") << GroupKind::Format << 1 << 1 << false << "1 Formats";
        QTest::newRow("format searching") << GroupKind::Format << 5 << 2 << true << "5 Formats";
        QTest::newRow("rating none") << GroupKind::Rating << 0 << 0 << false << "0 Rating";
        QTest::newRow("series none") << GroupKind::Series << 0 << 0 << false << "0 Rating";
        QTest::newRow("series two") << GroupKind::Series << 2 << 2 << false << "2 Ratings";
        QTest::newRow("genre none") << GroupKind::Genre << 0 << 0 << false << "# of Genre's: 0";
        QTest::newRow("genre searching") << GroupKind::Genre << 9 << 3 << true << "# of Genre's: 3";
        QTest::newRow("author none") << GroupKind::Author << 0 << 0 << false << "0 Authors";
        QTest::newRow("author one") << GroupKind::Author << 1 << 1 << false << "1 Author";
        QTest::newRow("author searching one") << GroupKind::Author << 4 << 1 << true << "1 Authors";
        QTest::newRow("published none") << GroupKind::YearPublished << 0 << 0 << false << "0 Year Published";
        QTest::newRow("published one") << GroupKind::YearPublished << 1 << 1 << false << "1 Year's Published";
        QTest::newRow("published searching one") << GroupKind::YearPublished << 4 << 1 << true << "1 Year Published";
        QTest::newRow("published searching none") << GroupKind::YearPublished << 0 << 0 << true << "0 Year Published";
        QTest::newRow("published searching two") << GroupKind::YearPublished << 4 << 2 << true << "2 Year's Published";
        QTest::newRow("read none") << GroupKind::YearRead << 0 << 0 << false << "0 Year's Read";
        QTest::newRow("read one") << GroupKind::YearRead << 1 << 1 << false << "1 Year's Read";
        QTest::newRow("read searching one") << GroupKind::YearRead << 3 << 1 << true << "1 Year Read";
    }
    void headers()
    {
        QFETCH(GroupKind, kind);
        QFETCH(int, values);
        QFETCH(int, shown);
        QFETCH(bool, searching);
        QFETCH(QString, header);
        QCOMPARE(groupHeader(groupKind(kind).header, values, shown, searching), header);
    }

    void emptyStoreShowsNoRows_data()
    {
        QTest::addColumn<GroupKind>("kind");
        for (const auto &k : kGroupKinds)
            QTest::newRow(k.name) << k.kind;
    }
    void emptyStoreShowsNoRows()
    {
        QFETCH(GroupKind, kind);
        TestApp t;
        auto s = summaryOf(t, kind);
        QCOMPARE(s->shownList().size(), 0);
        QCOMPARE(s->header(), groupHeader(groupKind(kind).header, 0, 0, false));
        QCOMPARE(s->placeholder(), QLatin1String(groupKind(kind).summaryPlaceholder));
    }

    void valuesAreExactAndSortedAsText_data()
    {
        QTest::addColumn<GroupKind>("kind");
        QTest::addColumn<QStringList>("ascending");
        QTest::newRow("genre") << GroupKind::Genre << QStringList{"Fiction=2", "fiction=1"};
        QTest::newRow("format") << GroupKind::Format << QStringList{"Paperback=1", "Paperback =1", "ebook=1"};
        QTest::newRow("published") << GroupKind::YearPublished << QStringList{"1999=2", "950=1"};
        QTest::newRow("author") << GroupKind::Author << QStringList{"Anne=2", "Zoë=1", "ana=1"};
        QTest::newRow("read") << GroupKind::YearRead << QStringList{"2020=1", "2021=3"};
    }
    void valuesAreExactAndSortedAsText()
    {
        QFETCH(GroupKind, kind);
        QFETCH(QStringList, ascending);
        TestApp t;
        shelf(t, "a", {{"category", "Fiction"}, {"bookFormat", "Paperback"}, {"publishDate", 1999}});
        shelf(t, "b", {{"category", "fiction"}, {"bookFormat", "Paperback "}, {"publishDate", 950}, {"author", "ana"}});
        shelf(t, "c", {{"category", "Fiction"}, {"bookFormat", "ebook"}, {"publishDate", 1999}, {"author", ""}},
              QDate(2020, 6, 1));
        // Decomposed ë: the same value once composed, sorted where "Zoë" sorts.
        shelf(t, "d", {{"category", ""}, {"publishDate", 0}, {"author", QStringLiteral("Zoe\u0308")}});
        Books none = book("e", "Anne");
        t.insert(none);
        auto s = summaryOf(t, kind);
        QAbstractItemModelTester tester(s->model(), QAbstractItemModelTester::FailureReportingMode::QtTest);
        QStringList expected = ascending;
        if (kind == GroupKind::Author)
            expected[1] = QStringLiteral("Zoe\u0308=1");
        QCOMPARE(rows(*s), expected);
        s->SortButtonTapped();
        std::reverse(expected.begin(), expected.end());
        QCOMPARE(rows(*s), expected);
        QCOMPARE(t.app().state().groupSortAscending(), false);
    }

    void searchAndSortWhileSearching()
    {
        TestApp t;
        for (const char *f : {"Paperback", "Hardcover", "Kindle", "Audio"})
            shelf(t, f, {{"bookFormat", f}});
        auto s = summaryOf(t, GroupKind::Format);
        s->setChartShown(true);
        s->setSearchText(QStringLiteral("PAPER"));
        QCOMPARE(s->shownList(), QStringList{"Paperback"});
        QCOMPARE(s->header(), QStringLiteral("4 Formats"));
        s->setSearchText(QStringLiteral("e"));
        QCOMPARE(s->shownList(), (QStringList{"Hardcover", "Kindle", "Paperback"}));
        s->SortButtonTapped();
        QCOMPARE(s->shownList(), (QStringList{"Paperback", "Kindle", "Hardcover"}));
        QCOMPARE(s->chart().size(), 3); // the chart follows the search
        s->setSearchText(QString());
        QCOMPARE(s->shownList(), (QStringList{"Audio", "Hardcover", "Kindle", "Paperback"}));
    }

    void chartKeepsTheLongestBars()
    {
        TestApp t;
        for (int g = 0; g < 25; ++g) {
            for (int n = 0; n <= g; ++n)
                shelf(t, QStringLiteral("b%1-%2").arg(g).arg(n), {{"category", QStringLiteral("G%1").arg(g, 2, 10, QChar(u'0'))}});
        }
        auto s = summaryOf(t, GroupKind::Genre);
        QVERIFY(s->chart().isEmpty()); // drawn only when shown
        s->setChartShown(true);
        const QVariantList chart = s->chart();
        QCOMPARE(chart.size(), 21);
        QCOMPARE(chart.first().toMap().value("value").toString(), QStringLiteral("G24"));
        QCOMPARE(chart.first().toMap().value("count").toInt(), 25);
        QCOMPARE(s->chartMax(), 25);
        QCOMPARE(chart.last().toMap().value("value").toString(), QStringLiteral("Other"));
        QCOMPARE(chart.last().toMap().value("count").toInt(), 1 + 2 + 3 + 4 + 5);
        QVERIFY(chart.last().toMap().value("other").toBool());
    }

    void chartYearsInNumberOrderWithGaps()
    {
        TestApp t;
        for (int y : {1999, 950, 2001, 1997})
            shelf(t, QString::number(y), {{"publishDate", y}});
        auto s = summaryOf(t, GroupKind::YearPublished);
        s->setChartShown(true);
        auto columns = [&s] {
            QStringList out;
            for (const QVariant &c : s->chart()) {
                const QVariantMap m = c.toMap();
                out << (m.value("gap").toBool() ? "(" + m.value("value").toString() + ")"
                                                : m.value("value").toString() + "=" + m.value("count").toString());
            }
            return out;
        };
        QStringList expected{"950=1", "(…)", "1997=1", "()", "1999=1", "()", "2001=1"};
        QCOMPARE(columns(), expected);
        s->SortButtonTapped();
        std::reverse(expected.begin(), expected.end());
        QCOMPARE(columns(), expected);
    }

    // Shown right after loading, the summary keeps the counts it loaded with.
    void firstAppearanceKeepsTheLoadedCounts()
    {
        TestApp t;
        shelf(t, "a", {{"category", "Poetry"}});
        auto s = summaryOf(t, GroupKind::Genre);
        shelf(t, "b", {{"category", "Poetry"}});
        s->viewWillAppear();
        QCOMPARE(rows(*s), QStringList{"Poetry=1"});
        s->selectValue(QStringLiteral("Poetry"));
        s->viewWillAppear();
        QCOMPARE(rows(*s), QStringList{"Poetry=2"});
    }

    // The year text and its range come from the same calendar, whatever the locale's is.
    void yearReadInTheLocaleCalendar_data()
    {
        QTest::addColumn<QString>("locale");
        QTest::addColumn<QString>("year");
        QTest::newRow("en_US") << "en_US" << "2024";
        QTest::newRow("th_TH") << "th_TH" << "2567";
    }
    void yearReadInTheLocaleCalendar()
    {
        QFETCH(QString, locale);
        QFETCH(QString, year);
        TestApp t("Asia/Bangkok");
        for (const QDateTime &read : {QDateTime(QDate(2023, 12, 31), QTime(16, 59, 59), Qt::UTC),
                                      QDateTime(QDate(2023, 12, 31), QTime(17, 0), Qt::UTC),
                                      QDateTime(QDate(2024, 12, 31), QTime(16, 59, 59), Qt::UTC)}) {
            Books b = book("b", "A");
            b.dateRead = read;
            t.insert(b);
        }
        DateText dates(locale, "Asia/Bangkok");
        GroupCounts counts(t.store(), dates);
        const auto values = counts.values(groupKind(GroupKind::YearRead));
        QVERIFY(values);
        QCOMPARE(values->size(), 2);
        QCOMPARE(values->last().value, year);
        QCOMPARE(values->last().count, 2);
    }

    // A date far in the past is its own row and the walk goes on to later
    // years; a year with no first day (there is no year 0) counts 0 and says so.
    void yearReadPastTheCalendarGoesOn()
    {
        TestApp t;
        Books far = book("far", "A");
        far.dateRead = QDateTime::fromSecsSinceEpoch(-1'000'000'000'000'000LL, Qt::UTC);
        t.insert(far);
        shelf(t, "near", {});
        auto s = summaryOf(t, GroupKind::YearRead);
        QCOMPARE(rows(*s), (QStringList{"2021=1", "5838270=0"}));
        LogCapture log;
        GroupCounts counts(t.store(), t.app().dateText());
        QCOMPARE(counts.count(groupKind(GroupKind::YearRead), QStringLiteral("0")), 0);
        QCOMPARE(log.lines("tomewise.browse"), QStringList{"Failed to calculate date range"});
    }

    // New York is five hours behind: the first hours of 2021 in UTC are still 2020 there.
    void yearReadCountsTheLocalYear()
    {
        TestApp t("America/New_York");
        Books late = book("late", "A");
        late.dateRead = QDateTime(QDate(2021, 1, 1), QTime(2, 0), Qt::UTC);
        t.insert(late);
        Books early = book("early", "A");
        early.dateRead = QDateTime(QDate(2021, 1, 1), QTime(5, 30), Qt::UTC);
        t.insert(early);
        Books edge = book("edge", "A");
        edge.dateRead = QDateTime(QDate(2022, 1, 1), QTime(4, 59, 59), Qt::UTC);
        t.insert(edge);
        auto s = summaryOf(t, GroupKind::YearRead);
        QCOMPARE(rows(*s), (QStringList{"2020=1", "2021=2"}));
        LogCapture log;
        GroupCounts counts(t.store(), t.app().dateText());
        QCOMPARE(counts.count(groupKind(GroupKind::YearRead), QStringLiteral("20x1")), 0);
        QCOMPARE(log.lines("tomewise.browse"), QStringList{"Invalid year format"});
    }

    void tapKeepsTheValueAndOpensTheBreakdown_data()
    {
        QTest::addColumn<GroupKind>("kind");
        QTest::addColumn<QString>("value");
        QTest::newRow("author") << GroupKind::Author << "Anne";
        QTest::newRow("format") << GroupKind::Format << "Kindle";
        QTest::newRow("genre") << GroupKind::Genre << "SF";
        QTest::newRow("rating") << GroupKind::Rating << "***";
        QTest::newRow("series") << GroupKind::Series << "Dune";
        QTest::newRow("published") << GroupKind::YearPublished << "1965";
        QTest::newRow("read") << GroupKind::YearRead << "2021";
    }
    void tapKeepsTheValueAndOpensTheBreakdown()
    {
        QFETCH(GroupKind, kind);
        QFETCH(QString, value);
        TestApp t;
        shelf(t, "in", {{"bookFormat", "Kindle"}, {"category", "SF"}, {"rating", "***"}, {"series", "Dune"},
                        {"publishDate", 1965}});
        shelf(t, "out", {{"author", "Bob"}, {"bookFormat", "Kindle "}, {"category", "sf"}, {"rating", "****"},
                         {"series", "Dune 2"}, {"publishDate", 1966}}, QDate(2022, 1, 1));
        auto s = summaryOf(t, kind);
        QSignalSpy navigated(s.get(), &ScreenController::navigate);
        s->selectRow(int(s->shownList().indexOf(value)));
        QCOMPARE(navigated.value(0).value(0).toString(), QLatin1String(groupKind(kind).breakdownTarget));
        const AppState &state = t.app().state();
        switch (kind) {
        case GroupKind::Format: QCOMPARE(state.selectedFormat(), value); break;
        case GroupKind::YearPublished: QCOMPARE(state.currentBook.publishDate, qint16(1965)); break;
        case GroupKind::YearRead:
            QCOMPARE(state.selectedReadYear(), qint16(2021));
            QCOMPARE(state.currentBook.dt, value);
            break;
        default:
            QCOMPARE(attributeValue(state.currentBook, groupAttribute(groupKind(kind).attribute)),
                     QVariant(value));
        }
        // The breakdown lists exactly that group.
        GroupBreakdownTableViewController b(kind, &t.app(), nullptr);
        b.viewDidLoad();
        QCOMPARE(names(b), QStringList{"in"});
        QCOMPARE(b.header(), QStringLiteral("# of Books: 1"));
        QCOMPARE(b.title(), QLatin1String(groupKind(kind).breakdownTitle));
    }

    void rowLabels_data()
    {
        QTest::addColumn<GroupKind>("kind");
        QTest::addColumn<QStringList>("labels");
        const QStringList rating{"Name: Dune", "Author: Frank", "Genre: SF", "Rating: ****", "Notes: classic"};
        QTest::newRow("rating") << GroupKind::Rating << rating;
        QTest::newRow("genre") << GroupKind::Genre << rating;
        QTest::newRow("published") << GroupKind::YearPublished
                                   << QStringList{"Name: Dune", "Author: Frank", "# Pages: 412  Year Published: 2021",
                                                  "Rating: ****", "Notes: classic"};
        QTest::newRow("read") << GroupKind::YearRead
                              << QStringList{"Name: Dune", "Author: Frank", "# Pages: 412  Date Read: March 4, 2021",
                                             "Rating: ****", "Notes: classic"};
        QTest::newRow("author") << GroupKind::Author
                                << QStringList{"Name: Dune", "Author: Frank", "Genre: SF", "Rating: ****",
                                               "Date Read: March 4, 2021"};
        QTest::newRow("format") << GroupKind::Format
                                << QStringList{"Name: Dune", "Author: Frank", "Genre: SF", "DateRead: March 4, 2021",
                                               "Rating: ****", "Notes: classic"};
        QTest::newRow("series") << GroupKind::Series
                                << QStringList{"Name: Dune", "Author: Frank", "Genre: SF", "Series: Dune",
                                               "Series #: 0", "Notes: classic"};
    }
    void rowLabels()
    {
        QFETCH(GroupKind, kind);
        QFETCH(QStringList, labels);
        TestApp t;
        const Books b = shelf(t, "Dune", {{"author", "Frank"}, {"category", "SF"}, {"rating", "****"},
                                          {"notes", "classic"}, {"numberPages", 412}, {"year", 2021},
                                          {"publishDate", 1965}, {"bookFormat", "Paperback"}, {"series", "Dune"}});
        const QString value = kind == GroupKind::YearPublished ? QStringLiteral("1965")
            : kind == GroupKind::YearRead                      ? QStringLiteral("2021")
                                                               : attributeValue(b, groupAttribute(groupKind(kind).attribute)).toString();
        auto screen = breakdownOf(t, kind, value);
        QCOMPARE(screen->model()->labels(0), labels);
        QCOMPARE(screen->labelOutlets().size(), labels.size());
    }

    void sortMenuFlipsOnEveryFetch()
    {
        TestApp t;
        for (const char *n : {"Mid", "Zeta", "Alpha"})
            shelf(t, n, {{"rating", "*"}});
        auto b = breakdownOf(t, GroupKind::Rating, QStringLiteral("*"));
        QAbstractItemModelTester tester(b->model(), QAbstractItemModelTester::FailureReportingMode::QtTest);
        QCOMPARE(names(*b), (QStringList{"Mid", "Zeta", "Alpha"})); // store order
        LogCapture log;
        b->selectSortOption(2);
        QCOMPARE(names(*b), (QStringList{"Alpha", "Mid", "Zeta"}));
        b->selectSortOption(2);
        QCOMPARE(names(*b), (QStringList{"Zeta", "Mid", "Alpha"}));
        QCOMPARE(log.lines("tomewise.browse"), (QStringList{"Option 2 selected", "Option 2 selected"}));
        QCOMPARE(b->sortName(), QStringLiteral("BookName"));
        // Back from the detail screen: shown again, so the order turns.
        b->viewWillAppear();
        QCOMPARE(names(*b), (QStringList{"Alpha", "Mid", "Zeta"}));
        b->SortButtonTapped(); // not searching: a fetch, which flips again
        QCOMPARE(names(*b), (QStringList{"Zeta", "Mid", "Alpha"}));
    }

    void searchAndSortButtonOverTheSearchedRows()
    {
        TestApp t;
        for (const char *n : {"The End", "Novel", "Bathe", "The End", "Athens"})
            shelf(t, n, {{"rating", "*"}});
        auto b = breakdownOf(t, GroupKind::Rating, QStringLiteral("*"));
        b->setSearchText(QStringLiteral("the"));
        QCOMPARE(b->header(), QStringLiteral("# of Books: 4"));
        QCOMPARE(b->placeholder(), QStringLiteral("Search By Book Name"));
        const qint64 firstEnd = b->model()->book(0).pk;
        // SortAsc is false after load and first show: descending by name, equal names in order.
        b->SortButtonTapped();
        QCOMPARE(names(*b), (QStringList{"The End", "The End", "Bathe", "Athens"}));
        QCOMPARE(b->model()->book(0).pk, firstEnd);
        QCOMPARE(b->sortAsc(), false);
        b->setSearchText(QString());
        QCOMPARE(b->header(), QStringLiteral("# of Books: 5"));
    }

    void deletingTheLastBookOfAGroup()
    {
        TestApp t;
        shelf(t, "Only", {{"category", "Poetry"}});
        shelf(t, "Other", {{"category", "Prose"}});
        auto summary = summaryOf(t, GroupKind::Genre);
        summary->viewWillAppear();
        auto b = breakdownOf(t, GroupKind::Genre, QStringLiteral("Poetry"));
        QSignalSpy deleted(b.get(), &GroupBreakdownTableViewController::rowDeleted);
        summary->selectValue(QStringLiteral("Poetry"));
        b->deleteRow(0);
        QCOMPARE(deleted.value(0).value(0).toString(), QStringLiteral("Only"));
        QCOMPARE(b->header(), QStringLiteral("# of Books: 0"));
        QCOMPARE(b->model()->rowCount(), 0);
        QCOMPARE(t.allBooks().size(), 1);
        summary->viewWillAppear(); // back on the summary: the row stays, counted afresh
        QCOMPARE(rows(*summary), (QStringList{"Poetry=0", "Prose=1"}));
        summary->SortButtonTapped(); // a rebuild keeps it too
        QCOMPARE(rows(*summary), (QStringList{"Prose=1", "Poetry=0"}));

        // Undo puts it back once, and leaves the order as it was.
        const bool asc = b->sortAsc();
        b->undoDelete();
        b->undoDelete();
        QCOMPARE(b->header(), QStringLiteral("# of Books: 1"));
        QCOMPARE(b->sortAsc(), asc);
        QCOMPARE(t.allBooks().size(), 2);
    }

    void tapCopiesTheBookForTheDetailScreen_data()
    {
        QTest::addColumn<GroupKind>("kind");
        QTest::addColumn<QString>("callingScreen");
        QTest::newRow("read") << GroupKind::YearRead << "YearBreakdown";
        QTest::newRow("published") << GroupKind::YearPublished << "YearBreakdown";
        QTest::newRow("series") << GroupKind::Series << "SeriesBreakdown";
    }
    void tapCopiesTheBookForTheDetailScreen()
    {
        QFETCH(GroupKind, kind);
        QFETCH(QString, callingScreen);
        TestApp t;
        const Books d = shelf(t, "Dune", {{"series", "Dune"}, {"seriesNumber", 1}, {"publishDate", 1965},
                                          {"bookPublisher", "Chilton"}, {"notes", "n"}, {"numberPages", 412}});
        QVERIFY(t.store().setCover(d.pk, QByteArray("jpeg")));
        const QString value = kind == GroupKind::Series ? QStringLiteral("Dune")
            : kind == GroupKind::YearRead              ? QStringLiteral("2021")
                                                       : QStringLiteral("1965");
        auto b = breakdownOf(t, kind, value);
        QCOMPARE(b->model()->data(b->model()->index(0), GroupBreakdownModel::CoverSourceRole).toString(),
                 QStringLiteral("image://cover/%1").arg(d.pk));
        QSignalSpy navigated(b.get(), &ScreenController::navigate);
        b->selectRow(0);
        QCOMPARE(navigated.value(0).value(0).toString(), QStringLiteral("Detail"));
        const AppState &state = t.app().state();
        QCOMPARE(state.callingScreen(), callingScreen);
        QCOMPARE(state.currentBook.name, d.name);
        QCOMPARE(state.currentBook.dt, d.dt);
        QCOMPARE(state.currentBook.bookPublisher, d.bookPublisher);
        QCOMPARE(state.currentBook.seriesNumber, d.seriesNumber);
        QCOMPARE(state.currentBook.pictureImage, QByteArray("jpeg"));
    }

    void commandLine()
    {
        TestApp t;
        shelf(t, "Zed", {{"bookFormat", "Paperback"}});
        shelf(t, "Abe", {{"bookFormat", "Paperback"}, {"author", "Bob"}});
        shelf(t, "Kin", {{"bookFormat", "Kindle"}});
        t.store().saveContext();
        auto run = [&](const QStringList &args) { return runCli(t.dataDirectory(), args).out; };
        QCOMPARE(run({"summary", "format", "--desc"}), QStringLiteral("2 Formats\nPaperback\t2\nKindle\t1\n"));
        QCOMPARE(run({"summary", "author", "--search", "BO"}), QStringLiteral("1 Authors\nBob\t1\n"));
        QCOMPARE(run({"breakdown", "format", "Paperback", "--sort", "2", "--sort", "2"}),
                 QStringLiteral("# of Books: 2\n\nName: Zed\nAuthor: Anne\nGenre: \nDateRead: March 4, 2021\n"
                                "Rating: \nNotes: \n\nName: Abe\nAuthor: Bob\nGenre: \nDateRead: March 4, 2021\n"
                                "Rating: \nNotes: \n"));
        QVERIFY(run({"summary", "format", "--json"}).contains(QStringLiteral("\"count\": 2")));
    }
};

QTEST_MAIN(TestGroups)
#include "tst_groups.moc"
