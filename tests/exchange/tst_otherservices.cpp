// Goodreads and StoryGraph exports: recognition, what each row becomes, the
// preview, the import and its list of rows left out, and the command line.
#include "exchange/importviewcontroller.h"
#include "exchange/servicefile.h"
#include "exchange/serviceimport.h"
#include "support/clirun.h"
#include "support/testapp.h"

#include <QBuffer>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using namespace tomewise;
using namespace tomewise::test;

namespace {

QString fixture(const char *name)
{
    return QStringLiteral(TOMEWISE_TEST_DATA "/exchange/") + QLatin1String(name);
}

void addGenres(TestApp &t)
{
    for (const char *g : {"Fantasy", "Mystery", "Science Fiction"}) {
        ReferenceEntry e;
        e.value = QString::fromLatin1(g);
        QVERIFY(t.store().insertEntry(Entity::GenreList, e));
    }
}

// An export opened for import; with `run`, imported whole.
std::unique_ptr<ServiceImport> imported(TestApp &t, const QString &path, bool includeUnread = false, bool run = true)
{
    QString error;
    auto import = ServiceImport::open(t.app(), path, includeUnread, &error);
    if (!import)
        qWarning() << error;
    else if (run)
        import->step(1 << 20);
    return import;
}

Books bookNamed(TestApp &t, const QString &title)
{
    for (const Books &b : t.allBooks(false)) {
        if (b.name == title)
            return b;
    }
    return {};
}

// A saved book as one comparable line: the attributes a row can set.
QString describe(const Books &b)
{
    auto text = [](const Text &t) { return t.value_or(QStringLiteral("-")); };
    auto number = [](const Int16 &n) { return n ? QString::number(*n) : QStringLiteral("-"); };
    return QStringList{text(b.author), text(b.isbn), text(b.bookPublisher), number(b.numberPages),
                       number(b.publishDate), text(b.bookFormat), text(b.rating), text(b.category),
                       text(b.series), number(b.seriesNumber), text(b.dt)}
        .join(u'|');
}

} // namespace

