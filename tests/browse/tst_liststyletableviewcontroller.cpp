// The list-style book list: order, direction, search, cards, header, delete and tap.
#include "app/mainmenuviewcontroller.h"
#include "browse/liststyletableviewcontroller.h"
#include "support/logcapture.h"
#include "support/testapp.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QTest>

using namespace tomewise;
using namespace tomewise::test;

class TestListStyle : public QObject
{
    Q_OBJECT

private:
    // A book read on the given day, its date texts as the form writes them.
    static Books readOn(TestApp &t, const QString &name, const QString &author, QDate day)
    {
        Books b = book(name, author);
        const QDateTime start = t.app().dateText().startOfDay(day.year(), day.month(), day.day()).value();
        b.dateRead = start;
        b.dt = t.app().dateText().format(start, DateText::Style::Medium);
        b.year = qint16(day.year());
        b.month = qint16(day.month());
        b.day = qint16(day.day());
        return t.insert(b);
    }

    // Twelve books, one read on the 10th of each month of 2021, by authors named after the month.
    static void fillYear(TestApp &t)
    {
        for (int m = 1; m <= 12; ++m) {
            readOn(t, QStringLiteral("Book %1").arg(m), QStringLiteral("Author of month %1").arg(m),
                   QDate(2021, m, 10));
        }
        readOn(t, QStringLiteral("Odd one"), QStringLiteral("Anne 2021-0 Mystery"), QDate(2019, 12, 1));
    }

    static QStringList names(ListStyleTableViewController &list)
    {
        QStringList out;
        for (int row = 0; row < list.model()->rowCount(); ++row)
            out << list.model()->book(row).name.value_or(QString());
        return out;
    }

private Q_SLOTS:
    void bookListEntrySetsListMode()
    {
        TestApp t;
        MainMenuViewController menu(&t.app());
        menu.viewDidLoad();
        QSignalSpy navigated(&menu, &ScreenController::navigate);
        menu.openEntry(0);
        QCOMPARE(navigated.value(0).value(0).toString(), QStringLiteral("ListStyle"));
        QCOMPARE(t.app().state().listMode(), QStringLiteral("List"));
        menu.openEntry(2);
        QCOMPARE(navigated.value(1).value(0).toString(), QStringLiteral("NewBook"));
    }

    void firstShowIsNewestFirst()
    {
        TestApp t;
        readOn(t, QStringLiteral("Middle"), QStringLiteral("A"), QDate(2022, 5, 1));
        readOn(t, QStringLiteral("Newest"), QStringLiteral("A"), QDate(2024, 1, 1));
        readOn(t, QStringLiteral("Oldest"), QStringLiteral("A"), QDate(2020, 1, 1));
        ListStyleTableViewController list(&t.app());
        QAbstractItemModelTester tester(list.model(), QAbstractItemModelTester::FailureReportingMode::QtTest);
        list.viewDidLoad();
        list.viewWillAppear();
        QCOMPARE(list.sortName(), QStringLiteral("DateRead"));
        QCOMPARE(list.sortAsc(), false);
        QCOMPARE(list.placeholder(), QStringLiteral("Search By Date Read (yyyy-MM-dd)"));
        QCOMPARE(names(list), (QStringList{"Newest", "Middle", "Oldest"}));
        QCOMPARE(list.header(), QStringLiteral("3 Books"));
    }

    void optionsKeepTheDirectionAndOnlyTheButtonFlipsIt()
    {
        TestApp t;
        readOn(t, QStringLiteral("b"), QStringLiteral("Zed"), QDate(2022, 5, 1));
        readOn(t, QStringLiteral("a"), QStringLiteral("Amy"), QDate(2024, 1, 1));
        readOn(t, QStringLiteral("c"), QStringLiteral("Max"), QDate(2020, 1, 1));
        ListStyleTableViewController list(&t.app());
        list.viewDidLoad();
        list.viewWillAppear();
        LogCapture log;
        list.selectSortOption(3);
        QCOMPARE(log.lines("tomewise.browse"), QStringList{"Option 3 selected"});
        QCOMPARE(list.placeholder(), QStringLiteral("Sort By Author"));
        QCOMPARE(names(list), (QStringList{"b", "c", "a"})); // still descending
        list.SortButtonTapped();
        QCOMPARE(names(list), (QStringList{"a", "c", "b"}));
        list.selectSortOption(2);
        QCOMPARE(list.sortAsc(), true);
        QCOMPARE(names(list), (QStringList{"a", "b", "c"}));
    }

