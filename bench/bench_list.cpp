// Every book list over synthetic libraries: opening it, one search keystroke,
// a jump to the middle (the A-Z index to "M", a scroll to the middle row) and
// the memory it takes, beside the sqlite3 shell running the same window
// query: usage bench_list [BOOKS...]
#include "benchlibrary.h"
#include "browse/booklistsource.h"
#include "browse/bookshelfviewcontroller.h"
#include "browse/liststyletableviewcontroller.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QThread>

#include <cstdio>
#include <ctime>

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

// Wall time and this thread's processor time: on a busy machine the second
// shows the work itself.
struct Stopwatch
{
    QElapsedTimer wall;
    double cpuStart = 0;
    static double cpuMs()
    {
        timespec ts{};
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &ts);
        return double(ts.tv_sec) * 1e3 + double(ts.tv_nsec) / 1e6;
    }
    void start()
    {
        cpuStart = cpuMs();
        wall.start();
    }
    std::pair<double, double> lap()
    {
        const std::pair<double, double> out{ms(wall), cpuMs() - cpuStart};
        start();
        return out;
    }
};

QByteArray cell(std::pair<double, double> t)
{
    return QByteArray::number(t.first, 'f', 1) + '/' + QByteArray::number(t.second, 'f', 1);
}

// A /proc/self/status figure in MB ("VmRSS", "VmHWM").
double memoryMb(const char *field)
{
    QFile f(QStringLiteral("/proc/self/status"));
    if (!f.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray &line : f.readAll().split('\n')) {
        if (line.startsWith(field))
            return line.mid(int(qstrlen(field)) + 1).trimmed().split(' ').first().toDouble() / 1024.0;
    }
    return 0;
}

// What a screen shows after a jump: one screenful of rows read.
template <typename Model>
void readScreen(Model &model, int from)
{
    for (int row = from; row < std::min(model.rowCount(), from + 16); ++row) {
        const QModelIndex index = model.index(row);
        for (const int role : model.roleNames().keys())
            model.data(index, role);
    }
}

// The window query in the sqlite3 shell: every key in order, then one screen of rows.
double shellWindow(const QString &sqlite, const QString &store, const QString &order, int middle)
{
    if (sqlite.isEmpty())
        return 0;
    QProcess p;
    QElapsedTimer t;
    t.start();
    p.start(sqlite, {store, QStringLiteral("SELECT count(*) FROM (SELECT pk FROM Books ORDER BY %1, pk); "
                                           "SELECT * FROM Books ORDER BY %1, pk LIMIT 16 OFFSET %2;")
                                .arg(order)
                                .arg(middle)});
    p.waitForFinished(-1);
    p.readAllStandardOutput();
    return ms(t);
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    const QString sqlite = QStandardPaths::findExecutable(QStringLiteral("sqlite3"));
    const QList<int> counts = benchlib::librarySizes(argc, argv);
    std::printf("Each figure: wall ms / this thread's processor ms.\n");
    std::printf("%7s  %-9s %13s %13s %13s %8s %11s\n", "books", "list", "open", "keystroke", "jump", "list MB",
                "sqlite3 ms");
    for (int count : counts) {
        QTemporaryDir dir;
        const auto owner = benchlib::benchApp(dir.path());
        AppDelegate &app = *owner;
        fill(app, count);
        app.persistentContainer().saveContext();
        // The start-up makes the lists' indexes before any list opens.
        BookListSource::prepareIndexes(app.persistentContainer());
        const QString store = dir.filePath(QLatin1String(AppDelegate::kStoreFileName));
        const int middle = count / 2;

        for (const QString &mode : bookListPresentations()) {
            const double before = memoryMb("VmRSS:");
            Stopwatch t;
            std::pair<double, double> open, key, jump, firstOpen{0, 0}, firstKey{0, 0}, nextKey{0, 0};
            QString order;
            if (mode == u"cards") {
                ListStyleTableViewController list(&app);
                list.viewDidLoad();
                t.start();
                list.viewWillAppear(); // the first show: newest first
                readScreen(*list.model(), 0);
                open = t.lap();
                list.setSearchText(QStringLiteral("2021-0"));
                readScreen(*list.model(), 0);
                key = t.lap();
                list.setSearchText(QString());
                t.start();
                readScreen(*list.model(), middle);
                jump = t.lap();
                order = QStringLiteral("dateRead DESC");
            } else {
                // A page of its own, as each visit to the list makes, timed to its first screen.
                const auto openPage = [&](BookShelfViewController &page) {
                    page.setMode(mode);
                    page.viewDidLoad();
                    t.start();
                    page.viewWillAppear();
                    readScreen(*page.model(), 0);
                    return t.lap();
                };
                if (mode == u"az") {
                    // The first A-Z open files every title; later ones only read the order.
                    BookShelfViewController first(&app);
                    firstOpen = openPage(first);
                }
                BookShelfViewController shelf(&app);
                open = openPage(shelf);
                // The texts a search compares are read off the user-interface thread
                // while the list shows; a keystroke at once waits for the rest of them.
                shelf.setSearchText(QStringLiteral("ok number 1"));
                readScreen(*shelf.model(), 0);
                firstKey = t.lap();
                // The same on a fresh page after a reader's pause: one keystroke's own work.
                BookShelfViewController paused(&app);
                openPage(paused);
                QThread::msleep(300);
                t.start();
                paused.setSearchText(QStringLiteral("ok number 1"));
                readScreen(*paused.model(), 0);
                key = t.lap();
                shelf.setSearchText(QStringLiteral("ok number 12"));
                readScreen(*shelf.model(), 0);
                nextKey = t.lap();
                shelf.setSearchText(QString());
                t.start();
                readScreen(*shelf.model(), mode == u"az" ? shelf.rowOfLetter(QStringLiteral("M")) : middle);
                jump = t.lap();
                order = mode == u"az" ? QStringLiteral("name") : QStringLiteral("dateRead DESC");
            }
            const double listMb = memoryMb("VmRSS:") - before;
            const double shell = shellWindow(sqlite, store, order, middle);
            std::printf("%7d  %-9s %13s %13s %13s %8.1f %11.1f", count, qPrintable(mode), cell(open).constData(),
                        cell(key).constData(), cell(jump).constData(), listMb, shell);
            if (firstOpen.first > 0)
                std::printf("   first open, filing every title: %s", cell(firstOpen).constData());
            if (firstKey.first > 0)
                std::printf("   keystroke at once on opening: %s, next keystroke %s", cell(firstKey).constData(),
                            cell(nextKey).constData());
            std::printf("\n");
        }
        std::printf("%7d  peak memory of the process %.0f MB\n", count, memoryMb("VmHWM:"));
    }
    return 0;
}