class TestOtherServices : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void recognise_data()
    {
        QTest::addColumn<QByteArray>("firstLine");
        QTest::addColumn<int>("kind");
        QTest::newRow("our marker") << QByteArray("[TOMEWISE]\n") << int(ServiceFile::Kind::OwnExport);
        QTest::newRow("goodreads, BOM, CRLF")
            << QByteArray("\xEF\xBB\xBF" "Book Id,Title,Author,Author l-f,ISBN\r\n1,a,b,c,d\r\n")
            << int(ServiceFile::Kind::Goodreads);
        QTest::newRow("storygraph, columns in any order")
            << QByteArray("Star Rating,Authors,Title,Read Status\n") << int(ServiceFile::Kind::StoryGraph);
        QTest::newRow("storygraph without a rating column")
            << QByteArray("Title,Authors,Read Status\n") << int(ServiceFile::Kind::OwnExport);
        QTest::newRow("a record of ours with commas")
            << QByteArray("Frank Herbert,,Ace^x\n[TOMEWISE]\n") << int(ServiceFile::Kind::OwnExport);
    }
    void recognise()
    {
        QFETCH(QByteArray, firstLine);
        QBuffer buffer(&firstLine);
        buffer.open(QIODevice::ReadOnly);
        QFETCH(int, kind);
        QCOMPARE(int(ServiceFile::recognise(&buffer)), kind);
        QCOMPARE(buffer.pos(), 0);
    }

    void rules_data()
    {
        QTest::addColumn<QString>("rule");
        QTest::addColumn<QString>("input");
        QTest::addColumn<QString>("expected");
        QTest::newRow("series with number") << "series" << "The Fellowship of the Ring (The Lord of the Rings, #1)"
                                            << "The Fellowship of the Ring|The Lord of the Rings|1";
        QTest::newRow("series, no comma") << "series" << "Ender's Game (Ender's Saga #1)" << "Ender's Game|Ender's Saga|1";
        QTest::newRow("series, no number") << "series" << "The Name of the Wind (The Kingkiller Chronicle)"
                                           << "The Name of the Wind|The Kingkiller Chronicle|";
        QTest::newRow("series, half number") << "series" << "Novella (Saga, #2.5)" << "Novella|Saga|2.5";
        QTest::newRow("brackets inside") << "series" << "Title (a) b" << "Title (a) b||";
        QTest::newRow("goodreads 0") << "goodreads" << "0" << "";
        QTest::newRow("goodreads 5") << "goodreads" << "5" << "*****";
        QTest::newRow("quarter down") << "storygraph" << "3.25" << "***";
        QTest::newRow("half up") << "storygraph" << "3.5" << "****";
        QTest::newRow("quarter to none") << "storygraph" << "0.25" << "";
        QTest::newRow("not a number") << "storygraph" << "n/a" << "";
        QTest::newRow("guard") << "unguard" << "=\"0261102354\"" << "0261102354";
        QTest::newRow("empty guard") << "unguard" << "=\"\"" << "";
        QTest::newRow("hardcover") << "format" << "Hardcover" << "Hard Cover";
        QTest::newRow("mass market") << "format" << "Mass Market Paperback" << "Paperback";
        QTest::newRow("kindle") << "format" << "Kindle Edition" << "Digital";
        QTest::newRow("audio as given") << "format" << "Audio CD" << "Audio CD";
        QTest::newRow("slash date") << "date" << "2023/05/04" << "2023-05-04";
        QTest::newRow("dash date") << "date" << "2023-5-4" << "2023-05-04";
        QTest::newRow("no such day") << "date" << "2023/02/30" << "";
        QTest::newRow("american date") << "date" << "05/04/2023" << "";
    }
    void rules()
    {
        QFETCH(QString, rule);
        QFETCH(QString, input);
        QString got;
        if (rule == u"series") {
            const auto s = ServiceFile::splitSeries(input);
            got = QStringList{s.title, s.series, s.number}.join(u'|');
        } else if (rule == u"goodreads" || rule == u"storygraph") {
            got = ServiceFile::stars(input, rule == u"goodreads" ? ServiceFile::Kind::Goodreads
                                                                  : ServiceFile::Kind::StoryGraph);
        } else if (rule == u"unguard") {
            got = ServiceFile::unguard(input);
        } else if (rule == u"format") {
            got = ServiceFile::formatName(input);
        } else {
            const auto d = ServiceFile::parseDate(input);
            got = d ? d->toString(Qt::ISODate) : QString();
        }
        QFETCH(QString, expected);
        QCOMPARE(got, expected);
    }

    void saved_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("expected");
        QTest::newRow("quoted commas, guard, series, 5 stars")
            << "goodreads.csv" << "The Fellowship of the Ring"
            << "J.R.R. Tolkien|9780261102354|HarperCollins, London|423|1991|Hard Cover|*****|Fantasy|"
               "The Lord of the Rings|1|May 14, 2023";
        QTest::newRow("ISBN10 with leading zero, unrated, original year, dash date")
            << "goodreads.csv" << "Dune"
            << "Frank Herbert|0441013597|Ace|604|1965|Paperback|-|Science Fiction|-|-|Mar 7, 2021";
        QTest::newRow("apostrophe, no date")
            << "goodreads.csv" << "Harry Potter and the Philosopher's Stone"
            << "J.K. Rowling|-|-|223|1997|Digital|****|Fantasy|Harry Potter|1|-";
        QTest::newRow("series without number, date not understood")
            << "goodreads.csv" << "The Name of the Wind"
            << "Patrick Rothfuss|-|-|-|-|Audiobook|***|-|The Kingkiller Chronicle|-|-";
        QTest::newRow("31 columns") << "goodreads-old.csv" << "Emma"
                                    << "Jane Austen|9780141439587|-|474|2003|Paperback|****|-|-|-|Jul 1, 2019";
        QTest::newRow("storygraph quarter stars, tags")
            << "storygraph.csv" << "Piranesi"
            << "Susanna Clarke|9781635575637|-|-|-|Hard Cover|****|Fantasy|-|-|Jan 10, 2022";
        QTest::newRow("storygraph first author, half up")
            << "storygraph.csv" << "Project Hail Mary" << "Andy Weir|-|-|-|-|Digital|*****|-|-|-|Feb 3, 2023";
        QTest::newRow("storygraph series, tag with blank")
            << "storygraph.csv" << "A Memory Called Empire"
            << "Arkady Martine|-|-|-|-|audio|**|Science Fiction|Teixcalaan|1|Nov 30, 2021";
    }
    void saved()
    {
        QFETCH(QString, file);
        QFETCH(QString, title);
        TestApp t;
        addGenres(t);
        QVERIFY(imported(t, fixture(qPrintable(file))));
        const Books b = bookNamed(t, title);
        QVERIFY2(b.name == title, qPrintable(title));
        QFETCH(QString, expected);
        QCOMPARE(describe(b), expected);
        // The date read is the form's: its day in all five fields.
        if (b.dt) {
            const auto day = t.app().dateText().parse(*b.dt, DateText::Style::Medium);
            QVERIFY(day);
            QCOMPARE(b.dateRead, *day);
            const auto c = t.app().dateText().components(*day);
            QCOMPARE(QList<Int16>({b.year, b.month, b.day}), QList<Int16>({c.year, c.month, c.day}));
        } else {
            QVERIFY(!b.dateRead && !b.year && !b.month && !b.day);
        }
    }

    void notesAndLineBreaks()
    {
        TestApp t;
        QVERIFY(imported(t, fixture("goodreads.csv")));
        QCOMPARE(bookNamed(t, QStringLiteral("The Fellowship of the Ring")).notes, QStringLiteral("Long, but \"worth it\".\nAgain?\n\nline one\nline two"));
        QStringList series = t.entryNames(Entity::SeriesList);
        series.sort();
        QCOMPARE(series, QStringList({QStringLiteral("Harry Potter"), QStringLiteral("The Kingkiller Chronicle"),
                                      QStringLiteral("The Lord of the Rings")}));
    }

    void counts_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<bool>("includeUnread");
        QTest::addColumn<QList<int>>("addUpdateSkip");
        QTest::addColumn<QString>("notes");
        QTest::newRow("goodreads") << "goodreads.csv" << false << QList<int>{4, 0, 4}
                                   << "Row 4 \"The Hobbit\": not read (to-read) (not imported)\n"
                                      "Row 5 \"Harry Potter and the Philosopher's Stone\": imported without a date read\n"
                                      "Row 6 \"Anonymous Poems\": no author (not imported)\n"
                                      "Row 7: no title (not imported)\n"
                                      "Row 8 \"The Name of the Wind\": imported without a date read: \"2020/13/45\" is "
                                      "not a date\n"
                                      "Row 9 \"Gödel, Escher, Bach\": not read (currently-reading) (not imported)\n";
        QTest::newRow("goodreads, every shelf") << "goodreads.csv" << true << QList<int>{6, 0, 2} << "";
        QTest::newRow("storygraph") << "storygraph.csv" << false << QList<int>{4, 0, 3} << "";
        QTest::newRow("storygraph, every shelf") << "storygraph.csv" << true << QList<int>{7, 0, 0} << "";
    }
    void counts()
    {
        QFETCH(QString, file);
        QFETCH(bool, includeUnread);
        QFETCH(QList<int>, addUpdateSkip);
        QFETCH(QString, notes);
        TestApp t;
        auto import = imported(t, fixture(qPrintable(file)), includeUnread, false);
        QVERIFY(import);
        import->preview();
        QCOMPARE(t.allBooks(false).size(), 0); // the preview writes nothing
        QCOMPARE(QList<int>({import->toAdd(), import->toUpdate(), import->toSkip()}), addUpdateSkip);
        QVERIFY(import->firstBooks().size() == std::min(addUpdateSkip[0], ServiceImport::kPreviewRows));
        const QString foreseen = import->notesText();
        import->step(1 << 20);
        QCOMPARE(QList<int>({import->added(), import->updated()}), addUpdateSkip.mid(0, 2));
        QCOMPARE(t.allBooks(false).size(), addUpdateSkip[0]);
        QCOMPARE(import->notesText(), foreseen);
        if (!notes.isEmpty())
            QCOMPARE(import->notesText(), notes);

        // A second import adds nothing and changes nothing.
        const QList<Books> before = t.allBooks(false);
        auto again = imported(t, fixture(qPrintable(file)), includeUnread, false);
        again->preview();
        QCOMPARE(QList<int>({again->toAdd(), again->toUpdate()}), QList<int>({0, 0}));
        again->step(1 << 20);
        QCOMPARE(t.allBooks(false), before);
    }

    void matchesAndFillsExisting()
    {
        TestApp t;
        Books mine = book(QStringLiteral("Dune"), QStringLiteral("Frank Herbert"));
        mine.notes = QStringLiteral("my own notes");
        mine.bookPublisher = QStringLiteral("Chilton");
        t.insert(mine);
        t.insert(book(QStringLiteral("Emma"), QStringLiteral("Jane Austen")));
        t.insert(book(QStringLiteral("Emma"), QStringLiteral("Jane Austen")));
        QCOMPARE(imported(t, fixture("goodreads.csv"))->updated(), 1);
        auto old = imported(t, fixture("goodreads-old.csv"));
        QCOMPARE(old->added() + old->updated(), 0);
        QVERIFY(old->notesText().startsWith(
            QStringLiteral("Row 2 \"Emma\": several books with this title and author (not imported)\n")));
        const Books dune = bookNamed(t, QStringLiteral("Dune"));
        QCOMPARE(dune.bookPublisher, Text(QStringLiteral("Ace")));
        QCOMPARE(dune.notes, mine.notes); // nothing in the row, nothing cleared
        QCOMPARE(dune.dt, Text(QStringLiteral("Mar 7, 2021")));
    }

    void columnsByName()
    {
        // Columns moved and some dropped: every field still lands where it belongs.
        QTemporaryDir dir;
        TestApp t;
        QVERIFY(imported(t, writeFile(dir.filePath(QStringLiteral("moved.csv")),
                                      "Book Id,Title,Author,Author l-f,Exclusive Shelf,Date Read,My Rating,ISBN\n"
                                      "1,Beloved,Toni Morrison,\"Morrison, Toni\",read,2018/10/09,3,=\"0099273934\"\n")));
        QCOMPARE(describe(t.allBooks(false).value(0)),
                 QStringLiteral("Toni Morrison|0099273934|-|-|-|-|***|-|-|-|Oct 9, 2018"));
    }

    void screenPreviewsThenSummarises()
    {
        TestApp t;
        ImportViewController screen(&t.app());
        screen.viewDidLoad();
        screen.documentPicker(QUrl::fromLocalFile(fixture("storygraph.csv")));
        screen.answerAlert(0);
        QCOMPARE(screen.fileKind(), QStringLiteral("StoryGraph export"));
        QVERIFY(screen.importText().startsWith(QStringLiteral("StoryGraph export: 7 rows\nWill add: 4\n")));
        screen.setIncludeUnread(true);
        QVERIFY(screen.importText().contains(QStringLiteral("Will add: 7\n")));
        QCOMPARE(t.allBooks(false).size(), 0);
        QSignalSpy done(&screen, &ImportViewController::imported);
        screen.ImportTextFile();
        QVERIFY(done.size() == 1 || done.wait(10000));
        QCOMPARE(screen.alertMessage(), QStringLiteral("Data Import Completed\nAdded: 7\nUpdated: 0\nNot imported: 0"));
        QCOMPARE(t.allBooks(false).size(), 7);
        QTemporaryDir dir;
        const QString list = dir.filePath(QStringLiteral("not-imported.txt"));
        QVERIFY(screen.saveNotes(QUrl::fromLocalFile(list)));
        QCOMPARE(QString::fromUtf8(readFile(list)), screen.notesText());
        // An existing file is replaced only when the user says so.
        QVERIFY(!screen.saveNotes(QUrl::fromLocalFile(list)));
        QCOMPARE(screen.alertTitle(), QStringLiteral("Replace File?"));
        screen.answerAlert(0);
        QCOMPARE(screen.alertTitle(), QStringLiteral("List Saved"));
        QVERIFY(screen.notesText().contains(QStringLiteral("Row 6 \"Klara and the Sun\": imported without a date read")));
    }

    void commandLine()
    {
        QTemporaryDir data;
        const auto cli = [&](QStringList args, QString *out) {
            const CliRun run = runCli(data.path(), args);
            *out = run.out + run.err;
            return run.status;
        };
        const QString file = fixture("goodreads.csv");
        QString out;
        QCOMPARE(cli({QStringLiteral("import"), file, QStringLiteral("--dry-run")}, &out), 0);
        QVERIFY2(out.startsWith("Goodreads library export: 8 rows\nWill add: 4\nWill update: 0\nWill skip: 4\n"), qPrintable(out));
        QVERIFY(out.contains("Row 7: no title (not imported)\n"));
        QCOMPARE(cli({QStringLiteral("import"), file, QStringLiteral("--include-unread")}, &out), 0);
        QVERIFY2(out.startsWith("Data Import: Data Import Completed\nAdded: 6\n"), qPrintable(out));
        QCOMPARE(cli({QStringLiteral("import"), file, QStringLiteral("--include-unread")}, &out), 0);
        QVERIFY2(out.startsWith("Data Import: Data Import Completed\nAdded: 0\nUpdated: 0\n"), qPrintable(out));
        QCOMPARE(cli({QStringLiteral("import"), fixture("golden.csv"), QStringLiteral("--dry-run")}, &out), 2);
    }
};

QTEST_MAIN(TestOtherServices)
#include "tst_otherservices.moc"
