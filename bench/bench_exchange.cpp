// Export and import of synthetic libraries with covers, each beside the plain
// tools doing the nearest job on the same data: the sqlite3 CSV dump plus a
// libjpeg-turbo re-encode of the covers for the export, sqlite3 .import of
// the same file for the import. Each phase runs in a child process of its own
// so that its peak memory (VmHWM) is its own: usage bench_exchange [BOOKS...]
// (or one phase alone: --library DIR BOOKS, --export DIR FILE, --import DIR FILE).
#include "benchlibrary.h"
#include "exchange/exportfilewriter.h"
#include "exchange/importfilereader.h"
#include "plainjpeg.h"
#include "support/imagefixtures.h"
#include "support/testapp.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QGuiApplication>
#include <QProcess>
#include <QDir>
#include <QFileInfo>
#include <QSqlQuery>
#include <QTemporaryDir>

#include <cstdio>
#include <sys/resource.h>

using namespace tomewise;

namespace {

constexpr int kCovers = 64;

// The process's peak resident memory so far, in MB.
double peakMegabytes()
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray &line : status.readAll().split('\n')) {
        if (line.startsWith("VmHWM:"))
            return line.mid(6).trimmed().split(' ').value(0).toDouble() / 1024.0;
    }
    return 0;
}

std::unique_ptr<AppDelegate> openApp(const QString &dir)
{
    return benchlib::benchApp(dir, 0);
}

QList<QByteArray> covers()
{
    QList<QByteArray> list;
    for (int seed = 0; seed < kCovers; ++seed)
        list << test::encode(test::coverImage(QSize(125, 180), seed), "jpeg", 90);
    return list;
}

void makeLibrary(const QString &dir, int n)
{
    auto app = openApp(dir);
    BookStore &store = app->persistentContainer();
    const QList<QByteArray> pictures = covers();
    BookStore::Transaction t(store);
    for (int i = 0; i < n; ++i) {
        Books b = test::book(QStringLiteral("Title %1").arg(i % (n / 2 + 1)), QStringLiteral("Author %1").arg(i % 997));
        b.bookFormat = QStringLiteral("Paperback");
        b.bookPublisher = QStringLiteral("Publisher %1").arg(i % 50);
        b.category = QStringLiteral("Fiction");
        b.dateRead = QDateTime(QDate(2000 + i % 25, 1 + i % 12, 1 + i % 28), QTime(12, 0), Qt::UTC);
        b.year = qint16(2000 + i % 25);
        b.month = qint16(1 + i % 12);
        b.day = qint16(1 + i % 28);
        b.dt = b.dateRead->toString(QStringLiteral("MMM d, yyyy"));
        b.notes = QStringLiteral("Line one\nline two of book %1").arg(i);
        b.numberPages = qint16(100 + i % 900);
        b.publishDate = qint16(1950 + i % 70);
        b.rating = QStringLiteral("***");
        b.isbn = QStringLiteral("978%1").arg(i, 10, 10, QLatin1Char('0'));
        b.pictureImage = pictures[i % pictures.size()];
        store.insertBook(b);
    }
    t.commit();
}

// A child phase, export or import between a library folder and a file:
// prints "SECONDS PEAK_MB" and what it counted.
int phase(bool exporting, const QString &dir, const QString &file)
{
    auto app = openApp(dir);
    QElapsedTimer timer;
    timer.start();
    QFile f(file);
    if (!f.open(exporting ? QIODevice::WriteOnly : QIODevice::ReadOnly))
        return 1;
    if (exporting) {
        ExportFileWriter writer(app->persistentContainer(), app->dateText(), &f);
        if (!writer.run(nullptr) || !f.flush())
            return 1;
        std::printf("%.3f %.0f %d\n", timer.elapsed() / 1000.0, peakMegabytes(), writer.bookCount());
        return 0;
    }
    ImportFileReader reader(app->persistentContainer(), app->dateText());
    reader.run(&f);
    std::printf("%.3f %.0f %d %d %d %d\n", timer.elapsed() / 1000.0, peakMegabytes(), reader.inserted(),
                reader.updated(), reader.skipped(), reader.failed());
    return 0;
}

