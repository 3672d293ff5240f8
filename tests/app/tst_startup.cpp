#include "app/launchtasks.h"
#include "app/mainmenuviewcontroller.h"
#include "support/imagefixtures.h"
#include "support/logcapture.h"
#include "support/testapp.h"

#include <QImage>
#include <QTest>
#include <QTimeZone>

using namespace tomewise;
using namespace tomewise::test;

namespace {

// A book read on the given day, as its date fields store it.
Books read(const QString &name, int year, int month, int day)
{
    Books b = book(name, QStringLiteral("Jane Austen"));
    b.year = qint16(year);
    b.month = qint16(month);
    b.day = qint16(day);
    return b;
}

// One start of the app over its library: what the repair did.
LaunchTasks::RepairCounts start(TestApp &t)
{
    MainMenuViewController menu(&t.app());
    menu.viewDidLoad();
    return menu.lastRepair();
}

} // namespace

class TestStartup : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void firstLaunchSeedsOnce()
    {
        TestApp t;
        LogCapture log;
        MainMenuViewController first(&t.app());
        first.viewDidLoad();
        QCOMPARE(log.lines("tomewise.app"), (QStringList{"First Launch", "Date Not Fixed Yet"}));
        QCOMPARE(t.entryNames(Entity::GenreList), LaunchTasks::starterGenres());
        QCOMPARE(t.entryNames(Entity::RatingList), (QStringList{"*", "**", "***", "****", "*****"}));
        QVERIFY(t.entryNames(Entity::SeriesList).isEmpty());
        QVERIFY(t.app().userDefaults().boolValue(SettingsKey::AboutHasBeenLaunchedBefore));
        QVERIFY(!t.app().userDefaults().contains(SettingsKey::DateHasBeenFixedBefore));

        // A second launch of the process reads the flag back from the settings file.
        log.clear();
        auto again = t.relaunch();
        MainMenuViewController second(again.get());
        second.viewDidLoad();
        QCOMPARE(log.lines("tomewise.app"), (QStringList{"Not First Launch", "Date Not Fixed Yet"}));
        QCOMPARE(t.entryNames(Entity::GenreList), LaunchTasks::starterGenres());
        QCOMPARE(t.entryNames(Entity::RatingList).size(), 5);
    }

    void resetsNavigationValues()
    {
        TestApp t;
        t.app().state().setCallingScreen(QStringLiteral("GenreBreakdown"));
        t.app().state().setListMode(QStringLiteral("Graphic"));
        t.insert(book(QStringLiteral("Dune"), QStringLiteral("Frank Herbert")));
        MainMenuViewController menu(&t.app());
        menu.viewDidLoad();
        QCOMPARE(t.app().state().callingScreen(), QStringLiteral("MainMenu"));
        QCOMPARE(t.app().state().listMode(), QString());
        QCOMPARE(menu.bookList().size(), 1);
    }

    void repairRebuildsTheDay_data()
    {
        QTest::addColumn<QByteArray>("zone");
        QTest::addColumn<int>("year");
        QTest::addColumn<int>("month");
        QTest::addColumn<int>("day");
        QTest::addColumn<QDate>("expectedDay");
        QTest::newRow("New York") << QByteArray("America/New_York") << 2021 << 3 << 5 << QDate(2021, 3, 5);
        QTest::newRow("Tokyo") << QByteArray("Asia/Tokyo") << 2021 << 3 << 5 << QDate(2021, 3, 5);
        QTest::newRow("Kiritimati") << QByteArray("Pacific/Kiritimati") << 2021 << 3 << 5 << QDate(2021, 3, 5);
        // The calendar is lenient: day 31 of February rolls into March.
        QTest::newRow("rolls over") << QByteArray("Europe/Berlin") << 2021 << 2 << 31 << QDate(2021, 3, 3);
        // A book saved without a date reads 0/0/0 and still gets a day: 30 November, 2 BC.
        QTest::newRow("zeros") << QByteArray("UTC") << 0 << 0 << 0 << QDate(-2, 11, 30);
    }

    void repairRebuildsTheDay()
    {
        QFETCH(QByteArray, zone);
        QFETCH(int, year);
        QFETCH(int, month);
        QFETCH(int, day);
        QFETCH(QDate, expectedDay);

        TestApp t(zone);
        Books b = year || month || day ? read(QStringLiteral("Emma"), year, month, day)
                                       : book(QStringLiteral("Emma"), QStringLiteral("Jane Austen"));
        b.dateRead = QDateTime(QDate(1999, 12, 31), QTime(13, 14, 15), Qt::UTC); // wrong on purpose
        t.insert(b);
        QCOMPARE(start(t).repaired, 1);

        const Books repaired = t.allBooks().first();
        QVERIFY(repaired.dateRead);
        const QDateTime local = repaired.dateRead->toTimeZone(QTimeZone(zone));
        if (expectedDay.year() > 0) // QDateTime's proleptic calendar differs from ICU's before 1582
            QCOMPARE(local, QDateTime(expectedDay, QTime(0, 0), QTimeZone(zone)));
        else
            QVERIFY(local.date().year() < 0);
    }

    void repairLeavesDuplicatesAlone()
    {
        TestApp t;
        const QDateTime wrong(QDate(2000, 1, 1), QTime(12, 0), Qt::UTC);
        const QByteArray cover = encode(coverImage(), "jpeg", 90);
        Books twin = read(QStringLiteral("Emma"), 2021, 3, 5);
        twin.dateRead = wrong;
        twin.pictureImage = cover;
        t.insert(twin);
        t.insert(twin);
        // Title and author compare exactly: this one is unique.
        t.insert(read(QStringLiteral("emma"), 2021, 3, 5));

        QCOMPARE(start(t).repaired, 1);
        const auto books = t.allBooks();
        for (int i = 0; i < 2; ++i) {
            QCOMPARE(books[i].dateRead, std::optional<QDateTime>(wrong));
            QCOMPARE(books[i].pictureImage, std::optional<QByteArray>(cover));
        }
        QVERIFY(books[2].dateRead);
    }

    void namelessBooksDoNotStopTheStart()
    {
        TestApp t;
        Books noAuthor;
        noAuthor.name = QStringLiteral("Untitled");
        noAuthor.dt = QStringLiteral("Mar 4, 2021");
        Books noName;
        noName.author = QStringLiteral("Anonymous");
        noName.pictureImage = encode(coverImage(), "jpeg", 90);
        const Books nothing = t.insert(Books());
        t.insert(noAuthor);
        noName = t.insert(noName);
        t.insert(book(QStringLiteral("Emma"), QStringLiteral("Jane Austen")));
        const QList<Books> before = t.allBooks();
        LogCapture log;
        QCOMPARE(start(t).repaired, 1);
        QCOMPARE(log.lines("tomewise.app").mid(1),
                 (QStringList{"Date Not Fixed Yet",
                              QStringLiteral("A book without a name is left as it is: record %1").arg(nothing.pk),
                              QStringLiteral("A book without an author is left as it is: \u201CUntitled\u201D, read Mar 4, 2021"),
                              "A book without a name is left as it is: by Anonymous"}));
        const QList<Books> after = t.allBooks();
        QCOMPARE(after.mid(0, 3), before.mid(0, 3)); // untouched, cover included
        QVERIFY(after[3].dateRead);                  // the rest of the library is still repaired
    }

    void repairReencodesCovers_data()
    {
        QTest::addColumn<QByteArray>("cover");
        QTest::addColumn<bool>("reencoded");
        QTest::addColumn<bool>("shrinks");
        QTest::newRow("jpeg") << encode(coverImage(), "jpeg", 90) << true << true;
        // Any picture format is re-encoded, as JPEG; a small PNG may even grow.
        QTest::newRow("png") << encode(coverImage(QSize(125, 180)), "png") << true << false;
        QTest::newRow("not an image") << QByteArray("plain words, not a picture") << false << false;
        QTest::newRow("empty") << QByteArray("") << false << false;
    }

    void repairReencodesCovers()
    {
        QFETCH(QByteArray, cover);
        QFETCH(bool, reencoded);
        QFETCH(bool, shrinks);
        TestApp t;
        Books b = book(QStringLiteral("Emma"), QStringLiteral("Jane Austen"));
        b.pictureImage = cover;
        t.insert(b);
        const LaunchTasks::RepairCounts repair = start(t);
        const QByteArray after = *t.allBooks().first().pictureImage;
        if (!reencoded) {
            QCOMPARE(after, cover);
            return;
        }
        QVERIFY(after.startsWith("\xFF\xD8")); // JPEG
        if (shrinks)
            QVERIFY2(after.size() < cover.size() / 2, qPrintable(QStringLiteral("%1 -> %2").arg(cover.size()).arg(after.size())));
        QImage decoded;
        QVERIFY(decoded.loadFromData(after));
        QCOMPARE(decoded.size(), QImage::fromData(cover).size());
        QCOMPARE(repair.covers, 1);
    }

    // Each start gives a cover the bytes of one re-encoding; once those bytes come
    // back unchanged, later starts skip it until the cover is written again.
    void settledCoversAreSkippedUntilTheyChange()
    {
        TestApp t;
        Books b = book(QStringLiteral("Emma"), QStringLiteral("Jane Austen"));
        b.pictureImage = encode(coverImage(), "jpeg", 90);
        b = t.insert(b);
        QList<LaunchTasks::RepairCounts> starts;
        QList<QByteArray> covers;
        for (int i = 0; i < 4; ++i) {
            if (i == 3)
                QVERIFY(t.store().setCover(b.pk, encode(coverImage(QSize(90, 120)), "jpeg", 90)));
            const QByteArray before = *t.store().cover(b.pk);
            starts << start(t);
            covers << *t.store().cover(b.pk);
            // Whether skipped or not, the cover holds what one more re-encoding gives.
            QCOMPARE(covers.constLast(), *LaunchTasks::reencodeJpeg(before, 0.05));
        }
        QCOMPARE(starts[0].covers, 1);
        QCOMPARE(starts[2].covers, 0); // settled by now: decoded no more
        QCOMPARE(starts[2].fixedCovers, 1);
        QCOMPARE(starts[3].covers, 1); // a new cover is re-encoded again
    }

    void slicedStartUpEndsAsTheWholeOne()
    {
        TestApp t;
        for (int i = 0; i < 40; ++i) {
            Books b = read(QStringLiteral("Book %1").arg(i), 2021, 3, 1 + i % 28);
            b.pictureImage = encode(coverImage(QSize(60, 90), i), "jpeg", 90);
            t.insert(b);
        }
        MainMenuViewController menu(&t.app());
        menu.viewDidLoadInSlices();
        QTRY_VERIFY_WITH_TIMEOUT(!menu.repairing(), 60000);
        QCOMPARE(menu.lastRepair().repaired, 40);
        QCOMPARE(menu.lastRepair().covers, 40);
        QCOMPARE(t.allBooks(false).first().dateRead, t.app().dateText().startOfDay(2021, 3, 1));
    }

    void tabBarSegueHidesTheBar()
    {
        TestApp t;
        MainMenuViewController menu(&t.app());
        QStringList targets;
        connect(&menu, &ScreenController::navigate, this, [&](const QString &target) { targets << target; });
        menu.openEntry(0);
        QVERIFY(!menu.navigationBarHidden());
        menu.openEntry(1);
        QVERIFY(menu.navigationBarHidden());
        menu.viewWillAppear();
        QVERIFY(!menu.navigationBarHidden());
        QCOMPARE(targets, (QStringList{"ListStyle", "TabBarController"}));
    }
};

QTEST_MAIN(TestStartup)
#include "tst_startup.moc"
