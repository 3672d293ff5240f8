// Inserting a large library in one transaction, timed per block of 10,000
// books, so that a cost growing with the library's size shows: usage bench_store [BOOKS]
#include "support/imagefixtures.h"
#include "support/testapp.h"

#include <QElapsedTimer>
#include <QGuiApplication>

#include <cstdio>

using namespace tomewise;

int main(int argc, char *argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication application(argc, argv);
    const int n = argc > 1 ? QString::fromLatin1(argv[1]).toInt() : 100000;
    test::TestApp t;
    const QByteArray cover = test::encode(test::coverImage(QSize(125, 180)), "jpeg", 90);
    QElapsedTimer block;
    QElapsedTimer total;
    total.start();
    block.start();
    BookStore::Transaction tx(t.store());
    for (int i = 0; i < n; ++i) {
        Books b = test::book(QStringLiteral("Title %1").arg((i * 7919) % n), QStringLiteral("Author %1").arg(i % 4999));
        b.category = QStringLiteral("Genre %1").arg(i % 29);
        b.dt = QStringLiteral("Mar %1, 2021").arg(1 + i % 28);
        b.dateRead = QDateTime::fromSecsSinceEpoch(1600000000 + qint64(i) * 3600, Qt::UTC);
        b.year = qint16(1990 + i % 35);
        b.pictureImage = cover;
        t.store().insertBook(b);
        if ((i + 1) % 10000 == 0) {
            std::printf("%6d books: last 10,000 in %lld ms\n", i + 1, block.elapsed());
            block.restart();
        }
    }
    tx.commit();
    std::printf("%d books inserted in %lld ms\n", n, total.elapsed());
    return 0;
}