// CPU seconds (user and system) of this process, or of its finished children.
double cpuSeconds(int who)
{
    rusage usage{};
    getrusage(who, &usage);
    auto seconds = [](const timeval &t) { return double(t.tv_sec) + double(t.tv_usec) / 1e6; };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

// Wall and CPU seconds of one piece of work.
struct Cost
{
    double wall = 0;
    double cpu = 0;
};

QStringList runChild(const QStringList &args, double *cpu)
{
    const double before = cpuSeconds(RUSAGE_CHILDREN);
    QProcess p;
    p.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    p.start(QCoreApplication::applicationFilePath(), args);
    p.waitForFinished(-1);
    *cpu = cpuSeconds(RUSAGE_CHILDREN) - before;
    return QString::fromLatin1(p.readAllStandardOutput()).simplified().split(u' ');
}

Cost runSqlite(const QStringList &args, const QByteArray &script)
{
    const double before = cpuSeconds(RUSAGE_CHILDREN);
    QElapsedTimer timer;
    timer.start();
    QProcess p;
    p.start(QStringLiteral("sqlite3"), args);
    p.write(script);
    p.closeWriteChannel();
    p.waitForFinished(-1);
    if (p.exitCode() != 0)
        std::fprintf(stderr, "sqlite3: %s\n", p.readAllStandardError().constData());
    return {timer.elapsed() / 1000.0, cpuSeconds(RUSAGE_CHILDREN) - before};
}

// libjpeg-turbo re-encoding each book's cover once at the export's quality.
Cost plainCovers(const QString &storePath)
{
    QList<QByteArray> covers;
    {
        auto app = openApp(QFileInfo(storePath).path());
        QSqlQuery q(app->persistentContainer().database());
        q.exec(QStringLiteral("SELECT pictureImage FROM BooksPictureImage ORDER BY book LIMIT %1").arg(kCovers));
        while (q.next())
            covers << q.value(0).toByteArray();
        q.exec(QStringLiteral("SELECT COUNT(*) FROM BooksPictureImage"));
        q.next();
        const int n = q.value(0).toInt();
        const double before = cpuSeconds(RUSAGE_SELF);
        QElapsedTimer timer;
        timer.start();
        for (int i = 0; i < n && !covers.isEmpty(); ++i)
            plainReencode(covers[i % covers.size()], 90);
        return {timer.elapsed() / 1000.0, cpuSeconds(RUSAGE_SELF) - before};
    }
}

void bench(int n)
{
    QTemporaryDir dir;
    const QString source = dir.filePath(QStringLiteral("source"));
    const QString file = dir.filePath(QStringLiteral("Tomewise.csv"));
    QElapsedTimer timer;
    timer.start();
    makeLibrary(source, n);
    std::printf("%d books: library made in %.1f s\n", n, timer.elapsed() / 1000.0);

    Cost exportCost;
    const QStringList exported = runChild({QStringLiteral("--export"), source, file}, &exportCost.cpu);
    exportCost.wall = exported.value(0).toDouble();
    const double fileMb = QFileInfo(file).size() / 1e6;
    const QString storePath = QDir(source).filePath(QLatin1String(AppDelegate::kStoreFileName));
    const Cost dump = runSqlite(
        {storePath},
        QStringLiteral(".mode csv\n.once %1\nSELECT b.*, hex(c.pictureImage) FROM Books b LEFT JOIN "
                       "BooksPictureImage c ON c.book = b.pk ORDER BY name, author, dt;\n")
            .arg(dir.filePath(QStringLiteral("dump.csv")))
            .toUtf8());
    const Cost plain = plainCovers(storePath);
    const Cost tools{dump.wall + plain.wall, dump.cpu + plain.cpu};
    std::printf("  export: %.2f s wall, %.2f s CPU, peak %s MB, file %.1f MB\n"
                "    sqlite3 dump %.2f s wall (%.2f CPU) + libjpeg-turbo re-encode %.2f s (%.2f CPU)\n"
                "    ratio wall %.2f, CPU %.2f (goal <= 1.5)\n",
                exportCost.wall, exportCost.cpu, qPrintable(exported.value(1)), fileMb, dump.wall, dump.cpu,
                plain.wall, plain.cpu, exportCost.wall / tools.wall, exportCost.cpu / tools.cpu);

    Cost importCost;
    const QStringList imported =
        runChild({QStringLiteral("--import"), dir.filePath(QStringLiteral("target")), file}, &importCost.cpu);
    importCost.wall = imported.value(0).toDouble();
    // The same file through sqlite3, split at the caret into one text column per field.
    QStringList columns;
    for (int i = 1; i <= 19; ++i)
        columns << QStringLiteral("f%1").arg(i);
    const Cost sqliteImport = runSqlite(
        {dir.filePath(QStringLiteral("plain.sqlite"))},
        QStringLiteral(".mode list\n.separator ^ \"\\n\"\nCREATE TABLE T(%1);\n.import %2 T\n")
            .arg(columns.join(u','), file)
            .toUtf8());
    std::printf("  import: %.2f s wall, %.2f s CPU, peak %s MB (%s new, %s overwritten, %s skipped, %s failed)\n"
                "    sqlite3 .import %.2f s wall (%.2f CPU)\n"
                "    ratio wall %.2f, CPU %.2f (goal <= 3)\n",
                importCost.wall, importCost.cpu, qPrintable(imported.value(1)), qPrintable(imported.value(2)),
                qPrintable(imported.value(3)), qPrintable(imported.value(4)), qPrintable(imported.value(5)),
                sqliteImport.wall, sqliteImport.cpu, importCost.wall / sqliteImport.wall,
                importCost.cpu / sqliteImport.cpu);
    std::fflush(stdout);
}

} // namespace

int main(int argc, char *argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication application(argc, argv);
    const QStringList args = QCoreApplication::arguments().mid(1);
    if (args.size() == 3 && (args[0] == u"--export" || args[0] == u"--import"))
        return phase(args[0] == u"--export", args[1], args[2]);
    if (args.size() == 3 && args[0] == u"--library") {
        makeLibrary(args[1], args[2].toInt());
        return 0;
    }
    QList<int> sizes;
    for (const QString &a : args)
        sizes << a.toInt();
    if (sizes.isEmpty())
        sizes = {10000, 100000};
    for (int n : sizes)
        bench(n);
    return 0;
}
