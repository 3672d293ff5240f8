#include "app/launchtasks.h"
#include "app/mainmenuviewcontroller.h"
#include "support/imagefixtures.h"
#include "support/logcapture.h"
#include "support/testapp.h"

#include <QImage>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
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
        QCOMPARE(menu.lastRepair().books, 1);
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

    // Each start gives a cover the bytes of one more re-encoding, whoever wrote
    // it between starts: the app, or another program, even with the very bytes
    // the next start would have written. Only when nobody wrote it is the
    // cover known without decoding.
    void eachStartReencodesOnce_data()
    {
        QTest::addColumn<QString>("writer");
        QTest::addColumn<bool>("known");
        QTest::newRow("nobody") << QString() << true;
        QTest::newRow("the app, another cover") << "app" << false;
        QTest::newRow("another program, another cover") << "other" << false;
        QTest::newRow("another program, the next start's bytes") << "next" << false;
        QTest::newRow("another program, the same bytes") << "same" << false;
        QTest::newRow("another program removes it") << "delete" << false;
    }

    void eachStartReencodesOnce()
    {
        QFETCH(QString, writer);
        QFETCH(bool, known);
        // A cover that takes a few starts to settle, so that some of them are known ahead.
        auto starts = [](QByteArray c) {
            int n = 0;
            for (auto next = LaunchTasks::reencodeJpeg(c, 0.05); next && *next != c && n < 8;
                 next = LaunchTasks::reencodeJpeg(c, 0.05))
                c = *next, ++n;
            return n;
        };
        QByteArray cover;
        for (int seed = 0; starts(cover) < 3; ++seed) {
            QVERIFY(seed < 1000);
            cover = encode(coverImage(QSize(125, 180), seed), "jpeg", 90);
        }
        TestApp t;
        Books b = book(QStringLiteral("Emma"), QStringLiteral("Jane Austen"));
        b.pictureImage = cover;
        b = t.insert(b);
        const QByteArray other = encode(coverImage(QSize(90, 120)), "jpeg", 90);
        for (int i = 0; i < 5; ++i) {
            if (i == 1 && writer == u"app") {
                QVERIFY(t.store().setCover(b.pk, other));
            } else if (i == 1 && !writer.isEmpty()) {
                QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("other"));
                db.setDatabaseName(t.store().path());
                QVERIFY(db.open());
                QSqlQuery q(db);
                q.prepare(writer == u"delete" ? QStringLiteral("DELETE FROM BooksPictureImage WHERE book = ?")
                                              : QStringLiteral("UPDATE BooksPictureImage SET pictureImage = ? WHERE book = ?"));
                if (writer != u"delete") {
                    const QByteArray now = *t.store().cover(b.pk);
                    q.addBindValue(writer == u"next" ? *LaunchTasks::reencodeJpeg(now, 0.05)
                                                     : writer == u"same" ? now : other);
                }
                q.addBindValue(b.pk);
                QVERIFY2(q.exec(), qPrintable(q.lastError().text()));
                q = QSqlQuery();
                db = QSqlDatabase();
                QSqlDatabase::removeDatabase(QStringLiteral("other"));
            }
            const std::optional<QByteArray> before = t.store().cover(b.pk);
            const LaunchTasks::RepairCounts counts = start(t);
            QVERIFY(t.store().cover(b.pk) == (before ? LaunchTasks::reencodeJpeg(*before, 0.05) : std::nullopt));
            if (i == 1)
                QCOMPARE(counts.fixedCovers, int(known));
        }
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
