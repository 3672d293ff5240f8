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
    void usageErrors();
    void helpDoesNothingElse_data();
    void helpDoesNothingElse();
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
    const QJsonObject o = dump(t.dataDirectory(), QStringLiteral("Books")).first().toObject();
    QCOMPARE(o.value(QStringLiteral("name")).toString(), QStringLiteral("Kafka on the Shore"));
    QVERIFY(o.contains(QStringLiteral("subTitle")));
    QCOMPARE(o.value(QStringLiteral("subTitle")).toString(), QString());
    QVERIFY(!o.contains(QStringLiteral("notes")));
    QVERIFY(!o.contains(QStringLiteral("month")));
    QCOMPARE(o.value(QStringLiteral("year")).toInt(), 2021);
    QCOMPARE(o.value(QStringLiteral("dateRead")).toString(), QStringLiteral("2021-03-05T00:00:00Z"));
    QCOMPARE(o.value(QStringLiteral("pictureImage")).toString(), QStringLiteral("AQID"));
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

void TestCli::usageErrors()
{
    QTemporaryDir dir;
    QCOMPARE(cli(dir.path(), {QStringLiteral("store"), QStringLiteral("dump"), QStringLiteral("Shelves")}).status, 2);
    QCOMPARE(cli(dir.path(), {QStringLiteral("no-such-command")}).status, 2);
    const CliRun help = cli(dir.path(), {QStringLiteral("--help")});
    QCOMPARE(help.status, 0);
    QVERIFY(help.out.contains("store dump ENTITY"));
    // Every summary stands apart from its usage, and the lines fit a terminal.
    QVERIFY2(help.out.contains("[--json]\n"), qPrintable(help.out));
    for (const QString &line : help.out.split(u'\n'))
        QVERIFY2(line.size() <= 80, qPrintable(line));
    QVERIFY(!help.err.contains("XDG_RUNTIME_DIR"));
}

void TestCli::helpDoesNothingElse_data()
{
    QTest::addColumn<QStringList>("args");
    QTest::addColumn<QString>("usage");
    QTest::newRow("start") << QStringList{"start", "--help"} << QStringLiteral("tomewise-cli [--data-dir DIR] start\n");
    QTest::newRow("export") << QStringList{"export", "--help"} << QStringLiteral("export [FILE]");
    QTest::newRow("book add") << QStringList{"book", "add", "--title", "T", "-h"} << QStringLiteral("[--lookup]");
    QTest::newRow("import") << QStringList{"import", "--help"} << QStringLiteral("import FILE");
}

void TestCli::helpDoesNothingElse()
{
    QFETCH(QStringList, args);
    QFETCH(QString, usage);
    QTemporaryDir data;
    QTemporaryDir cwd;
    const CliRun r = cli(data.path(), args, cwd.path());
    QCOMPARE(r.status, 0);
    QVERIFY2(r.out.contains(usage), qPrintable(r.out));
    QVERIFY2(r.err.isEmpty(), qPrintable(r.err));
    QVERIFY(QDir(data.path()).isEmpty()); // no library opened
    QVERIFY(QDir(cwd.path()).isEmpty());  // no file named --help
}

QTEST_GUILESS_MAIN(TestCli)
#include "tst_cli.moc"
