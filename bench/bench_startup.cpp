// A first and a second start-up over a library of covers, beside a plain
// libjpeg-turbo decode and re-encode loop of the same covers: usage
// bench_startup [BOOKS...]
#include "app/mainmenuviewcontroller.h"
#include "support/imagefixtures.h"
#include "support/testapp.h"
#include "plainjpeg.h"

#include <QElapsedTimer>
#include <QGuiApplication>

#include <cstdio>

using namespace tomewise;

int main(int argc, char *argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication application(argc, argv);
    QList<int> sizes;
    for (int i = 1; i < argc; ++i)
        sizes << QString::fromLatin1(argv[i]).toInt();
    if (sizes.isEmpty())
        sizes << 10000;

    for (int n : sizes) {
        test::TestApp t("America/New_York");
        QList<QByteArray> covers;
        {
            BookStore::Transaction tx(t.store());
            for (int i = 0; i < n; ++i) {
                Books b = test::book(QStringLiteral("Book %1").arg(i), QStringLiteral("Author %1").arg(i % 997));
                b.year = qint16(2000 + i % 25);
                b.month = qint16(1 + i % 12);
                b.day = qint16(1 + i % 28);
                b.pictureImage = test::encode(test::coverImage(QSize(125, 180), i), "jpeg", 90);
                covers << *b.pictureImage;
                t.store().insertBook(b);
            }
            tx.commit();
        }

        QElapsedTimer timer;
        timer.start();
        size_t total = 0;
        for (const auto &c : covers)
            total += plainReencode(c, 5);
        const double plainMs = double(timer.nsecsElapsed()) / 1e6;

        MainMenuViewController menu(&t.app());
        timer.restart();
        menu.viewDidLoad();
        const double startupMs = double(timer.nsecsElapsed()) / 1e6;
        // A process waits for the copy as it closes the store, before any next start.
        t.store().waitForCheckpoint();
        const double firstCopiedMs = double(timer.nsecsElapsed()) / 1e6;

        // The next launch of the unchanged library, with a fresh delegate as a new process has.
        auto next = t.relaunch();
        MainMenuViewController again(next.get());
        timer.restart();
        again.viewDidLoad();
        const double secondMs = double(timer.nsecsElapsed()) / 1e6;
        // The menu is ready; the log is still being copied back into the file off its thread.
        next->persistentContainer().waitForCheckpoint();
        const double copiedMs = double(timer.nsecsElapsed()) / 1e6;

        std::printf("%d books with covers: first start-up %.0f ms (%d covers re-encoded; log copied back by %.0f ms), second start-up %.0f ms "
                    "(%d covers given their bytes, %d of them known from the first start without decoding; log copied back "
                    "in the background by %.0f ms); plain libjpeg-turbo loop %.0f ms (%zu bytes out); "
                    "first / plain = %.2f, second / plain = %.2f\n",
                    n, startupMs, menu.lastRepair().covers, firstCopiedMs, secondMs, again.lastRepair().covers,
                    again.lastRepair().fixedCovers, copiedMs, plainMs, total, startupMs / plainMs, secondMs / plainMs);
    }
    return 0;
}
