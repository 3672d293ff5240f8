#include "entry/barcodedecoder.h"
#include "entry/barcodeframepipeline.h"

#include <QSignalSpy>
#include <QTest>
#include <QThread>
#include <QVideoSink>

#include <memory>

using namespace tomewise;

namespace {

const QString kISBN = QStringLiteral("9780060853983");
const QString kURL = QStringLiteral("https://example.org/books/42");

QImage picture(const QString &name)
{
    const QImage image(QStringLiteral(TOMEWISE_TEST_DATA "/barcode/") + name);
    if (image.isNull())
        qFatal("missing test picture %s (tests/data/barcode/make-pictures.sh makes it)", qPrintable(name));
    return image;
}

} // namespace

// The decoder behind every barcode screen, fed as the camera feeds it: each
// picture is wrapped as a video frame and shown in a video sink.
class TestBarcode : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void framesThroughTheSink_data();
    void framesThroughTheSink();
    void severalCodesInView_data();
    void severalCodesInView();
    void newestFrameReplacesWaitingOnes_data();
    void newestFrameReplacesWaitingOnes();
};

void TestBarcode::framesThroughTheSink_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QList<Symbology>>("types");
    QTest::addColumn<bool>("planar"); // NV12 as cameras deliver, else 32-bit RGB
    QTest::addColumn<QString>("text"); // empty: nothing read

    const auto camera = BarcodeDecoder::captureSessionTypes();
    const auto area = BarcodeDecoder::scanAreaTypes();
    const QList<Symbology> all;
    // Each symbology from its own picture.
    QTest::newRow("EAN-13 with add-on") << "ean13-addon.png" << camera << true << kISBN;
    QTest::newRow("EAN-8") << "ean8.png" << camera << false << "96385074";
    QTest::newRow("QR code") << "qr.png" << camera << true << kURL;
    QTest::newRow("PDF417") << "pdf417.png" << camera << false << "ISBN 9780060853983";
    QTest::newRow("Aztec") << "aztec.png" << area << true << "Tomewise 42";
    QTest::newRow("Code 39") << "code39.png" << area << false << "TOMEWISE-42";
    QTest::newRow("Code 93") << "code93.png" << area << true << "TOMEWISE 93";
    QTest::newRow("Code 128") << "code128.png" << area << false << "Tomewise-128";
    QTest::newRow("Data Matrix") << "datamatrix.png" << area << true << "Tomewise DM";
    QTest::newRow("ITF-14") << "itf14.png" << area << false << "15400141288763";
    QTest::newRow("Aztec, all types") << "aztec.png" << all << false << "Tomewise 42";
    QTest::newRow("Aztec, camera types") << "aztec.png" << camera << true << QString();
    // 1280x720 frames as a camera sees a book. Reading several symbols in one
    // call (ZXing's ReadBarcodes) aborts the whole process on the plain,
    // rotated, blurred and noisy ones; here they must simply be read.
    QTest::newRow("frame: plain") << "frame-plain.png" << camera << true << kISBN;
    QTest::newRow("frame: rotated 10°") << "frame-rotated.png" << camera << true << kISBN;
    QTest::newRow("frame: scaled") << "frame-scaled.png" << camera << false << kISBN;
    QTest::newRow("frame: blurred") << "frame-blurred.png" << camera << true << kISBN;
    QTest::newRow("frame: noise") << "frame-noise.jpg" << camera << true << kISBN;
    QTest::newRow("frame: noise, RGB") << "frame-noise.jpg" << camera << false << kISBN;
    QTest::newRow("frame: low contrast") << "frame-lowcontrast.png" << camera << true << kISBN;
    QTest::newRow("frame: in a corner") << "frame-corner.png" << camera << true << kISBN;
    QTest::newRow("frame: EAN-13 and QR") << "frame-ean13-qr.png" << camera << true << kISBN;
    QTest::newRow("frame: no code") << "frame-empty.png" << camera << true << QString();
}

