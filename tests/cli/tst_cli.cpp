#include "support/clirun.h"
#include "support/imagefixtures.h"
#include "support/testapp.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTest>

using namespace tomewise;
using namespace tomewise::test;

namespace {

// As in a session without a runtime folder, where Qt would complain.
CliRun cli(const QString &dataDir, const QStringList &args, const QString &workingDir = QString())
{
    return runCli(dataDir, args, {{QStringLiteral("XDG_RUNTIME_DIR"), QString()}}, workingDir);
}

QJsonArray dump(const QString &dataDir, const QString &entity)
{
    return QJsonDocument::fromJson(cli(dataDir, {QStringLiteral("store"), QStringLiteral("dump"), entity}).out.toUtf8()).array();
}

} // namespace

class TestCli : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void startTwiceSeedsOnce();
    void dumpKeepsAbsentAndEmptyApart();
    void fatalStarts_data();
    void fatalStarts();
    void usage_data();
    void usage();
};

void TestCli::startTwiceSeedsOnce()
{
    QTemporaryDir dir;
    QCOMPARE(cli(dir.path(), {QStringLiteral("start")}).status, 0);
    const CliRun second = cli(dir.path(), {QStringLiteral("start")});
    QCOMPARE(second.status, 0);
    QVERIFY(second.err.contains("Not First Launch"));
    // What is seeded is the start-up's own test; here, that it happened once.
    QCOMPARE(dump(dir.path(), QStringLiteral("GenreList")).size(), 29);
}

void TestCli::dumpKeepsAbsentAndEmptyApart()
{
    TestApp t("UTC");
    Books b = book(QStringLiteral("Kafka on the Shore"), QStringLiteral("Haruki Murakami"));
    b.subTitle = QString(QLatin1String(""));
    b.year = 2021;
    b.dateRead = QDateTime(QDate(2021, 3, 5), QTime(0, 0), Qt::UTC);
    b.pictureImage = QByteArray("\x01\x02\x03", 3);
    t.insert(b);
    // An empty text is kept, an absent one left out; times in UTC, pictures in Base64.
    QCOMPARE(dump(t.dataDirectory(), QStringLiteral("Books")).first().toObject(),
             QJsonDocument::fromJson(R"({"author": "Haruki Murakami", "name": "Kafka on the Shore", "subTitle": "",
                                         "year": 2021, "dateRead": "2021-03-05T00:00:00Z", "pictureImage": "AQID"})")
                 .object());
}

void TestCli::fatalStarts_data()
{
    QTest::addColumn<QString>("broken");
    QTest::addColumn<QString>("message");
    QTest::newRow("store not a database") << "file" << QStringLiteral("Unresolved error The store could not be read.");
    QTest::newRow("store is a folder") << "folder" << QStringLiteral("Unresolved error The store could not be opened.");
}

void TestCli::fatalStarts()
{
    QFETCH(QString, broken);
    QFETCH(QString, message);
    QTemporaryDir dir;
    const QString storePath = dir.filePath(QStringLiteral("Tomewise.sqlite"));
    if (broken == QLatin1String("folder")) {
        QVERIFY(QDir().mkpath(storePath));
    } else {
        QFile f(storePath);
        QVERIFY(f.open(QIODevice::WriteOnly));
        f.write(QByteArray("garbage, not a store ").repeated(100));
    }
    const CliRun r = cli(dir.path(), {QStringLiteral("start")});
    QVERIFY2(r.exit == QProcess::CrashExit || r.status != 0, qPrintable(r.err));
    QVERIFY2(r.err.contains(message), qPrintable(r.err));
}

void TestCli::usage_data()
{
    QTest::addColumn<QStringList>("args");
    QTest::addColumn<int>("status");
    QTest::addColumn<QString>("usage"); // in what it prints
    // Every summary stands apart from its usage.
    QTest::newRow("help") << QStringList{"--help"} << 0 << QStringLiteral("[--json]\n");
    QTest::newRow("start") << QStringList{"start", "--help"} << 0 << QStringLiteral("tomewise-cli [--data-dir DIR] start\n");
    QTest::newRow("export") << QStringList{"export", "--help"} << 0 << QStringLiteral("export [FILE]");
    QTest::newRow("book add") << QStringList{"book", "add", "--title", "T", "-h"} << 0 << QStringLiteral("[--lookup]");
    QTest::newRow("import") << QStringList{"import", "--help"} << 0 << QStringLiteral("import FILE");
    QTest::newRow("no such entity") << QStringList{"store", "dump", "Shelves"} << 2 << QString();
    QTest::newRow("no such command") << QStringList{"no-such-command"} << 2 << QString();
}

void TestCli::usage()
{
    QFETCH(QStringList, args);
    QFETCH(int, status);
    QFETCH(QString, usage);
    QTemporaryDir data;
    QTemporaryDir cwd;
    const CliRun r = cli(data.path(), args, cwd.path());
    QCOMPARE(r.status, status);
    QVERIFY2(r.out.contains(usage), qPrintable(r.out));
    for (const QString &line : args.size() == 1 ? r.out.split(u'\n') : QStringList())
        QVERIFY2(line.size() <= 80, qPrintable(line)); // the command list fits a terminal
    if (status == 0) {
        QVERIFY2(r.err.isEmpty(), qPrintable(r.err));
        QVERIFY(QDir(data.path()).isEmpty()); // no library opened
    }
    QVERIFY(QDir(cwd.path()).isEmpty()); // no file named --help
}

QTEST_GUILESS_MAIN(TestCli)
#include "tst_cli.moc"
