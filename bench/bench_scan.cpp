// Decoding 1280x720 camera frames with one code each: the time per frame on
// one core, beside one plain ZXing ReadBarcode call over all its formats, and
// the user-interface thread's longest stall while frames stream through the
// sink to the decoder's thread at 30 frames a second.
#include "entry/barcodedecoder.h"
#include "entry/barcodeframepipeline.h"

#include <ZXing/ReadBarcode.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QTimer>
#include <QVideoSink>

#include <sched.h>
#include <time.h>

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

qint64 threadCpuNs()
{
    timespec t{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &t);
    return qint64(t.tv_sec) * 1000000000 + t.tv_nsec;
}

// Time this thread was ready to run but had no CPU (the kernel's schedstat).
qint64 runQueueWaitNs()
{
    QFile file(QStringLiteral("/proc/thread-self/schedstat"));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    const QList<QByteArray> fields = file.readAll().split(' ');
    return fields.size() > 1 ? fields[1].toLongLong() : 0;
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
        qint64 lastCpu = threadCpuNs();
        double longest = 0;
        double longestRan = 0; // how much of the longest stall this thread was running
        std::vector<double> gaps;
        const qint64 waitedBefore = runQueueWaitNs();
        QTimer tick;
        tick.setTimerType(Qt::PreciseTimer);
        QObject::connect(&tick, &QTimer::timeout, [&] {
            const qint64 now = clock.nsecsElapsed();
            const qint64 cpu = threadCpuNs();
            const double gap = (now - last) / 1e6;
            gaps.push_back(gap);
            if (gap > longest) {
                longest = gap;
                longestRan = (cpu - lastCpu) / 1e6;
            }
            last = now;
            lastCpu = cpu;
        });
        int shown = 0;
        const int toShow = rounds * int(videoFrames.size());
        double longestHandOff = 0; // the UI thread's own work per frame
        QTimer camera;
        camera.setTimerType(Qt::PreciseTimer);
        QObject::connect(&camera, &QTimer::timeout, [&] {
            const qint64 start = clock.nsecsElapsed();
            // Each frame a new one, as a camera's are; a sink ignores the frame it shows.
            sink.setVideoFrame(QVideoFrame());
            sink.setVideoFrame(videoFrames[size_t(shown % videoFrames.size())]);
            longestHandOff = std::max(longestHandOff, (clock.nsecsElapsed() - start) / 1e6);
            if (++shown == toShow) {
                camera.stop();
                QTimer::singleShot(500, &application, &QCoreApplication::quit);
            }
        });
        tick.start(1);
        camera.start(33);
        application.exec();
        std::sort(gaps.begin(), gaps.end());
        std::printf("UI thread, %d frames at 30/s %s: longest stall %.1f ms (running %.2f ms of it), 99.9th "
                    "percentile %.1f ms, waited for a CPU %.0f ms in all, longest frame hand-off %.2f ms",
                    shown, decoding ? "decoded" : "not decoded", longest, longestRan,
                    gaps.empty() ? 0.0 : gaps[size_t(double(gaps.size() - 1) * 0.999)],
                    (runQueueWaitNs() - waitedBefore) / 1e6, longestHandOff);
        if (decoding)
            std::printf(" (%d decoded, %d replaced)", pipeline.decodedCount(), pipeline.replacedCount());
        std::printf("\n");
    };
    stream(false);
    stream(true);
    return 0;
}
