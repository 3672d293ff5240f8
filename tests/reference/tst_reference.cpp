// The reference lists: load order, sort, search, delete, add, rename, series
// seeding, selection, and the command line over the same screens.
#include "support/clirun.h"
#include "support/testapp.h"

#include "app/pagedirectory.h"
#include "reference/referenceaddcontroller.h"
#include "reference/referenceeditcontroller.h"
#include "reference/referencetablecontroller.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using namespace tomewise;
using tomewise::test::CliRun;
using tomewise::test::runCli;
using tomewise::test::TestApp;

Q_DECLARE_METATYPE(tomewise::ReferenceKind)

namespace {

Entity entityOf(ReferenceKind kind)
{
    return referenceKind(kind).entity;
}

void put(TestApp &t, ReferenceKind kind, const QStringList &names)
{
    for (const QString &name : names) {
        ReferenceEntry e;
        e.value = name;
        QVERIFY(t.store().insertEntry(entityOf(kind), e));
    }
}

// A list screen opened as the hub opens it, after its queued first load.
struct OpenList
{
    OpenList(TestApp &t, ReferenceKind kind)
        : ctl(kind, &t.app(), nullptr)
        , tester(ctl.rows(), QAbstractItemModelTester::FailureReportingMode::QtTest)
    {
        QSignalSpy loaded(&ctl, &ReferenceTableController::listReloaded);
        ctl.viewDidLoad();
        QVERIFY(loaded.wait(2000));
    }
    QStringList shown() const
    {
        QStringList names;
        const auto *rows = const_cast<ReferenceTableController &>(ctl).rows();
        for (int i = 0; i < rows->rowCount(); ++i) {
            const QVariant v = rows->data(rows->index(i), Qt::UserRole);
            names << (v.isValid() ? v.toString() : QStringLiteral("<absent>"));
        }
        return names;
    }
    ReferenceTableController ctl;
    QAbstractItemModelTester tester;
};

const QStringList kGenres{"Mystery", "Crime", "Science Fiction", "Fiction", "Non-fiction", "Horror"};
const QStringList kRatings{"***", "*", "*****", "**", "****"};

} // namespace

class TestReference : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void kindTableMatchesPages();
    void sortToggle_data();
    void sortToggle();
    void search_data();
    void search();
    void deleteDuringSearch_data();
    void deleteDuringSearch();
    void add_data();
    void add();
    void rename_data();
    void rename();
    void seriesSeeding();
    void cliListAndRename();
};

void TestReference::kindTableMatchesPages()
{
    // Other screens open these targets by name; each must have a page.
    const PageDirectory pages;
    for (const auto &info : kReferenceKinds) {
        for (const char *target : {info.listTarget, info.addTarget, info.editTarget})
            QVERIFY2(pages.isBuilt(QLatin1String(target)), target);
        QCOMPARE(pages.title(QLatin1String(info.listTarget)), QLatin1String(info.listTitle));
    }
    QVERIFY(pages.isBuilt(QStringLiteral("ReferenceList")));
}

void TestReference::sortToggle_data()
{
    QTest::addColumn<ReferenceKind>("kind");
    QTest::addColumn<QStringList>("names");
    QTest::addColumn<QStringList>("ascending");
    QTest::addColumn<bool>("toggles");
    QTest::newRow("genre") << ReferenceKind::Genre << QStringList{"b", "Crime", "alpha", "Zed"}
                           << QStringList{"Crime", "Zed", "alpha", "b"} << true;
    QTest::newRow("rating") << ReferenceKind::Rating << kRatings
                            << QStringList{"*", "**", "***", "****", "*****"} << true;
    QTest::newRow("series always ascending") << ReferenceKind::Series << QStringList{"Dune", "Alpha", "Culture"}
                                             << QStringList{"Alpha", "Culture", "Dune"} << false;
}

void TestReference::sortToggle()
{
    QFETCH(ReferenceKind, kind);
    QFETCH(QStringList, names);
    QFETCH(QStringList, ascending);
    QFETCH(bool, toggles);
    TestApp t;
    put(t, kind, names);
    QStringList descending = ascending;
    std::reverse(descending.begin(), descending.end());
    {
        OpenList list(t, kind);
        QCOMPARE(list.shown(), ascending);
        list.ctl.SortButtonTapped();
        QCOMPARE(list.shown(), toggles ? descending : ascending);
        QCOMPARE(list.ctl.sortAsc(), !toggles);
        if (toggles)
            QCOMPARE(list.ctl.count(), qint16(names.size()));
    }
    // Each opening starts ascending again.
    OpenList reopened(t, kind);
    QCOMPARE(reopened.shown(), ascending);
    reopened.ctl.SortButtonTapped();
    reopened.ctl.SortButtonTapped();
    QCOMPARE(reopened.shown(), ascending);
}

