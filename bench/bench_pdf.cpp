// The PDF list and the printed report of N covered books: time, pages, file
// size and peak memory of each, beside a plain decode of the same covers (the
// work no PDF of them can skip), timed in the same run.
#include "app/appdelegate.h"
#include "browse/pdflistbuilder.h"
#include "exchange/printgroupbybooksviewcontroller.h"
#include "platform/recordingplatform.h"
#include "support/imagefixtures.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QFileInfo>
#include <QGuiApplication>
#include <QPrinter>
#include <QTemporaryDir>

#include <malloc.h>
#include <sys/resource.h>

#include <cstdio>

using namespace tomewise;

namespace {

// The report's page count as pdfinfo reads it (the printer keeps no count).
int pdfPages(const QString &path)
{
    QProcess p;
    p.start(QStringLiteral("pdfinfo"), {path});
    p.waitForFinished(60000);
    const QString info = QString::fromUtf8(p.readAllStandardOutput());
    return info.section(QStringLiteral("Pages:"), 1).trimmed().section(u'\n', 0, 0).toInt();
}

// User and system time of the whole process, in ms.
qint64 cpuMs()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return (usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) * 1000
        + (usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1000;
}

// The peak resident memory since the last resetPeak(), from the kernel.
long peakKb()
{
    QFile status(QStringLiteral("/proc/self/status"));
    status.open(QIODevice::ReadOnly);
    for (const QByteArray &line : status.readAll().split('\n')) {
        if (line.startsWith("VmHWM:"))
            return line.mid(6).trimmed().split(' ').first().toLong();
    }
    return 0;
}

// Each step's peak on its own: the freed heap handed back, the mark reset.
void resetPeak()
{
    malloc_trim(0);
    QFile refs(QStringLiteral("/proc/self/clear_refs"));
    if (refs.open(QIODevice::WriteOnly))
        refs.write("5");
}

} // namespace

int main(int argc, char *argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication application(argc, argv);
    const int n = argc > 1 ? std::max(1, atoi(argv[1])) : 1000;
    QTemporaryDir scratch;
    // A second argument keeps the two PDFs in that folder, to look at.
    const QDir dir(argc > 2 ? QString::fromLocal8Bit(argv[2]) : scratch.path());
    AppDelegate::Options options;
    options.dataDirectory = scratch.path();
    options.platform = std::make_unique<RecordingPlatform>();
    AppDelegate app(std::move(options));
    BookStore &store = app.persistentContainer();

    // Fifty different covers, so the PDF cannot share one picture among books.
    QList<QByteArray> covers;
    for (int i = 0; i < 50; ++i)
        covers << test::encode(test::coverImage(QSize(250, 360), i), "JPEG", 80);
    QList<Books> books;
    {
        BookStore::Transaction t(store);
        for (int i = 0; i < n; ++i) {
            Books b;
            b.name = QStringLiteral("Book number %1").arg(i);
            b.author = QStringLiteral("Author %1").arg(i % 97);
            b.category = QStringLiteral("Genre %1").arg(i % 30);
            b.rating = QStringLiteral("***");
            b.dt = QStringLiteral("Mar 4, 2021");
            b.publishDate = qint16(1900 + i % 127);
            b.numberPages = qint16(100 + i % 700);
            b.notes = QStringLiteral("Notes on book %1").arg(i);
            store.insertBook(b);
            store.setCover(b.pk, covers[i % covers.size()]);
            books << b;
        }
        t.commit();
    }
    std::printf("%d books with 250x360 covers; peak memory before %ld MB\n", n, peakKb() / 1024);
    resetPeak();

    QElapsedTimer timer;
    timer.start();
    qint64 cpu = cpuMs();
    for (const Books &b : books)
        decodeCover(*store.cover(b.pk));
    const qint64 decodeMs = timer.elapsed();
    const qint64 decodeCpu = cpuMs() - cpu;

    resetPeak();
    timer.restart();
    cpu = cpuMs();
    {
        PdfListBuilder list(groupKind(GroupKind::Rating), books, store);
        const QString listPath = dir.filePath(QStringLiteral("list.pdf"));
        QString error;
        if (!list.write(listPath, &error)) {
            std::fprintf(stderr, "PDF list failed: %s\n", qPrintable(error));
            return 1;
        }
        const qint64 listMs = timer.elapsed();
        std::printf("PDF list:   %6lld ms (CPU %6lld ms), %5d pages, %7lld kB, peak memory %ld MB\n", listMs,
                    cpuMs() - cpu, list.pageCount(), QFileInfo(listPath).size() / 1024, peakKb() / 1024);
    }

    resetPeak();
    timer.restart();
    cpu = cpuMs();
    app.state().setCallingScreen(QStringLiteral("MainMenu"));
    PrintGroupByBooksViewController report(&app, nullptr);
    report.viewDidLoad();
    report.buildNow();
    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    const QString reportPath = dir.filePath(QStringLiteral("report.pdf"));
    printer.setOutputFileName(reportPath);
    report.printTo(printer);
    const qint64 reportMs = timer.elapsed();
    const qint64 reportCpu = cpuMs() - cpu;
    const long reportPeak = peakKb();
    std::printf("Report:     %6lld ms (CPU %6lld ms), %5d pages, %7lld kB, peak memory %ld MB\n", reportMs, reportCpu,
                pdfPages(reportPath), QFileInfo(reportPath).size() / 1024, reportPeak / 1024);
    std::printf("Plain decode of the same covers: %lld ms (CPU %lld ms)\n", decodeMs, decodeCpu);
    return 0;
}