    void optionTable_data()
    {
        QTest::addColumn<int>("option");
        QTest::addColumn<QString>("sortName");
        QTest::addColumn<QString>("placeholder");
        QTest::addColumn<QStringList>("labels");
        QTest::newRow("1") << 1 << "DateRead" << "Sort By Date Read (yyyy-MM-dd)"
                           << QStringList{"Date Read: Mar 4, 2021", "Book Name: Dune", "Author: Frank Herbert  Genre: SF",
                                          "Rating: ****  Year Published: 1965", "Series: Dune", "Notes: classic"};
        QTest::newRow("2") << 2 << "BookName" << "Sort By Book Name"
                           << QStringList{"Book Name: Dune", "Author: Frank Herbert", "# Pages: 412  Genre: SF",
                                          "Rating: ****  Year Published: 1965", "Series: Dune", "Notes: classic"};
        QTest::newRow("3") << 3 << "Author" << "Sort By Author"
                           << QStringList{"Author: Frank Herbert", "Book Name: Dune", "# Pages: 412  Genre: SF",
                                          "Rating: ****  Year Published: 1965", "Series: Dune", "Notes: classic"};
        QTest::newRow("4") << 4 << "Genre" << "Sort By Genre"
                           << QStringList{"Genre: SF", "Book Name: Dune", "Author: Frank Herbert  # Pages= 412",
                                          "Rating: ****  Year Published: 1965", "Series: Dune", "Notes: classic"};
        QTest::newRow("5") << 5 << "Rating" << "Sort By Rating"
                           << QStringList{"Rating: ****  Year Published: 1965", "Book Name: Dune",
                                          "Author: Frank Herbert  Genre: SF", "# Pages: 412", "Series: Dune",
                                          "Notes: classic"};
        QTest::newRow("6") << 6 << "Series" << "Sort By Series"
                           << QStringList{"Series: Dune #1", "Book Name: Dune", "Author: Frank Herbert  Genre: SF",
                                          "# Pages: 412", "Rating: ****  Year Published: 1965", "Notes: classic"};
    }
    void optionTable()
    {
        QFETCH(int, option);
        QFETCH(QString, sortName);
        QFETCH(QString, placeholder);
        QFETCH(QStringList, labels);
        TestApp t;
        Books b = book(QStringLiteral("Dune"), QStringLiteral("Frank Herbert"));
        b.dateRead = t.app().dateText().startOfDay(2021, 3, 4);
        b.dt = QStringLiteral("March 4, 2021");
        b.category = QStringLiteral("SF");
        b.rating = QStringLiteral("****");
        b.publishDate = 1965;
        b.numberPages = 412;
        b.series = QStringLiteral("Dune");
        b.seriesNumber = 1;
        b.notes = QStringLiteral("classic");
        t.insert(b);
        ListStyleTableViewController list(&t.app());
        list.viewDidLoad();
        list.viewWillAppear();
        list.selectSortOption(option);
        QCOMPARE(list.sortName(), sortName);
        QCOMPARE(list.placeholder(), placeholder);
        QCOMPARE(list.model()->labels(0), labels);
        // The role names carry the same texts.
        const auto roles = list.model()->roleNames();
        QCOMPARE(list.model()->data(list.model()->index(0), roles.key("TopLabel")).toString(), labels[0]);
    }