void TestBarcode::framesThroughTheSink()
{
    QFETCH(QString, file);
    QFETCH(QList<Symbology>, types);
    QFETCH(bool, planar);
    QFETCH(QString, text);

    const QImage image = picture(file);
    QVideoSink sink;
    BarcodeFramePipeline pipeline(types);
    pipeline.setVideoSink(&sink);
    QSignalSpy read(&pipeline, &BarcodeFramePipeline::codeRead);
    QSignalSpy nothing(&pipeline, &BarcodeFramePipeline::nothingRead);
    sink.setVideoFrame(BarcodeFramePipeline::frameOf(image, planar));

    QTRY_COMPARE_WITH_TIMEOUT(read.size() + nothing.size(), 1, 10000);
    if (text.isEmpty()) {
        QCOMPARE(read.size(), 0);
        return;
    }
    QCOMPARE(read.size(), 1);
    const auto code = read.first().at(0).value<BarcodeRead>();
    QCOMPARE(code.text, text);
    QCOMPARE(read.first().at(1).toSize(), image.size());
    // Where it was seen lies on the picture and holds a real area, linear codes included.
    const QRectF bounds = code.bounds();
    QVERIFY2(QRectF(QPointF(-4, -4), image.size() + QSize(8, 8)).contains(bounds), qPrintable(file));
    QVERIFY2(bounds.width() > 20 && bounds.height() > 20, qPrintable(file));
}

void TestBarcode::severalCodesInView_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QStringList>("all"); // every code found, in any order
    QTest::addColumn<QString>("taken");

    QTest::newRow("ISBN beside a larger EAN-13")
        << "frame-two-ean13.png" << QStringList{QStringLiteral("4006381333931"), kISBN} << kISBN;
    QTest::newRow("ISBN beside a QR code") << "frame-ean13-qr.png" << QStringList{kISBN, kURL} << kISBN;
    QTest::newRow("no ISBN: the larger code")
        << "frame-qr-pdf417.png" << QStringList{kURL, QStringLiteral("ISBN 9780060853983")}
        << QStringLiteral("ISBN 9780060853983");
}

void TestBarcode::severalCodesInView()
{
    QFETCH(QString, file);
    QFETCH(QStringList, all);
    QFETCH(QString, taken);

    const QImage grey = picture(file).convertToFormat(QImage::Format_Grayscale8);
    const BarcodeDecoder decoder(BarcodeDecoder::captureSessionTypes());
    QStringList found;
    for (const auto &r : decoder.readAll(PixelView::of(grey)))
        found << r.text;
    found.sort();
    all.sort();
    QCOMPARE(found, all);
    QCOMPARE(decoder.read(grey)->text, taken);
}

void TestBarcode::newestFrameReplacesWaitingOnes_data()
{
    QTest::addColumn<bool>("cameraThread"); // else all at once on this thread
    QTest::newRow("a burst") << false;
    // Paced as a camera's, so frames also land while one is decoded: a
    // wake-up lost in the hand-off would strand the newest frame.
    QTest::newRow("paced, from another thread") << true;
}

void TestBarcode::newestFrameReplacesWaitingOnes()
{
    QFETCH(bool, cameraThread);
    constexpr int kOffered = 12;
    // Distinct frames, as a camera's are: a sink ignores the frame it already shows.
    QList<QVideoFrame> frames;
    const QImage noisy = picture("frame-noise.jpg"); // holds no QR code
    for (int i = 0; i < kOffered - 1; ++i)
        frames << BarcodeFramePipeline::frameOf(noisy);
    const QVideoFrame last = BarcodeFramePipeline::frameOf(picture("frame-ean13-qr.png"));
    QVideoSink sink;
    BarcodeFramePipeline pipeline({Symbology::QRCode});
    pipeline.setVideoSink(&sink);
    QSignalSpy read(&pipeline, &BarcodeFramePipeline::codeRead);
    const auto offerAll = [&] {
        for (const auto &f : frames) {
            pipeline.offer(f);
            if (cameraThread)
                QThread::msleep(4);
        }
        pipeline.offer(last);
    };
    if (cameraThread) {
        const std::unique_ptr<QThread> camera(QThread::create(offerAll));
        camera->start();
        QVERIFY(camera->wait(10000));
    } else {
        offerAll();
    }

    QTRY_VERIFY_WITH_TIMEOUT(!pipeline.isBusy() && read.size() == 1, 20000);
    QCOMPARE(read.first().at(0).value<BarcodeRead>().text, kURL);
    QCOMPARE(pipeline.decodedCount() + pipeline.replacedCount(), kOffered);
    if (!cameraThread)
        QVERIFY2(pipeline.replacedCount() >= kOffered - 3, "frames queued up behind the decoder");

    pipeline.stop();
    sink.setVideoFrame(last);
    QTest::qWait(100);
    QCOMPARE(read.size(), 1);
}

QTEST_MAIN(TestBarcode)
#include "tst_barcode.moc"
