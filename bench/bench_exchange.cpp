// Export and import of synthetic libraries with covers, each beside the
// sqlite3 command-line tool doing the nearest job on the same data.
#include "app/appdelegate.h"
#include "exchange/exportfilewriter.h"
#include "exchange/importfilereader.h"
#include "platform/recordingplatform.h"

#include <QBuffer>
#include <QElapsedTimer>
#include <QFile>
#include <QGuiApplication>
#include <QImageWriter>
#include <QLinearGradient>
#include <QPainter>
#include <QProcess>
#include <QTemporaryDir>

#include <cstdio>

using namespace tomewise;

namespace {

std::unique_ptr<AppDelegate> makeApp(const QString &dir)
{
    AppDelegate::Options options;
    options.dataDirectory = dir;
    options.locale = QStringLiteral("en_US");
    options.timeZone = "America/New_York";
    options.platform = std::make_unique<RecordingPlatform>();
    options.delayScale = 0;
    return std::make_unique<AppDelegate>(std::move(options));
}

QList<QByteArray> covers()
{
    QList<QByteArray> list;
    for (int seed = 0; seed < 16; ++seed) {
        QImage image(80, 120, QImage::Format_RGB32);
        QPainter p(&image);
        QLinearGradient g(0, 0, 80, 120);
        g.setColorAt(0, QColor::fromHsv(seed * 22, 160, 220));
        g.setColorAt(1, QColor::fromHsv((seed * 22 + 90) % 360, 200, 90));
        p.fillRect(image.rect(), g);
        for (int y = 0; y < 120; y += 6)
            p.fillRect(4, y, 72, 2, QColor::fromHsv((seed * 40 + y) % 360, 90, 250));
        p.end();
        QByteArray bytes;
        QBuffer buffer(&bytes);
        buffer.open(QIODevice::WriteOnly);
        QImageWriter writer(&buffer, "jpeg");
        writer.setQuality(85);
        writer.write(image);
        list << bytes;
    }
    return list;
}

void fill(BookStore &store, int n)
{
    const QList<QByteArray> pictures = covers();
    BookStore::Transaction t(store);
    for (int i = 0; i < n; ++i) {
        Books b;
        b.name = QStringLiteral("Title %1").arg(i % (n / 2 + 1));
        b.author = QStringLiteral("Author %1").arg(i % 997);
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

double runSqlite(const QStringList &args, const QByteArray &script)
{
    QElapsedTimer timer;
    timer.start();
    QProcess p;
    p.start(QStringLiteral("sqlite3"), args);
    p.write(script);
    p.closeWriteChannel();
    p.waitForFinished(-1);
    if (p.exitCode() != 0)
        std::fprintf(stderr, "sqlite3: %s\n", p.readAllStandardError().constData());
    return timer.elapsed() / 1000.0;
}

void bench(int n)
{
    QTemporaryDir dir;
    const QString source = dir.filePath(QStringLiteral("source"));
    const QString target = dir.filePath(QStringLiteral("target"));
    auto app = makeApp(source);
    QElapsedTimer timer;
    timer.start();
    fill(app->persistentContainer(), n);
    std::printf("%d books: library made in %.1f s\n", n, timer.elapsed() / 1000.0);

    timer.restart();
    ExportFileWriter writer(app->persistentContainer(), app->dateText());
    writer.run(nullptr);
    const double exportSeconds = timer.elapsed() / 1000.0;
    const QString file = dir.filePath(QStringLiteral("Tomewise.csv"));
    QFile out(file);
    out.open(QIODevice::WriteOnly);
    out.write(writer.data());
    out.close();
    app->persistentContainer().saveContext();

    const QString dump = dir.filePath(QStringLiteral("dump.csv"));
    const double sqliteDump = runSqlite(
        {app->persistentContainer().path()},
        QStringLiteral(".mode csv\n.once %1\nSELECT b.*, hex(c.pictureImage) FROM Books b LEFT JOIN "
                       "BooksPictureImage c ON c.book = b.pk ORDER BY name, author, dt;\n")
            .arg(dump)
            .toUtf8());

    auto importApp = makeApp(target);
    timer.restart();
    ImportFileReader reader(importApp->persistentContainer(), importApp->dateText());
    reader.run(QString::fromUtf8(writer.data()));
    const double importSeconds = timer.elapsed() / 1000.0;

    const double sqliteImport = runSqlite({dir.filePath(QStringLiteral("plain.sqlite"))},
                                          QStringLiteral(".import --csv %1 T\n").arg(dump).toUtf8());

    std::printf("%d books, file %.1f MB: export %.2f s vs sqlite3 CSV dump %.2f s (ratio %.1f); "
                "import %.2f s (%d new, %d overwritten, %d skipped) vs sqlite3 .import %.2f s (ratio %.1f)\n",
                n, writer.data().size() / 1e6, exportSeconds, sqliteDump, exportSeconds / sqliteDump,
                importSeconds, reader.inserted(), reader.updated(), reader.skipped(), sqliteImport,
                importSeconds / sqliteImport);
    std::fflush(stdout);
}

} // namespace

int main(int argc, char *argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication application(argc, argv);
    QList<int> sizes;
    for (int i = 1; i < argc; ++i)
        sizes << QByteArray(argv[i]).toInt();
    if (sizes.isEmpty())
        sizes = {10000, 100000};
    for (int n : sizes)
        bench(n);
    return 0;
}
