// tomewise-cli book add / books / book show / book edit / book delete, run as a separate process.
#include "support/booksapiserver.h"
#include "support/clirun.h"
#include "support/imagefixtures.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QTest>

using tomewise::test::BooksApiServer;
using tomewise::test::CliRun;
using tomewise::test::runCli;

namespace {

QString picture(const QString &name)
{
    return QStringLiteral(TOMEWISE_TEST_DATA "/barcode/") + name;
}

const QString kNotFound = QStringLiteral("Book Not Found: The Scanned Barcode returned no Results for: "
                                         "https://example.org/books/42\n");
const QString kNotSaved = QStringLiteral("Book Not Saved: Required Fields Labeled in RED Not Entered\n");

} // namespace

class TestCliBooks : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_dir;

    using Run = CliRun;
    Run cli(const QStringList &args, const QString &dataDir = QString())
    {
        return runCli(dataDir.isEmpty() ? m_dir.path() : dataDir, args);
    }

private Q_SLOTS:
    // The scan's hand-over, as the app makes it after a read: the look-up is
    // waited for, the form fills (cover included) before the save, and with
    // nothing found the form's own alerts decide what happens.
    void addByScan_data()
    {
        QTest::addColumn<QStringList>("args");
        QTest::addColumn<int>("status");
        QTest::addColumn<QString>("err");
        QTest::addColumn<QStringList>("saved"); // name, author, isbn, rating; empty: nothing saved
        QTest::addColumn<bool>("cover");

        const QStringList omens{"Good Omens", "Neil Gaiman, Terry Pratchett", "9780060853983", ""};
        QTest::newRow("found") << QStringList{"--scan", picture("ean13-addon.png"), "--lookup"} << 0 << QString()
                               << omens << true;
        QTest::newRow("found, given fields win")
            << QStringList{"--lookup", "--title", "Omens", "--rating", "****", "--scan", picture("frame-ean13-qr.png")}
            << 0 << QString() << QStringList{"Omens", omens[1], omens[2], "****"} << true;
        QTest::newRow("not found, nothing given") << QStringList{"--scan", picture("qr.png"), "--lookup"} << 1
                                                  << kNotFound + kNotSaved << QStringList() << false;
        QTest::newRow("not found, title given: no alert, author missing")
            << QStringList{"--scan", picture("qr.png"), "--lookup", "--title", "Mine"} << 1 << kNotSaved
            << QStringList() << false;
        QTest::newRow("not found, enough given")
            << QStringList{"--scan", picture("qr.png"), "--lookup", "--title", "Mine", "--author", "Me"} << 0
            << QString() << QStringList{"Mine", "Me", "https://example.org/books/42", ""} << false;
        QTest::newRow("no look-up: the ISBN as typed")
            << QStringList{"--scan", picture("ean8.png"), "--title", "T", "--author", "A"} << 0 << QString()
            << QStringList{"T", "A", "96385074", ""} << false;
        QTest::newRow("no code") << QStringList{"--scan", picture("frame-empty.png"), "--lookup"} << 1
                                 << "No barcode found in " + picture("frame-empty.png")
                + " (EAN-8, EAN-13, PDF417 or QR code)\n"
                                 << QStringList() << false;
        QTest::newRow("with --isbn") << QStringList{"--scan", picture("qr.png"), "--isbn", "1"} << 2
                                     << QStringLiteral("--scan and --isbn: choose one\n") << QStringList() << false;
    }
    void addByScan()
    {
        QFETCH(QStringList, args);
        QFETCH(int, status);
        QFETCH(QString, err);
        QFETCH(QStringList, saved);
        QFETCH(bool, cover);
        BooksApiServer server;
        server.setAnswer(QStringLiteral("/covers/9780060853983.jpg"),
                         {200, tomewise::test::encode(tomewise::test::coverImage(QSize(128, 192)), "JPEG", 90),
                          "image/jpeg", 300});
        QTemporaryDir dir;
        const auto env = server.cliEnvironment(dir.path());
        const Run run = runCli(dir.path(), QStringList{"book", "add"} + args, env);
        QCOMPARE(run.status, status);
        // Only the alerts and messages: the service's log lines go elsewhere.
        QStringList errLines = run.err.split(u'\n');
        errLines.removeIf([](const QString &l) { return l.startsWith(QLatin1String("URL Session")); });
        QCOMPARE(errLines.join(u'\n'), err);
        const QJsonArray books =
            QJsonDocument::fromJson(runCli(dir.path(), {"store", "dump", "Books"}, env).out.toUtf8()).array();
        QCOMPARE(books.size(), saved.isEmpty() ? 0 : 1);
        if (saved.isEmpty())
            return;
        const QJsonObject b = books.first().toObject();
        QCOMPARE((QStringList{b["name"].toString(), b["author"].toString(), b["isbn"].toString(), b["rating"].toString()}),
                 saved);
        QCOMPARE(b.contains("pictureImage"), cover);
    }

    void scanPrintsTheCode()
    {
        const Run read = cli({"scan", picture("frame-rotated.png")});
        QCOMPARE(read.status, 0);
        QCOMPARE(read.out, QStringLiteral("9780060853983\n"));
        QCOMPARE(cli({"scan", picture("frame-empty.png")}).status, 1); // its message: addByScan
    }

    void addListAndDelete()
    {
        QCOMPARE(cli({"book", "add", "--title", " Dune ", "--author", "Frank Herbert", "--series", "Dune",
                      "--series-number", "1", "--date", "Mar 4, 2021"})
                     .status,
                 0);
        QCOMPARE(cli({"book", "add", "--title", "Emma", "--author", "Jane Austen"}).status, 0);

        const Run refused = cli({"book", "add", "--title", "X", "--author", "Y", "--pages", "12a"});
        QCOMPARE(refused.status, 2);
        QVERIFY(refused.err.contains("--pages"));

        const Run alert = cli({"book", "add", "--author", "Y"});
        QCOMPARE(alert.status, 1);
        QVERIFY(alert.err.contains("Book Not Saved: Required Fields Labeled in RED Not Entered"));

        const Run list = cli({"books"});
        QCOMPARE(list.status, 0);
        // Newest first; the form's opening date is today's, in the medium style.
        QVERIFY2(list.out.startsWith("2 Books\n\nDate Read: "), qPrintable(list.out));
        QVERIFY(list.out.indexOf("Book Name: Emma") < list.out.indexOf("Book Name: Dune"));
        QVERIFY(list.out.contains("Date Read: Mar 4, 2021\nBook Name: Dune\nAuthor: Frank Herbert  Genre: \n"));

        const Run json = cli({"books", "--sort", "series", "--asc", "--search", "dun", "--json"});
        QCOMPARE(json.status, 0);
        const QJsonObject o = QJsonDocument::fromJson(json.out.toUtf8()).object();
        QCOMPARE(o.value("header").toString(), QStringLiteral("1 Book"));
        QCOMPARE(o.value("books").toArray().at(0).toObject().value("TopLabel").toString(), QStringLiteral("Series: Dune #1"));

        QCOMPARE(cli({"book", "delete", "--sort", "author", "--search", "austen", "--index", "0"}).status, 0);
        QVERIFY(cli({"books"}).out.startsWith("1 Book\n"));
        QCOMPARE(cli({"book", "delete", "--index", "5"}).status, 1);
    }

    void dateOption_data()
    {
        QTest::addColumn<QString>("date");
        QTest::addColumn<int>("status");
        QTest::addColumn<QString>("dt"); // as stored
        QTest::newRow("the form's text") << "Mar 4, 2021" << 0 << "Mar 4, 2021";
        QTest::newRow("YYYY-MM-DD, as picked") << "2024-03-05" << 0 << "March 5, 2024";
        QTest::newRow("no such day") << "2024-02-30" << 2 << "";
    }
    void dateOption()
    {
        QFETCH(QString, date);
        QFETCH(int, status);
        QFETCH(QString, dt);
        QTemporaryDir dir;
        QCOMPARE(cli({"book", "add", "--title", "Dune", "--author", "Frank Herbert", "--date", date}, dir.path()).status,
                 status);
        const QJsonArray books = QJsonDocument::fromJson(cli({"store", "dump", "Books"}, dir.path()).out.toUtf8()).array();
        QCOMPARE(books.size(), status ? 0 : 1);
        QCOMPARE(books.at(0).toObject().value("dt").toString(), dt);
    }

    void showAndEditThroughTheDetailScreen()
    {
        QCOMPARE(cli({"book", "add", "--title", "Persuasion", "--author", "Jane Austen", "--date", "Mar 4, 2021",
                      "--format", "Paperback", "--pages", "249"})
                     .status,
                 0);
        QCOMPARE(cli({"book", "add", "--title", "Emma", "--author", "Jane Austen", "--date", "Jan 2, 2020"}).status, 0);

        const Run shown = cli({"book", "show", "--sort", "book-name", "--search", "persuasion", "--index", "0"});
        QCOMPARE(shown.status, 0);
        QCOMPARE(shown.out, QStringLiteral("Book Name: Persuasion\nAuthor: Jane Austen\nDate Read: Mar 4, 2021\n"
                                           "Date Published: N/A\nSeries: N/A\nSeries #: N/A\n# Pages: 249\n"
                                           "Rating: N/A\nPublisher: N/A\nGenre: N/A\nNotes: None\n"));

        const Run edited = cli({"book", "edit", "--sort", "book-name", "--search", "persuasion", "--index", "0", "--title", "Persuasion ",
                                "--notes", "Second reading", "--pages", ""});
        QCOMPARE(edited.status, 0);
        QVERIFY2(edited.out.contains("# Pages: N/A\n"), qPrintable(edited.out));
        const Run again = cli({"book", "show", "--sort", "book-name", "--search", "persuasion", "--index", "0"});
        QVERIFY2(again.out.endsWith("# Pages: N/A\nRating: N/A\nPublisher: N/A\nGenre: N/A\nNotes: Second reading\n"),
                 qPrintable(again.out));
        QVERIFY(cli({"book", "show", "--sort", "book-name", "--search", "emma", "--index", "0"}).out.endsWith("Notes: None\n"));

        QCOMPARE(cli({"book", "show", "--index", "7"}).status, 1);
        QCOMPARE(cli({"book", "edit", "--index", "0", "--pages", "x"}).status, 2);
    }

    void otherLists_data()
    {
        QTest::addColumn<QStringList>("args");
        QTest::addColumn<QString>("out");
        QTest::newRow("az") << QStringList{"--mode", "az"}
                            << "3 Books\n[E]\nÉmile\tRousseau\nemma\tJane Austen\n[#]\n1984\tGeorge Orwell\n";
        QTest::newRow("az search") << QStringList{"--mode", "az", "--search", "AUSTEN"} << "1 Book\n[E]\nemma\tJane Austen\n";
        QTest::newRow("grid, newest first") << QStringList{"--mode", "grid"}
                                            << "3 Books\n1984\tGeorge Orwell\nemma\tJane Austen\nÉmile\tRousseau\n";
    }
    void otherLists()
    {
        QFETCH(QStringList, args);
        QFETCH(QString, out);
        QTemporaryDir dir;
        for (const auto &[title, author, date] : {std::tuple{"Émile", "Rousseau", "2001-01-01"},
                                                   std::tuple{"emma", "Jane Austen", "2002-01-01"},
                                                   std::tuple{"1984", "George Orwell", "2003-01-01"}}) {
            QCOMPARE(cli({"book", "add", "--title", QString::fromUtf8(title), "--author", author, "--date", date}, dir.path())
                         .status,
                     0);
        }
        const Run run = cli(QStringList{"books"} + args, dir.path());
        QCOMPARE(run.status, 0);
        QCOMPARE(run.out, out);
        QCOMPARE(cli({"books", "--mode", "shelf"}, dir.path()).status, 2);
    }
    // A title that carries terminal controls is echoed escaped, never acted on.
    void controlCharactersPrintEscaped()
    {
        QTemporaryDir dir;
        const QString title = QStringLiteral("Du\x1b[2Jne\a");
        const Run added = cli({"book", "add", "--title", title, "--author", "Frank Herbert"}, dir.path());
        QCOMPARE(added.status, 0);
        QVERIFY2(added.out.startsWith(QStringLiteral("Saved \"Du\\x1b[2Jne\\x07\"")), qPrintable(added.out));
        const Run listed = cli({"books"}, dir.path());
        QVERIFY2(listed.out.contains(QStringLiteral("Book Name: Du\\x1b[2Jne\\x07\n")), qPrintable(listed.out));
        // An import line of NUL bytes is named as not saved, escaped.
        QFile file(dir.filePath(QStringLiteral("in.csv")));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(QByteArray("[TOMEWISE]\n") + QByteArray(3, '\0') + '\n');
        file.close();
        const Run imported = cli({"import", file.fileName()}, dir.path());
        QVERIFY2(imported.err.contains(QStringLiteral("Not saved: line 2, \"\" by \"\\x00\\x00\\x00\"")),
                 qPrintable(imported.err));
        for (const QString &text : {added.out, added.err, listed.out, listed.err, imported.out, imported.err}) {
            for (const QChar c : text)
                QVERIFY2(c == u'\n' || c.category() != QChar::Other_Control, qPrintable(text));
        }
    }
};

QTEST_MAIN(TestCliBooks)
#include "tst_cli_books.moc"