    void missingSeriesShowsNoneExceptOnTheRatingCard_data()
    {
        QTest::addColumn<int>("option");
        QTest::addColumn<int>("slot");
        QTest::addColumn<QString>("text");
        QTest::newRow("date read") << 1 << 4 << "Series: None";
        QTest::newRow("book name") << 2 << 4 << "Series: None";
        QTest::newRow("author") << 3 << 4 << "Series: None";
        QTest::newRow("genre") << 4 << 4 << "Series: None";
        QTest::newRow("rating") << 5 << 4 << "Series: ";
        QTest::newRow("series") << 6 << 0 << "Series: None #0";
    }
    void missingSeriesShowsNoneExceptOnTheRatingCard()
    {
        QFETCH(int, option);
        QFETCH(int, slot);
        QFETCH(QString, text);
        TestApp t;
        t.insert(book(QStringLiteral("Standalone"), QStringLiteral("A")));
        ListStyleTableViewController list(&t.app());
        list.viewDidLoad();
        list.viewWillAppear();
        list.selectSortOption(option);
        QCOMPARE(list.model()->label(0, slot), text);
    }

    void dateReadCardFallsBackToDt()
    {
        TestApp t;
        Books b = book(QStringLiteral("Undated"), QStringLiteral("A"));
        b.dt = QStringLiteral("sometime");
        t.insert(b);
        ListStyleTableViewController list(&t.app());
        list.viewDidLoad();
        list.viewWillAppear();
        QCOMPARE(list.model()->label(0, 0), QStringLiteral("Date Read: sometime"));
    }

    void searchFollowsTheSortField()
    {
        TestApp t;
        fillYear(t);
        ListStyleTableViewController list(&t.app());
        QAbstractItemModelTester tester(list.model(), QAbstractItemModelTester::FailureReportingMode::QtTest);
        list.viewDidLoad();
        list.viewWillAppear();
        list.setSearchText(QStringLiteral("2021-0"));
        QCOMPARE(names(list), (QStringList{"Book 9", "Book 8", "Book 7", "Book 6", "Book 5", "Book 4", "Book 3",
                                           "Book 2", "Book 1"}));
        QCOMPARE(list.header(), QStringLiteral("9 Books"));
        list.selectSortOption(3);
        QCOMPARE(list.searchText(), QStringLiteral("2021-0"));
        QCOMPARE(names(list), QStringList{"Odd one"});
        QCOMPARE(list.header(), QStringLiteral("1 Book"));
        list.setSearchText(QStringLiteral("MONTH 1"));
        QCOMPARE(names(list).size(), 4); // months 1, 10, 11, 12
        list.setSearchText(QString());
        QCOMPARE(list.header(), QStringLiteral("13 Books"));
    }

    void appearingWhileSearchingOnlyRefilters()
    {
        TestApp t;
        fillYear(t);
        ListStyleTableViewController list(&t.app());
        list.viewDidLoad();
        list.viewWillAppear();
        list.setSearchText(QStringLiteral("2021-1"));
        QCOMPARE(list.header(), QStringLiteral("3 Books"));
        readOn(t, QStringLiteral("Late"), QStringLiteral("B"), QDate(2021, 12, 31));
        list.viewWillAppear();
        QCOMPARE(list.header(), QStringLiteral("3 Books")); // no new fetch
        list.setSearchText(QString());
        list.viewWillAppear();
        QCOMPARE(list.header(), QStringLiteral("14 Books"));
    }