void TestReference::search_data()
{
    QTest::addColumn<ReferenceKind>("kind");
    QTest::addColumn<QStringList>("names");
    QTest::addColumn<bool>("descending");
    QTest::addColumn<QString>("search");
    QTest::addColumn<QStringList>("expected"); // the last one is then picked
    QTest::newRow("capitals match") << ReferenceKind::Genre << kGenres << false << "MYST" << QStringList{"Mystery"};
    QTest::newRow("substring, list order kept") << ReferenceKind::Genre << kGenres << false << "ion"
                                                << QStringList{"Fiction", "Non-fiction", "Science Fiction"};
    QTest::newRow("descending order kept") << ReferenceKind::Genre << kGenres << true << "FICTION"
                                           << QStringList{"Science Fiction", "Non-fiction", "Fiction"};
    QTest::newRow("no trimming") << ReferenceKind::Genre << kGenres << false << " crime" << QStringList{};
    QTest::newRow("empty shows all") << ReferenceKind::Genre << QStringList{"B", "A"} << false << ""
                                     << QStringList{"A", "B"};
    QTest::newRow("rating") << ReferenceKind::Rating << kRatings << false << "****"
                            << QStringList{"****", "*****"};
    QTest::newRow("series") << ReferenceKind::Series << QStringList{"Dune", "Culture"} << false << ""
                            << QStringList{"Culture", "Dune"};
}

void TestReference::search()
{
    QFETCH(ReferenceKind, kind);
    QFETCH(QStringList, names);
    QFETCH(bool, descending);
    QFETCH(QString, search);
    QFETCH(QStringList, expected);
    TestApp t;
    put(t, kind, names);
    ReferenceEntry absent; // entries without a name never match
    QVERIFY(t.store().insertEntry(entityOf(kind), absent));
    t.app().state().setCallingScreen(QStringLiteral("MainMenu"));
    OpenList list(t, kind);
    if (descending)
        list.ctl.SortButtonTapped();
    list.ctl.setSearchText(QStringLiteral("x"));
    list.ctl.setSearchText(search);
    if (search.isEmpty())
        expected.prepend(QStringLiteral("<absent>")); // NULL sorts first
    QCOMPARE(list.shown(), expected);
    if (expected.isEmpty())
        return;

    // A pick is from the rows shown.
    const QString picked = expected.last();
    list.ctl.didSelectRow(int(expected.size()) - 1);
    QCOMPARE(list.ctl.selectedName().toString(), picked);
    QCOMPARE(t.app().state().callingScreen(), QLatin1String(kind == ReferenceKind::Series ? "MainMenu" : "Master"));
    QCOMPARE(t.app().state().selectedGenreName(), kind == ReferenceKind::Genre ? picked : QString());
    QCOMPARE(t.app().state().selectedSeriesName(), kind == ReferenceKind::Series ? picked : QString());
    if (kind == ReferenceKind::Series) {
        // The series edit screen reads the selected name, not a passed entry.
        ReferenceEditController edit(kind, &t.app(), nullptr);
        edit.viewDidLoad();
        QCOMPARE(edit.text(), picked);
    }
}

void TestReference::deleteDuringSearch_data()
{
    QTest::addColumn<ReferenceKind>("kind");
    QTest::addColumn<QStringList>("names");
    QTest::addColumn<QString>("search");
    QTest::addColumn<QString>("victim");
    QTest::newRow("genre") << ReferenceKind::Genre << kGenres << "myst" << "Mystery";
    QTest::newRow("rating") << ReferenceKind::Rating << kRatings << "****" << "*****";
}

