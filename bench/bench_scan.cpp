// Decoding 1280x720 camera frames with one code each: the time per frame on
// one core, beside one plain ZXing ReadBarcode call over all its formats, and
// the user-interface thread's longest stall while frames stream through the
// sink to the decoder's thread at 30 frames a second.
#include "entry/barcodedecoder.h"
#include "entry/barcodeframepipeline.h"

#include <ZXing/ReadBarcode.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTimer>
#include <QVideoSink>

#include <sched.h>

#include <algorithm>
#include <cstdio>

using namespace tomewise;

namespace {

const char *const kFrames[]{"frame-plain.png",       "frame-rotated.png", "frame-scaled.png", "frame-blurred.png",
                            "frame-noise.jpg",       "frame-lowcontrast.png", "frame-corner.png"};

double median(std::vector<double> v)
{
    std::sort(v.begin(), v.end());
    return v.empty() ? 0 : v[v.size() / 2];
}

void pinToOneCore()
{
    cpu_set_t set;
    CPU_ZERO(&set);
    CPU_SET(sched_getcpu(), &set);
    sched_setaffinity(0, sizeof set, &set);
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    const int rounds = argc > 1 ? std::max(1, atoi(argv[1])) : 20;
    std::vector<QImage> frames;
    for (const char *name : kFrames) {
        QImage image(QStringLiteral(TOMEWISE_BARCODE_PICTURES "/") + QLatin1String(name));
        if (image.isNull()) {
            std::fprintf(stderr, "missing %s\n", name);
            return 1;
        }
        frames.push_back(image.convertToFormat(QImage::Format_Grayscale8));
    }

    // Decoding alone, on one core.
    {
        cpu_set_t saved;
        sched_getaffinity(0, sizeof saved, &saved);
        pinToOneCore();
        const BarcodeDecoder decoder(BarcodeDecoder::captureSessionTypes());
        std::vector<double> ours, plain;
        int missed = 0;
        for (int r = 0; r < rounds; ++r) {
            for (const QImage &f : frames) {
                QElapsedTimer t;
                t.start();
                missed += !decoder.read(PixelView::of(f));
                ours.push_back(t.nsecsElapsed() / 1e6);
                // One call, one symbol: ReadBarcodes would abort on these frames.
                const ZXing::ImageView view(f.constBits(), f.width(), f.height(), ZXing::ImageFormat::Lum,
                                            int(f.bytesPerLine()));
                t.restart();
                ZXing::ReadBarcode(view, ZXing::DecodeHints().setFormats(ZXing::BarcodeFormat::EAN8 | ZXing::BarcodeFormat::EAN13 | ZXing::BarcodeFormat::PDF417 | ZXing::BarcodeFormat::QRCode));
                plain.push_back(t.nsecsElapsed() / 1e6);
            }
        }
        std::printf("frames 1280x720, %d rounds of %zu\n", rounds, frames.size());
        std::printf("decode per frame, one core: median %.1f ms, max %.1f ms (missed %d)\n", median(ours),
                    *std::max_element(ours.begin(), ours.end()), missed);
        std::printf("plain ZXing ReadBarcode, same frames: median %.1f ms\n", median(plain));
        sched_setaffinity(0, sizeof saved, &saved);
    }

    // The user-interface thread while frames stream, with and without the
    // decoder behind the sink: a 1 ms timer measures how late it runs.
    std::vector<QVideoFrame> videoFrames;
    for (const QImage &f : frames)
        videoFrames.push_back(BarcodeFramePipeline::frameOf(f));
    const auto stream = [&](bool decoding) {
        QVideoSink sink;
        BarcodeFramePipeline pipeline(BarcodeDecoder::captureSessionTypes());
        if (decoding)
            pipeline.setVideoSink(&sink);
        QElapsedTimer clock;
        clock.start();
        qint64 last = clock.nsecsElapsed();
        double longest = 0;
        QTimer tick;
        tick.setTimerType(Qt::PreciseTimer);
        QObject::connect(&tick, &QTimer::timeout, [&] {
            const qint64 now = clock.nsecsElapsed();
            longest = std::max(longest, (now - last) / 1e6);
            last = now;
        });
        int shown = 0;
        const int toShow = rounds * int(videoFrames.size());
        QTimer camera;
        camera.setTimerType(Qt::PreciseTimer);
        QObject::connect(&camera, &QTimer::timeout, [&] {
            // Each frame a new one, as a camera's are; a sink ignores the frame it shows.
            sink.setVideoFrame(QVideoFrame());
            sink.setVideoFrame(videoFrames[size_t(shown % videoFrames.size())]);
            if (++shown == toShow) {
                camera.stop();
                QTimer::singleShot(500, &application, &QCoreApplication::quit);
            }
        });
        tick.start(1);
        camera.start(33);
        application.exec();
        std::printf("UI thread, %d frames at 30/s %s: longest stall %.1f ms", shown,
                    decoding ? "decoded" : "not decoded", longest);
        if (decoding)
            std::printf(" (%d decoded, %d replaced)", pipeline.decodedCount(), pipeline.replacedCount());
        std::printf("\n");
    };
    stream(false);
    stream(true);
    return 0;
}
