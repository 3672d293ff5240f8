// A Goodreads library export against our own export file holding the same
// books, each imported into an empty library in the same run: usage
// bench_goodreads [ROWS] (20,000 by default).
#include "exchange/exportfilewriter.h"
#include "exchange/importfilereader.h"
#include "exchange/serviceimport.h"
#include "model/bookstore.h"
#include "support/testapp.h"

#include <QElapsedTimer>
#include <QFile>
#include <QGuiApplication>
#include <QTemporaryDir>

#include <cstdio>

using namespace tomewise;

namespace {

QString quoted(const QString &field)
{
    QString q = field;
    q.replace(u'"', QStringLiteral("\"\""));
    return u'"' + q + u'"';
}

struct Row
{
    QString title, series, author, isbn, publisher, binding, format, date, dt;
    int rating, pages, year, number, month, day, readYear;
};

Row row(int i, AppDelegate &app)
{
    Row r;
    r.series = i % 3 == 0 ? QStringLiteral("Saga %1").arg(i % 97) : QString();
    r.number = i % 7 + 1;
    r.title = QStringLiteral("Book, number %1").arg(i);
    r.author = QStringLiteral("Author %1").arg(i % 1500);
    r.isbn = QStringLiteral("978%1").arg(i, 10, 10, QLatin1Char('0'));
    r.publisher = QStringLiteral("Press %1").arg(i % 40);
    r.binding = i % 2 ? QStringLiteral("Hardcover") : QStringLiteral("Paperback");
    r.format = i % 2 ? QStringLiteral("Hard Cover") : QStringLiteral("Paperback");
    r.rating = i % 5 + 1;
    r.pages = 100 + i % 700;
    r.year = 1900 + i % 120;
    r.readYear = 2000 + i % 25;
    r.month = i % 12 + 1;
    r.day = i % 28 + 1;
    r.date = QStringLiteral("%1/%2/%3").arg(r.readYear).arg(r.month, 2, 10, QLatin1Char('0')).arg(r.day, 2, 10, QLatin1Char('0'));
    r.dt = app.dateText().format(*app.dateText().startOfDay(r.readYear, r.month, r.day), DateText::Style::Medium);
    return r;
}

Books toBooks(const Row &r, AppDelegate &app)
{
    Books b;
    b.name = r.title;
    b.author = r.author;
    b.isbn = r.isbn;
    b.bookPublisher = r.publisher;
    b.bookFormat = r.format;
    b.rating = QString(r.rating, u'*');
    b.numberPages = qint16(r.pages);
    b.publishDate = qint16(r.year);
    b.category = QStringLiteral("Fantasy");
    b.notes = QStringLiteral("A review, with a comma.");
    if (!r.series.isEmpty()) {
        b.series = r.series;
        b.seriesNumber = qint16(r.number);
    }
    b.dt = r.dt;
    b.dateRead = app.dateText().parse(r.dt, DateText::Style::Medium);
    b.year = qint16(r.readYear);
    b.month = qint16(r.month);
    b.day = qint16(r.day);
    return b;
}

QByteArray goodreadsLine(const Row &r)
{
    const QString title = r.series.isEmpty() ? r.title : QStringLiteral("%1 (%2, #%3)").arg(r.title, r.series).arg(r.number);
    const QStringList fields{QString(), quoted(title), r.author, QString(), QString(), QStringLiteral("=\"\""),
                             quoted(QStringLiteral("=\"%1\"").arg(r.isbn)), QString::number(r.rating),
                             QStringLiteral("3.9"), r.publisher, r.binding, QString::number(r.pages),
                             QString::number(r.year), QString::number(r.year), r.date, r.date,
                             QStringLiteral("fantasy"), QString(), QStringLiteral("read"),
                             quoted(QStringLiteral("A review, with a comma.")), QString(), QString(),
                             QStringLiteral("1"), QStringLiteral("0")};
    return fields.join(u',').toUtf8() + "\r\n";
}

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication qapp(argc, argv);
    const int rows = argc > 1 ? std::max(1, std::atoi(argv[1])) : 20000;
    QTemporaryDir dir;

    // The same books as our export file and as a Goodreads export.
    const QString ownFile = dir.filePath(QStringLiteral("own.csv"));
    const QString goodreadsFile = dir.filePath(QStringLiteral("goodreads.csv"));
    {
        test::TestApp sourceApp;
        AppDelegate *source = &sourceApp.app();
        ReferenceEntry genre;
        genre.value = QStringLiteral("Fantasy");
        source->persistentContainer().insertEntry(Entity::GenreList, genre);
        QFile gr(goodreadsFile);
        gr.open(QIODevice::WriteOnly);
        gr.write("Book Id,Title,Author,Author l-f,Additional Authors,ISBN,ISBN13,My Rating,Average Rating,Publisher,"
                 "Binding,Number of Pages,Year Published,Original Publication Year,Date Read,Date Added,Bookshelves,"
                 "Bookshelves with positions,Exclusive Shelf,My Review,Spoiler,Private Notes,Read Count,"
                 "Owned Copies\r\n");
        BookStore::Transaction all(source->persistentContainer());
        for (int i = 0; i < rows; ++i) {
            const Row r = row(i, *source);
            Books b = toBooks(r, *source);
            source->persistentContainer().insertBook(b);
            gr.write(goodreadsLine(r));
        }
        all.commit();
        QFile own(ownFile);
        own.open(QIODevice::WriteOnly);
        ExportFileWriter writer(source->persistentContainer(), source->dateText(), &own);
        writer.run(nullptr);
    }

    QElapsedTimer timer;
    double ownSeconds = 0;
    int ownSaved = 0;
    {
        test::TestApp ownApp;
        AppDelegate *app = &ownApp.app();
        QFile file(ownFile);
        file.open(QIODevice::ReadOnly);
        timer.start();
        ImportFileReader reader(app->persistentContainer(), app->dateText());
        reader.run(&file);
        ownSeconds = double(timer.nsecsElapsed()) / 1e9;
        ownSaved = reader.inserted() + reader.updated();
    }
    double previewSeconds = 0;
    double goodreadsSeconds = 0;
    int goodreadsSaved = 0;
    {
        test::TestApp goodreadsApp;
        AppDelegate *app = &goodreadsApp.app();
        ReferenceEntry genre;
        genre.value = QStringLiteral("Fantasy");
        app->persistentContainer().insertEntry(Entity::GenreList, genre);
        timer.start();
        QString error;
        auto import = ServiceImport::open(*app, goodreadsFile, false, &error);
        if (!import) {
            std::fprintf(stderr, "%s\n", qPrintable(error));
            return 1;
        }
        import->preview();
        previewSeconds = double(timer.nsecsElapsed()) / 1e9;
        while (!import->step(ImportFileReader::kBatch)) {
        }
        goodreadsSeconds = double(timer.nsecsElapsed()) / 1e9;
        goodreadsSaved = import->added() + import->updated();
    }
    std::printf("%d books\n  our import:       %.2f s, %.0f books/s (%d saved)\n"
                "  Goodreads import: %.2f s, %.0f books/s (%d saved; reading and preview %.2f s)\n"
                "  Goodreads speed / ours: %.2f\n",
                rows, ownSeconds, ownSaved / ownSeconds, ownSaved, goodreadsSeconds, goodreadsSaved / goodreadsSeconds,
                goodreadsSaved, previewSeconds, ownSeconds / goodreadsSeconds);
    return 0;
}