void TestReference::deleteDuringSearch()
{
    QFETCH(ReferenceKind, kind);
    QFETCH(QStringList, names);
    QFETCH(QString, search);
    QFETCH(QString, victim);
    TestApp t;
    put(t, kind, names);
    OpenList list(t, kind);
    list.ctl.setSearchText(search);
    const int row = int(list.shown().indexOf(victim));
    QVERIFY(row >= 0);
    list.ctl.deleteRow(row);
    QVERIFY(!t.entryNames(entityOf(kind)).contains(victim));
    QVERIFY(!list.shown().contains(victim));
    // Only the filtered array lost it: clearing the search brings it back...
    list.ctl.setSearchText(QString());
    QVERIFY(list.shown().contains(victim));
    // ...until the next load.
    list.ctl.unwindToTableView();
    QVERIFY(!list.shown().contains(victim));
    QCOMPARE(list.shown().size(), names.size() - 1);

    // Without a search the full list loses the row at once.
    const QString gone = list.shown().first();
    list.ctl.deleteRow(0);
    QCOMPARE(list.shown().size(), names.size() - 2);
    QCOMPARE(t.entryNames(entityOf(kind)).size(), names.size() - 2);
    // An undo after the order changed shows the entry where the new order puts it.
    list.ctl.SortButtonTapped();
    list.ctl.undoDelete();
    QVERIFY(list.shown().contains(gone));
    QStringList sorted = list.shown();
    std::sort(sorted.begin(), sorted.end(), std::greater<>());
    QCOMPARE(list.shown(), sorted);
}

void TestReference::add_data()
{
    QTest::addColumn<ReferenceKind>("kind");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("alert");   // empty: saved
    QTest::addColumn<QStringList>("after"); // stored names, ascending

    const QStringList crime{"Crime"};
    QTest::newRow("lower case is no duplicate") << ReferenceKind::Genre << "crime" << "" << QStringList{"Crime", "crime"};
    QTest::newRow("trailing blank: second Crime") << ReferenceKind::Genre << "Crime " << "" << QStringList{"Crime", "Crime"};
    QTest::newRow("leading tab trimmed") << ReferenceKind::Series << "\tCrime" << "" << QStringList{"Crime", "Crime"};
    QTest::newRow("three blanks: empty name") << ReferenceKind::Genre << "   " << "" << QStringList{"", "Crime"};
    QTest::newRow("duplicate genre") << ReferenceKind::Genre << "Crime" << "Duplicates not allowed" << crime;
    QTest::newRow("duplicate rating") << ReferenceKind::Rating << "Crime" << "Duplicates not allowed" << crime;
    QTest::newRow("duplicate series") << ReferenceKind::Series << "Crime" << "Duplicates not allowed" << crime;
    QTest::newRow("empty genre") << ReferenceKind::Genre << "" << "Genre not Entered" << crime;
    QTest::newRow("empty rating") << ReferenceKind::Rating << "" << "Rating not Entered" << crime;
    QTest::newRow("empty series says rating") << ReferenceKind::Series << "" << "Rating not Entered" << crime;
}

void TestReference::add()
{
    QFETCH(ReferenceKind, kind);
    QFETCH(QString, typed);
    QFETCH(QString, alert);
    QFETCH(QStringList, after);
    TestApp t;
    put(t, kind, {QStringLiteral("Crime")});
    ReferenceAddController add(kind, &t.app(), nullptr);
    QSignalSpy alerts(&add, &ScreenController::alert);
    QSignalSpy unwinds(&add, &ScreenController::unwind);
    add.viewDidLoad();
    add.setText(typed);
    add.save();

    QStringList stored = t.entryNames(entityOf(kind));
    stored.sort();
    QCOMPARE(stored, after);
    if (alert.isEmpty()) {
        QCOMPARE(alerts.count(), 0);
        QCOMPARE(unwinds.count(), 1);
        QCOMPARE(unwinds.first().first().toString(), QLatin1String(referenceKind(kind).unwindName));
    } else {
        QCOMPARE(alerts.count(), 1);
        QCOMPARE(alerts.first().mid(0, 3), QVariantList({QStringLiteral("Record not Saved!"), alert, QStringList{"OK"}}));
        QCOMPARE(unwinds.count(), 0);
        QCOMPARE(add.text(), typed); // the screen stays with its text
    }
}

void TestReference::rename_data()
{
    QTest::addColumn<ReferenceKind>("kind");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QStringList>("after");
    QTest::newRow("to empty, no alert") << ReferenceKind::Genre << "" << QStringList{"", "Crime", "Horror"};
    QTest::newRow("untrimmed") << ReferenceKind::Rating << " Noir " << QStringList{" Noir ", "Crime", "Horror"};
    QTest::newRow("to a duplicate") << ReferenceKind::Series << "Horror" << QStringList{"Crime", "Horror", "Horror"};
}

