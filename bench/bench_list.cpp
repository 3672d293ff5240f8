// The list-style list over synthetic libraries: the fetch that fills it and one
// search keystroke, against the sqlite3 shell running the same query.
#include "app/appdelegate.h"
#include "browse/liststyletableviewcontroller.h"
#include "platform/recordingplatform.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <cstdio>

using namespace tomewise;

namespace {

void fill(AppDelegate &app, int count)
{
    BookStore &store = app.persistentContainer();
    BookStore::Transaction t(store);
    const QStringList genres{"Fantasy", "Mystery", "History", "Poetry", "Science", "Romance"};
    for (int i = 0; i < count; ++i) {
        Books b;
        const int y = 2000 + i % 26, m = 1 + i % 12, d = 1 + i % 28;
        b.dateRead = app.dateText().startOfDay(y, m, d);
        b.dt = app.dateText().format(*b.dateRead, DateText::Style::Medium);
        b.year = qint16(y);
        b.month = qint16(m);
        b.day = qint16(d);
        b.name = QStringLiteral("Book number %1").arg(i);
        b.author = QStringLiteral("Author %1").arg(i % 997);
        b.category = genres[i % genres.size()];
        b.rating = QString(1 + i % 5, u'*');
        if (i % 3 == 0) {
            b.series = QStringLiteral("Series %1").arg(i % 101);
            b.seriesNumber = qint16(1 + i % 9);
        }
        b.numberPages = qint16(100 + i % 700);
        b.publishDate = qint16(1900 + i % 120);
        b.notes = QStringLiteral("Notes on book %1").arg(i);
        store.insertBook(b);
    }
    t.commit();
}

double ms(QElapsedTimer &t)
{
    return double(t.nsecsElapsed()) / 1e6;
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    const QString sqlite = QStandardPaths::findExecutable(QStringLiteral("sqlite3"));
    std::printf("%8s  %10s  %10s  %10s  %10s  %10s\n", "books", "fetch ms", "sqlite3 ms", "ratio", "key date ms",
                "key author");
    for (int count : {10000, 100000}) {
        QTemporaryDir dir;
        AppDelegate::Options options;
        options.dataDirectory = dir.path();
        options.locale = QStringLiteral("en_US");
        options.timeZone = "America/New_York";
        options.platform = std::make_unique<RecordingPlatform>();
        AppDelegate app(std::move(options));
        fill(app, count);

        ListStyleTableViewController list(&app);
        list.viewDidLoad();
        QElapsedTimer t;
        t.start();
        list.viewWillAppear(); // the first show: fetch newest first
        const double fetch = ms(t);

        t.restart();
        list.setSearchText(QStringLiteral("2021-0"));
        const double keyDate = ms(t);
        list.setSearchText(QString());
        list.selectSortOption(3);
        t.restart();
        list.setSearchText(QStringLiteral("author 99"));
        const double keyAuthor = ms(t);

        double shell = 0;
        if (!sqlite.isEmpty()) {
            app.persistentContainer().saveContext();
            QProcess p;
            t.restart();
            p.start(sqlite, {dir.filePath(QLatin1String(AppDelegate::kStoreFileName)),
                             QStringLiteral("SELECT * FROM Books ORDER BY dateRead DESC;")});
            p.waitForFinished(-1);
            p.readAllStandardOutput();
            shell = ms(t);
        }
        std::printf("%8d  %10.1f  %10.1f  %10.2f  %10.2f  %10.2f\n", count, fetch, shell,
                    shell > 0 ? fetch / shell : 0.0, keyDate, keyAuthor);
    }
    return 0;
}