    void deleteRemovesFromTheStoreAndTheShownList()
    {
        TestApp t;
        fillYear(t);
        // The one deleted and brought back: its cover must come back with it.
        Books covered = t.allBooks().first();
        covered.pictureImage = QByteArray("cover bytes");
        QVERIFY(t.store().setCover(covered.pk, covered.pictureImage));
        ListStyleTableViewController list(&t.app());
        QAbstractItemModelTester tester(list.model(), QAbstractItemModelTester::FailureReportingMode::QtTest);
        list.viewDidLoad();
        list.viewWillAppear();
        const int row = int(names(list).indexOf(*covered.name));
        QSignalSpy deleted(&list, &ListStyleTableViewController::rowDeleted);
        list.deleteRow(row);
        QCOMPARE(deleted.value(0).value(0).toString(), *covered.name);
        QCOMPARE(t.allBooks().size(), 12);
        list.undoDelete();
        QCOMPARE(list.header(), QStringLiteral("13 Books"));
        QCOMPARE(names(list).indexOf(*covered.name), row);
        const QList<Books> all = t.allBooks();
        const auto back = std::find_if(all.begin(), all.end(), [&](const Books &b) { return b.name == covered.name; });
        QVERIFY(back != all.end());
        covered.pk = back->pk;
        QCOMPARE(*back, covered);
        list.undoDelete(); // only once
        QCOMPARE(t.allBooks().size(), 13);

        list.deleteRow(0);
        QCOMPARE(list.header(), QStringLiteral("12 Books"));
        QCOMPARE(t.allBooks().size(), 12);
        QVERIFY(!names(list).contains(QStringLiteral("Book 12")));
        list.setSearchText(QStringLiteral("2021-03"));
        list.deleteRow(0);
        QCOMPARE(list.header(), QStringLiteral("0 Books"));
        QCOMPARE(t.allBooks().size(), 11);
    }

    void tapCopiesTheBookIntoCurrentBook()
    {
        TestApp t;
        Books b = readOn(t, QStringLiteral("Dune"), QStringLiteral("Frank Herbert"), QDate(2021, 3, 4));
        b.subTitle = QStringLiteral("S");
        b.bookPublisher = QStringLiteral("Chilton");
        b.isbn = QStringLiteral("978");
        b.category = QStringLiteral("SF");
        b.rating = QStringLiteral("*****");
        b.series = QStringLiteral("Dune");
        b.seriesNumber = 1;
        b.publishDate = 1965;
        b.numberPages = 412;
        b.notes = QStringLiteral("n");
        QVERIFY(t.store().updateBook(b));
        QVERIFY(t.store().setCover(b.pk, QByteArray("jpeg bytes")));
        t.app().state().currentBook.bookFormat = QStringLiteral("stale");
        ListStyleTableViewController list(&t.app());
        list.viewDidLoad();
        list.viewWillAppear();
        QVERIFY(list.model()->data(list.model()->index(0), ListStyleModel::CoverSourceRole).toString()
                   .startsWith(QStringLiteral("image://cover/%1/").arg(b.pk)));
        t.app().state().setCallingScreen(QStringLiteral("MainMenu"));
        QSignalSpy navigated(&list, &ScreenController::navigate);
        list.selectRow(0);
        QCOMPARE(navigated.size(), 1);
        QCOMPARE(navigated.first().first().toString(), QStringLiteral("Detail"));
        QCOMPARE(t.app().state().callingScreen(), QStringLiteral("Master"));
        const Books &c = t.app().state().currentBook;
        QCOMPARE(c.name, b.name);
        QCOMPARE(c.subTitle, b.subTitle);
        QCOMPARE(c.author, b.author);
        QCOMPARE(c.bookPublisher, b.bookPublisher);
        QCOMPARE(c.isbn, b.isbn);
        QCOMPARE(c.category, b.category);
        QCOMPARE(c.rating, b.rating);
        QCOMPARE(c.series, b.series);
        QCOMPARE(c.seriesNumber, b.seriesNumber);
        QCOMPARE(c.publishDate, b.publishDate);
        QCOMPARE(c.numberPages, b.numberPages);
        QCOMPARE(c.notes, b.notes);
        QCOMPARE(c.dt, QStringLiteral("Mar 4, 2021"));
        QCOMPARE(c.pictureImage, QByteArray("jpeg bytes"));
        QCOMPARE(c.bookFormat, std::nullopt); // every field is overwritten
    }
};

QTEST_MAIN(TestListStyle)
#include "tst_liststyletableviewcontroller.moc"