void TestReference::rename()
{
    QFETCH(ReferenceKind, kind);
    QFETCH(QString, typed);
    QFETCH(QStringList, after);
    TestApp t;
    // Two entries carry the old name: only the first the store returns changes.
    put(t, kind, {QStringLiteral("Crime"), QStringLiteral("Horror"), QStringLiteral("Crime")});
    Books b = tomewise::test::book(QStringLiteral("Gone"), QStringLiteral("Anon"));
    b.category = b.rating = b.series = QStringLiteral("Crime");
    t.insert(b);

    OpenList list(t, kind);
    QSignalSpy navigations(&list.ctl, &ScreenController::navigate);
    list.ctl.didSelectRow(0);
    QCOMPARE(navigations.count(), 1);
    QCOMPARE(navigations.first().first().toString(), QLatin1String(referenceKind(kind).editTarget));

    ReferenceEditController edit(kind, &t.app(), nullptr);
    edit.setPassedEntry(list.ctl.passedEntry());
    QSignalSpy alerts(&edit, &ScreenController::alert);
    QSignalSpy unwinds(&edit, &ScreenController::unwind);
    edit.viewDidLoad();
    QCOMPARE(edit.text(), QStringLiteral("Crime"));
    edit.setText(typed);
    edit.save();

    QStringList stored = t.entryNames(entityOf(kind));
    QCOMPARE(stored.first(), typed); // the first record with the old name
    stored.sort();
    QCOMPARE(stored, after);
    QCOMPARE(alerts.count(), 0);
    QCOMPARE(unwinds.count(), 1);
    QCOMPARE(unwinds.first().first().toString(), QLatin1String(referenceKind(kind).unwindName));
    const Books kept = t.allBooks(false).first();
    QCOMPARE(QList<Text>({kept.category, kept.rating, kept.series}), QList<Text>(3, QStringLiteral("Crime")));
}

void TestReference::seriesSeeding()
{
    TestApp t;
    {
        Books plain = tomewise::test::book(QStringLiteral("Alone"), QStringLiteral("Anon"));
        t.insert(plain);
        OpenList list(t, ReferenceKind::Series);
        QVERIFY(list.shown().isEmpty()); // no book has a series: nothing seeded
        QVERIFY(list.ctl.newSeriesList().isEmpty());
    }
    const QList<Text> series{QStringLiteral("Dune"), QStringLiteral("Culture"), QStringLiteral("Dune"),
                             QStringLiteral(""), QStringLiteral("dune"), std::nullopt};
    for (const Text &s : series) {
        Books b = tomewise::test::book(QStringLiteral("T"), QStringLiteral("A"));
        b.series = s;
        t.insert(b);
    }
    OpenList list(t, ReferenceKind::Series);
    // Distinct, case-sensitive, an empty text counts, an absent one does not.
    const QStringList seeded{"", "Culture", "Dune", "dune"};
    QCOMPARE(list.ctl.newSeriesList(), seeded);
    QCOMPARE(list.shown(), seeded);
    QCOMPARE(t.entryNames(Entity::SeriesList).size(), 4);

    // A reload by unwind does not seed...
    while (!list.shown().isEmpty())
        list.ctl.deleteRow(0);
    list.ctl.unwindToTableView();
    QVERIFY(list.shown().isEmpty());
    QVERIFY(t.entryNames(Entity::SeriesList).isEmpty());
    // ...a new opening does.
    OpenList reopened(t, ReferenceKind::Series);
    QCOMPARE(reopened.shown(), seeded);
}

void TestReference::cliListAndRename()
{
    // The command line drives the same screens; the refusals come out as its alerts.
    QTemporaryDir dir;
    const auto cli = [&](const QStringList &args) { return runCli(dir.path(), args); };
    QCOMPARE(cli({"start"}).status, 0);
    const CliRun dup = cli({"genre", "add", "Crime"});
    QCOMPARE(dup.status, 1);
    QVERIFY2(dup.err.contains(QStringLiteral("Record not Saved!: Duplicates not allowed")), qPrintable(dup.err));
    QCOMPARE(cli({"genre", "list", "--desc", "--search", "FICT"}).out, QStringLiteral("Science Fiction\nNon-fiction\nFiction\n"));
    QCOMPARE(cli({"rating", "rename", "**", "Two"}).status, 0);
    QCOMPARE(cli({"rating", "delete", "*"}).status, 0);
    QCOMPARE(cli({"rating", "list"}).out, QStringLiteral("***\n****\n*****\nTwo\n"));
    QCOMPARE(cli({"genre", "delete", "Nothing"}).status, 1);
}

QTEST_GUILESS_MAIN(TestReference)
#include "tst_reference.moc"
