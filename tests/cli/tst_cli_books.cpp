// tomewise-cli book add / books / book delete, run as a separate process.
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

class TestCliBooks : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_dir;

    struct Run
    {
        int status;
        QString out;
        QString err;
    };
    Run cli(const QStringList &args)
    {
        QProcess p;
        p.start(QStringLiteral(TOMEWISE_CLI), QStringList{"--data-dir", m_dir.path()} + args);
        p.waitForFinished(60000);
        return {p.exitCode(), QString::fromUtf8(p.readAllStandardOutput()), QString::fromUtf8(p.readAllStandardError())};
    }

private Q_SLOTS:
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
};

QTEST_MAIN(TestCliBooks)
#include "tst_cli_books.moc"
