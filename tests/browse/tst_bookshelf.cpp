// The A-Z list, the picture list and the cover grid over the windowed model.
#include "app/mainmenuviewcontroller.h"
#include "browse/bookshelfviewcontroller.h"
#include "support/testapp.h"

#include <QAbstractItemModelTester>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QSignalSpy>
#include <QTest>

using namespace tomewise;
using namespace tomewise::test;

class TestBookShelf : public QObject
{
    Q_OBJECT

private:
    static Books readOn(TestApp &t, const QString &name, const QString &author, QDate day)
    {
        Books b = book(name, author);
        b.dateRead = t.app().dateText().startOfDay(day.year(), day.month(), day.day());
        b.dt = t.app().dateText().format(*b.dateRead, DateText::Style::Medium);
        return t.insert(b);
    }

    // "[letter]" before each section, then the titles, as the command line prints them.
    static QStringList rows(BookShelfViewController &shelf)
    {
        QStringList out;
        QString section;
        for (int row = 0; row < shelf.model()->rowCount(); ++row) {
            if (shelf.mode() == u"az" && shelf.model()->section(row) != section)
                out << u'[' + (section = shelf.model()->section(row)) + u']';
            out << shelf.model()->book(row).name.value_or(QString());
        }
        return out;
    }

    static void fill(TestApp &t)
    {
        int day = 0;
        for (const char *title : {"zebra", "1984", "Émile", "apple", "Ångström", "emma", "!Bang", "Moby Dick"}) {
            ++day;
            readOn(t, QString::fromUtf8(title), QStringLiteral("Writer %1").arg(day), QDate(2020, 1, day));
        }
    }

private Q_SLOTS:
    void orderSectionsAndSearch_data()
    {
        QTest::addColumn<QString>("mode");
        QTest::addColumn<QString>("search");
        QTest::addColumn<QStringList>("expected");
        QTest::newRow("az") << "az" << ""
                            << QStringList{"[A]", "Ångström", "apple", "[E]", "Émile", "emma", "[M]", "Moby Dick",
                                           "[Z]", "zebra", "[#]", "!Bang", "1984"};
        QTest::newRow("az search keeps sections") << "az" << "EM"
                                                  << QStringList{"[E]", "emma"};
        QTest::newRow("az accented search") << "az" << "ÉMI" << QStringList{"[E]", "Émile"};
        QTest::newRow("az author search") << "az" << "writer 8" << QStringList{"[M]", "Moby Dick"};
        QTest::newRow("pictures newest first") << "pictures" << ""
                                               << QStringList{"Moby Dick", "!Bang", "emma", "Ångström", "apple",
                                                              "Émile", "1984", "zebra"};
        QTest::newRow("grid search") << "grid" << "a" << QStringList{"!Bang", "emma", "apple", "zebra"};
    }
    void orderSectionsAndSearch()
    {
        QFETCH(QString, mode);
        QFETCH(QString, search);
        QFETCH(QStringList, expected);
        TestApp t;
        fill(t);
        BookShelfViewController shelf(&t.app());
        QAbstractItemModelTester tester(shelf.model(), QAbstractItemModelTester::FailureReportingMode::QtTest);
        shelf.setMode(mode);
        shelf.viewDidLoad();
        shelf.viewWillAppear();
        shelf.setSearchText(search);
        QCOMPARE(rows(shelf), expected);
        const int n = shelf.model()->rowCount();
        QCOMPARE(shelf.header(), QString::number(n) + (n == 1 ? " Book" : " Books"));
    }

    void indexJumpsToTheLetterOrTheNextOne_data()
    {
        QTest::addColumn<QString>("letter");
        QTest::addColumn<QString>("title");
        QTest::newRow("E") << "E" << "Émile";
        QTest::newRow("B, none: E") << "B" << "Émile";
        QTest::newRow("N, none: Z") << "N" << "zebra";
        QTest::newRow("#") << "#" << "!Bang";
    }
    void indexJumpsToTheLetterOrTheNextOne()
    {
        QFETCH(QString, letter);
        QFETCH(QString, title);
        TestApp t;
        fill(t);
        BookShelfViewController shelf(&t.app());
        shelf.viewDidLoad();
        shelf.viewWillAppear();
        QCOMPARE(shelf.alphabet().mid(0, 3), (QStringList{"A", "B", "C"}));
        QCOMPARE(shelf.alphabet().constLast(), QStringLiteral("#"));
        QCOMPARE(shelf.model()->book(shelf.rowOfLetter(letter)).name, title);
    }

