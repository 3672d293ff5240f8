// One library, several processes: a store busy with another connection's
// write and a library held by another Tomewise, seen from the command line.
#include "support/clirun.h"
#include "support/testapp.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QTest>

using namespace tomewise;
using namespace tomewise::test;

namespace {

void startCli(QProcess &p, const QString &dataDir, const QStringList &args, int busyTimeoutMs)
{
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("TOMEWISE_BUSY_TIMEOUT_MS"), QString::number(busyTimeoutMs));
    p.setProcessEnvironment(env);
    p.start(QStringLiteral(TOMEWISE_CLI), QStringList{QStringLiteral("--data-dir"), dataDir} + args);
}

CliRun cli(const QString &dataDir, const QStringList &args)
{
    return runCli(dataDir, args, {{QStringLiteral("TOMEWISE_BUSY_TIMEOUT_MS"), QStringLiteral("200")}});
}

// Another connection holding the store's write lock until it goes.
class WriteLock
{
public:
    explicit WriteLock(const QString &path)
    {
        auto db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("holder"));
        db.setDatabaseName(path);
        QVERIFY(db.open());
        QVERIFY(QSqlQuery(db).exec(QStringLiteral("BEGIN IMMEDIATE")));
    }
    ~WriteLock()
    {
        {
            auto db = QSqlDatabase::database(QStringLiteral("holder"));
            QSqlQuery(db).exec(QStringLiteral("ROLLBACK"));
            db.close();
        }
        QSqlDatabase::removeDatabase(QStringLiteral("holder"));
    }
};

// Starts a process that holds the library while it waits on the busy store,
// and waits until it has taken the lock.
void startHolder(QProcess &p, TestApp &t)
{
    startCli(p, t.dataDirectory(), {"book", "add", "--title", "Dune", "--author", "Frank Herbert"}, 6000);
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(t.dataDirectory() + QStringLiteral("/Tomewise.lock")), 5000);
}

int bookCount(TestApp &t)
{
    return int(t.allBooks(false).size());
}

} // namespace

class TestLibrary : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void busyStoreFailsLoudly_data()
    {
        QTest::addColumn<QStringList>("args");
        QTest::addColumn<QString>("named"); // what stderr must name as not saved

        QTest::newRow("book add") << QStringList{"book", "add", "--title", "Dune", "--author", "Frank Herbert"}
                                  << QStringLiteral("Not saved: \"Dune\"");
        QTest::newRow("book edit") << QStringList{"book", "edit", "--index", "0", "--pages", "12"}
                                   << QStringLiteral("Not saved: the changes to the book");
        QTest::newRow("book delete") << QStringList{"book", "delete", "--index", "0"} << QStringLiteral("Not deleted: ");
        QTest::newRow("import") << QStringList{"import", "@file"}
                                << QStringLiteral("Not saved: line 3, \"Emma\" by \"Jane Austen\": ");
    }

    void busyStoreFailsLoudly()
    {
        QFETCH(QStringList, args);
        QFETCH(QString, named);
        TestApp t;
        Books persuasion = book(QStringLiteral("Persuasion"), QStringLiteral("Jane Austen"));
        persuasion.dt = QStringLiteral("March 4, 2021"); // the detail screen refuses a book without a date
        t.insert(persuasion);
        QTemporaryDir dir;
        QFile file(dir.filePath(QStringLiteral("in.csv")));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("[TOMEWISE]\nFrank Herbert^^^^^^^^Dune\nJane Austen^^^^^^^^Emma\n");
        file.close();
        args.replaceInStrings(QStringLiteral("@file"), file.fileName());

        const CliRun busy = [&] {
            WriteLock lock(t.store().path());
            return cli(t.dataDirectory(), args);
        }();
        QCOMPARE(busy.status, 1);
        QVERIFY2(busy.err.contains(named), qPrintable(busy.err));
        QVERIFY2(busy.err.contains("database is locked"), qPrintable(busy.err)); // the store's log line
        QVERIFY(!busy.out.startsWith("Saved") && !busy.out.startsWith("Deleted"));
        QCOMPARE(bookCount(t), 1);
        if (args.first() == u"import")
            QVERIFY(busy.out.contains("2 records could not be saved."));

        // Once the store is free, the same command goes through.
        const CliRun free = cli(t.dataDirectory(), args);
        QCOMPARE(free.status, 0);
    }

    // A second process is refused while the first holds the library; a lock
    // left behind by a process that was killed is taken over.
    void oneProcessAtATime()
    {
        TestApp t;
        t.insert(book(QStringLiteral("Persuasion"), QStringLiteral("Jane Austen")));
        const QStringList addEmma{"book", "add", "--title", "Emma", "--author", "Jane Austen"};
        {
            // The first process waits on a busy store, holding the library meanwhile.
            WriteLock lock(t.store().path());
            QProcess first;
            startHolder(first, t);
            QElapsedTimer waited;
            waited.start();
            const CliRun second = cli(t.dataDirectory(), addEmma);
            QCOMPARE(second.status, 3);
            QVERIFY(waited.elapsed() >= 1500); // it waits a little first
            QCOMPARE(second.err, QStringLiteral("The library %1 is in use by another Tomewise (pid %2)\n")
                                     .arg(t.dataDirectory())
                                     .arg(first.processId()));
            first.kill();
            QVERIFY(first.waitForFinished(5000));
        }
        QVERIFY(QFile::exists(t.dataDirectory() + QStringLiteral("/Tomewise.lock")));
        QCOMPARE(bookCount(t), 1);
        QCOMPARE(cli(t.dataDirectory(), addEmma).status, 0);
        QCOMPARE(bookCount(t), 2);
    }
};

QTEST_MAIN(TestLibrary)
#include "tst_library.moc"
