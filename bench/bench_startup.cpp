// A first and a second start-up over a library of covers, beside a plain
// libjpeg-turbo decode and re-encode loop of the same covers: usage
// bench_startup [BOOKS...]
#include "app/mainmenuviewcontroller.h"
#include "support/imagefixtures.h"
#include "support/testapp.h"

#include <QElapsedTimer>
#include <QGuiApplication>

#include <cstdio>
#include <jpeglib.h>

using namespace tomewise;

namespace {

// Decode to pixels and encode again at quality 5, all in memory.
size_t plainReencode(const QByteArray &in)
{
    jpeg_decompress_struct d{};
    jpeg_error_mgr errors{};
    d.err = jpeg_std_error(&errors);
    jpeg_create_decompress(&d);
    jpeg_mem_src(&d, reinterpret_cast<const unsigned char *>(in.constData()), in.size());
    jpeg_read_header(&d, TRUE);
    jpeg_start_decompress(&d);
    const int stride = int(d.output_width * d.output_components);
    std::vector<unsigned char> pixels(size_t(stride) * d.output_height);
    while (d.output_scanline < d.output_height) {
        unsigned char *row = pixels.data() + size_t(d.output_scanline) * stride;
        jpeg_read_scanlines(&d, &row, 1);
    }
    jpeg_compress_struct c{};
    c.err = jpeg_std_error(&errors);
    jpeg_create_compress(&c);
    unsigned char *out = nullptr;
    unsigned long outSize = 0;
    jpeg_mem_dest(&c, &out, &outSize);
    c.image_width = d.output_width;
    c.image_height = d.output_height;
    c.input_components = d.output_components;
    c.in_color_space = d.out_color_space;
    jpeg_set_defaults(&c);
    jpeg_set_quality(&c, 5, TRUE);
    jpeg_start_compress(&c, TRUE);
    while (c.next_scanline < c.image_height) {
        unsigned char *row = pixels.data() + size_t(c.next_scanline) * stride;
        jpeg_write_scanlines(&c, &row, 1);
    }
    jpeg_finish_compress(&c);
    jpeg_finish_decompress(&d);
    jpeg_destroy_decompress(&d);
    jpeg_destroy_compress(&c);
    free(out);
    return outSize;
}

} // namespace

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
            total += plainReencode(c);
        const double plainMs = double(timer.nsecsElapsed()) / 1e6;

        MainMenuViewController menu(&t.app());
        timer.restart();
        menu.viewDidLoad();
        const double startupMs = double(timer.nsecsElapsed()) / 1e6;

        // The next launch of the unchanged library, with a fresh delegate as a new process has.
        auto next = t.relaunch();
        MainMenuViewController again(next.get());
        timer.restart();
        again.viewDidLoad();
        const double secondMs = double(timer.nsecsElapsed()) / 1e6;

        std::printf("%d books with covers: first start-up %.0f ms (%d covers re-encoded), second start-up %.0f ms "
                    "(%d covers given their bytes, %d of them known from the first start without decoding); plain libjpeg-turbo loop %.0f ms (%zu bytes out); "
                    "first / plain = %.2f, second / plain = %.2f\n",
                    n, startupMs, menu.lastRepair().covers, secondMs, again.lastRepair().covers,
                    again.lastRepair().fixedCovers, plainMs, total, startupMs / plainMs, secondMs / plainMs);
    }
    return 0;
}