    void switchingReordersInPlace()
    {
        TestApp t;
        fill(t);
        BookShelfViewController shelf(&t.app());
        shelf.viewDidLoad();
        shelf.viewWillAppear();
        QCOMPARE(shelf.choosePresentation(QStringLiteral("pictures")), QStringLiteral("BookShelf"));
        QCOMPARE(rows(shelf).first(), QStringLiteral("Moby Dick"));
        shelf.choosePresentation(QStringLiteral("az"));
        QCOMPARE(rows(shelf).first(), QStringLiteral("[A]"));
    }

    void aRenamedBookMovesToItsNewLetter()
    {
        TestApp t;
        fill(t);
        BookShelfViewController shelf(&t.app());
        shelf.viewDidLoad();
        shelf.viewWillAppear();
        Books zebra = shelf.model()->book(shelf.rowOfLetter(QStringLiteral("Z")));
        zebra.name = QStringLiteral("Bee");
        QVERIFY(t.store().updateBook(zebra));
        shelf.unwindToList();
        QCOMPARE(rows(shelf).mid(0, 5), (QStringList{"[A]", "Ångström", "apple", "[B]", "Bee"}));
    }

    void presentationIsRecordedAndRemembered_data()
    {
        QTest::addColumn<QString>("presentation");
        QTest::addColumn<QString>("listMode");
        QTest::addColumn<QString>("target");
        QTest::newRow("cards") << "cards" << "List" << "ListStyle";
        QTest::newRow("az") << "az" << "List" << "BookShelf";
        QTest::newRow("pictures") << "pictures" << "Graphic" << "BookShelf";
        QTest::newRow("grid") << "grid" << "Graphic" << "BookShelf";
    }
    void presentationIsRecordedAndRemembered()
    {
        QFETCH(QString, presentation);
        QFETCH(QString, listMode);
        QFETCH(QString, target);
        TestApp t;
        BookShelfViewController shelf(&t.app());
        shelf.viewDidLoad();
        QCOMPARE(shelf.choosePresentation(presentation), target);
        QCOMPARE(t.app().state().listMode(), listMode);
        // The next launch's menu opens the same list, and sets listMode for it.
        auto next = t.relaunch();
        MainMenuViewController menu(next.get());
        menu.viewDidLoad();
        QCOMPARE(next->state().listMode(), QString());
        QSignalSpy navigated(&menu, &ScreenController::navigate);
        menu.openEntry(0);
        QCOMPARE(navigated.value(0).value(0).toString(), target);
        QCOMPARE(next->state().listMode(), listMode);
    }

    void deleteWhileSearchingAndTap()
    {
        TestApp t;
        fill(t);
        BookShelfViewController shelf(&t.app());
        QAbstractItemModelTester tester(shelf.model(), QAbstractItemModelTester::FailureReportingMode::QtTest);
        shelf.viewDidLoad();
        shelf.viewWillAppear();
        shelf.setSearchText(QStringLiteral("M"));
        shelf.deleteRow(2); // emma
        QCOMPARE(rows(shelf), (QStringList{"[A]", "Ångström", "[E]", "Émile", "[M]", "Moby Dick"}));
        QCOMPARE(t.allBooks().size(), 7);
        QSignalSpy navigated(&shelf, &ScreenController::navigate);
        shelf.selectRow(1);
        QCOMPARE(navigated.value(0).value(0).toString(), QStringLiteral("Detail"));
        QCOMPARE(t.app().state().currentBook.name, QStringLiteral("Émile"));
        QCOMPARE(t.app().state().callingScreen(), QStringLiteral("Master"));
    }

    // The search keeps what it compares between keystrokes; whatever changes
    // the store in between must show in the next search.
    void searchSeesTheStoreAsItIs_data()
    {
        QTest::addColumn<QString>("change");
        QTest::addColumn<QString>("search");
        QTest::addColumn<QStringList>("expected");
        QTest::newRow("renamed here") << "rename" << "quag" << QStringList{"Quagga"};
        QTest::newRow("added here") << "add" << "zebra" << QStringList{"zebra", "Quiet zebra"};
        QTest::newRow("renamed by another connection") << "other" << "quag" << QStringList{"Quagga"};
        QTest::newRow("deleted while searching") << "delete" << "m" << QStringList{"Moby Dick", "Ångström", "Émile"};
        QTest::newRow("never across title and author") << "" << "zebrawriter" << QStringList{};
        QTest::newRow("never across two books") << "" << "1moby" << QStringList{};
    }
    void searchSeesTheStoreAsItIs()
    {
        QFETCH(QString, change);
        QFETCH(QString, search);
        QFETCH(QStringList, expected);
        TestApp t;
        fill(t);
        BookShelfViewController shelf(&t.app());
        shelf.setMode(QStringLiteral("grid"));
        shelf.viewDidLoad();
        shelf.viewWillAppear();
        shelf.setSearchText(QStringLiteral("e"));
        const QString db = t.store().database().databaseName();
        if (change == u"rename" || change == u"other") {
            Books zebra = t.allBooks().constLast();
            for (const Books &b : t.allBooks()) {
                if (b.name == u"zebra")
                    zebra = b;
            }
            if (change == u"rename") {
                zebra.name = QStringLiteral("Quagga");
                QVERIFY(t.store().updateBook(zebra));
            } else {
                QSqlDatabase other = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("other"));
                other.setDatabaseName(db);
                QVERIFY(other.open());
                QSqlQuery q(other);
                QVERIFY(q.exec(QStringLiteral("UPDATE Books SET name = 'Quagga' WHERE pk = %1").arg(zebra.pk)));
            }
        } else if (change == u"add") {
            readOn(t, QStringLiteral("Quiet zebra"), QStringLiteral("Someone"), QDate(2019, 1, 1));
        } else if (change == u"delete") {
            shelf.deleteRow(2); // emma, read third-last
            QCOMPARE(t.allBooks().size(), 7);
        }
        if (change == u"other")
            QSqlDatabase::removeDatabase(QStringLiteral("other"));
        // A delete leaves the list as it is; anything else comes back from the detail screen.
        if (change != u"delete")
            shelf.unwindToList();
        shelf.setSearchText(search);
        QCOMPARE(rows(shelf), expected);
    }

    // A list longer than the rows it keeps: every row reads right, and only a
    // few pages are held however far it is scrolled.
    void longListHoldsAWindow()
    {
        TestApp t;
        constexpr int n = BookWindowModel::kPageSize * (BookWindowModel::kPagesKept + 3);
        {
            BookStore::Transaction tx(t.store());
            for (int i = 0; i < n; ++i) {
                Books b = book(QStringLiteral("Title %1").arg(i, 4, 10, QChar(u'0')), QStringLiteral("A"));
                t.store().insertBook(b);
            }
            QVERIFY(tx.commit());
        }
        BookShelfViewController shelf(&t.app());
        QAbstractItemModelTester tester(shelf.model(), QAbstractItemModelTester::FailureReportingMode::QtTest);
        shelf.viewDidLoad();
        shelf.viewWillAppear();
        QCOMPARE(shelf.model()->rowCount(), n);
        for (int row : {0, n - 1, n / 2, 1, n - 2}) {
            QCOMPARE(shelf.model()->data(shelf.model()->index(row), BookWindowModel::NameRole).toString(),
                     QStringLiteral("Title %1").arg(row, 4, 10, QChar(u'0')));
        }
        for (int row = 0; row < n; ++row)
            shelf.model()->data(shelf.model()->index(row), BookWindowModel::NameRole);
        QVERIFY(shelf.model()->heldRows() <= BookWindowModel::kPageSize * BookWindowModel::kPagesKept);
        shelf.setSearchText(QStringLiteral("title 01"));
        QCOMPARE(shelf.model()->rowCount(), 100);
        shelf.deleteRow(99);
        QCOMPARE(shelf.model()->book(98).name, QStringLiteral("Title 0198"));
    }
};

QTEST_MAIN(TestBookShelf)
#include "tst_bookshelf.moc"
