#include "support/booksapiserver.h"
#include "support/logcapture.h"
#include "support/testapp.h"

#include "entry/barcodeframepipeline.h"
#include "entry/barcodeviewcontroller.h"
#include "entry/captureviewcontroller.h"
#include "entry/captureviewcontrollerios16.h"
#include "entry/newbookviewcontroller.h"
#include "entry/newcaptureviewcontroller.h"

#include <QSignalSpy>
#include <QTest>
#include <QVideoSink>

using namespace tomewise;
using namespace tomewise::test;

namespace {

const QString kISBN = QStringLiteral("9780060853983");
const QString kURL = QStringLiteral("https://example.org/books/42");
const QSizeF kPreview(390, 792);

QString path(const char *name)
{
    return QStringLiteral(TOMEWISE_TEST_DATA "/barcode/") + QLatin1String(name);
}

// A camera screen whose preview sink feeds its decoder, as a started session's does.
void attachPreview(CaptureSessionController &screen, QVideoSink &sink)
{
    screen.setPreviewLayer(&sink);
    screen.setPreviewSize(kPreview);
    screen.metadataOutput().setVideoSink(&sink);
}

} // namespace

// The four barcode screens: what each does without a camera, and how a code
// read goes to the form.
class TestBarcodeScreens : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void withoutCamera_data();
    void withoutCamera();
    void cameraReadGoesToTheForm();
    void qrCodeHandedOverAsItStands_data();
    void qrCodeHandedOverAsItStands();
    void scanAreaReadsInsideOnly_data();
    void scanAreaReadsInsideOnly();
    void photo_data();
    void photo();

private:
    std::unique_ptr<BooksApiServer> m_server;
};

void TestBarcodeScreens::initTestCase()
{
    m_server = std::make_unique<BooksApiServer>();
    qputenv("TOMEWISE_BOOKS_API", m_server->volumesAddress().toEncoded());
}

void TestBarcodeScreens::withoutCamera_data()
{
    QTest::addColumn<QString>("screen");
    QTest::addColumn<QStringList>("log");
    QTest::addColumn<QStringList>("alert");

    const QStringList noCamera{QStringLiteral("No camera available")};
    QTest::newRow("BarCode") << "BarCode" << (noCamera + QStringList{QStringLiteral("Error setting up camera input: busy")})
                             << QStringList();
    QTest::newRow("NewCapture") << "NewCapture" << noCamera << QStringList();
    QTest::newRow("Capture") << "Capture" << QStringList()
                             << QStringList{QStringLiteral("Scanning not supported"),
                                            QStringLiteral("Your device does not support scanning a code from an "
                                                           "item. Please use a device with a camera.")};
    QTest::newRow("CaptureIOS16, no picture source")
        << "CaptureIOS16" << QStringList()
        << QStringList{QStringLiteral("Scanner is not available for usage. please chech settings"), QString()};
    // An empty clipboard leads to the file chooser, even with a camera: no alert.
    QTest::newRow("CaptureIOS16, chooser") << "CaptureIOS16 chooser" << QStringList() << QStringList();
}

void TestBarcodeScreens::withoutCamera()
{
    QFETCH(QString, screen);
    QFETCH(QStringList, log);
    QFETCH(QStringList, alert);

    TestApp t;
    LogCapture capture;
    std::unique_ptr<ScannerController> controller;
    if (screen.startsWith(QLatin1String("CaptureIOS16"))) {
        const bool chooser = screen.endsWith(QLatin1String("chooser"));
        t.platform().pictureSource = chooser;
        t.platform().hasCamera = chooser;
        auto photo = std::make_unique<CaptureViewControllerIOS16>(&t.app());
        QSignalSpy picker(photo.get(), &CaptureViewControllerIOS16::documentPickerRequested);
        QSignalSpy navigated(photo.get(), &ScreenController::navigate);
        photo->StartScanning();
        QCOMPARE(picker.size(), chooser ? 1 : 0);
        QCOMPARE(navigated.size(), 0);
        controller = std::move(photo);
    } else {
        std::unique_ptr<CaptureSessionController> camera;
        if (screen == QLatin1String("BarCode"))
            camera = std::make_unique<BarCodeViewController>(&t.app());
        else if (screen == QLatin1String("NewCapture"))
            camera = std::make_unique<NewCaptureViewController>(&t.app());
        else
            camera = std::make_unique<CaptureViewController>(&t.app());
        QVideoSink sink;
        camera->setPreviewLayer(&sink);
        camera->viewDidLoad();
        QVERIFY(!camera->isRunning());
        if (screen == QLatin1String("BarCode")) {
            // Reported both at once and later by the camera: one set-up line.
            camera->cameraError(QStringLiteral("busy"));
            camera->cameraError(QStringLiteral("busy"));
        }
        controller = std::move(camera);
    }
    QCOMPARE(capture.lines("tomewise.entry"), log);
    QCOMPARE(controller->alertTitle(), alert.value(0));
    QCOMPARE(controller->alertMessage(), alert.value(1));
    if (!alert.isEmpty())
        QCOMPARE(controller->alertButtons(), QStringList{QStringLiteral("OK")});
}

void TestBarcodeScreens::cameraReadGoesToTheForm()
{
    TestApp t;
    LogCapture capture;
    NewBookViewController form(&t.app());
    form.viewDidLoad();
    QVideoSink sink;
    NewCaptureViewController camera(&t.app());
    attachPreview(camera, sink);
    QSignalSpy unwind(&camera, &ScreenController::unwind);

    const QImage frame(path("frame-ean13-qr.png"));
    sink.setVideoFrame(BarcodeFramePipeline::frameOf(frame));
    QTRY_COMPARE_WITH_TIMEOUT(unwind.size(), 1, 10000);
    QCOMPARE(unwind.first().first().toString(), QStringLiteral("unwindFromScanner"));
    QCOMPARE(t.app().state().scannedISBN(), kISBN);
    // The screen waited for the query it sent, so the answer is held when the form fills.
    QCOMPARE(m_server->requests().last().q(), "ISBN:" + kISBN);
    QVERIFY(t.app().state().scannedBookItems());

    // The EAN-13 sits left of the frame's middle; the preview crops the frame's sides.
    QVERIFY(camera.overlayVisible());
    const QRectF overlay = camera.overlayView();
    const QRectF inFrame = BarcodeFramePipeline::toFrame(overlay, frame.size(), kPreview);
    QVERIFY(inFrame.left() > 40 && inFrame.right() < 640 && inFrame.center().y() > 300 && inFrame.center().y() < 420);
    const QStringList bounds = capture.lines("tomewise.entry").filter(QStringLiteral("Transformed Bounds: ("));
    QCOMPARE(bounds.size(), 1);
    QCOMPARE(bounds.first(), QStringLiteral("Transformed Bounds: (%1, %2, %3, %4)")
                                 .arg(overlay.x(), 0, 'f', 1).arg(overlay.y(), 0, 'f', 1)
                                 .arg(overlay.width(), 0, 'f', 1).arg(overlay.height(), 0, 'f', 1));

    // A second frame after the read changes nothing.
    sink.setVideoFrame(BarcodeFramePipeline::frameOf(QImage(path("qr.png"))));
    QTest::qWait(200);
    QCOMPARE(t.app().state().scannedISBN(), kISBN);

    form.unwindFromScanner();
    QCOMPARE(form.property("ISBNTextField").toString(), kISBN);
    QCOMPARE(form.property("bookNameTextField").toString(), QStringLiteral("Good Omens"));
}

void TestBarcodeScreens::qrCodeHandedOverAsItStands_data()
{
    QTest::addColumn<QString>("typedTitle");
    QTest::addColumn<QString>("alert");

    QTest::newRow("title empty") << QString() << "The Scanned Barcode returned no Results for: " + kURL;
    QTest::newRow("title typed") << QStringLiteral("Mine") << QString();
}

void TestBarcodeScreens::qrCodeHandedOverAsItStands()
{
    QFETCH(QString, typedTitle);
    QFETCH(QString, alert);

    TestApp t(QByteArrayLiteral("America/New_York"), TestApp::defaultNow(), 0.1);
    NewBookViewController form(&t.app());
    form.viewDidLoad();
    form.setProperty("bookNameTextField", typedTitle);
    QVideoSink sink;
    BarCodeViewController camera(&t.app());
    attachPreview(camera, sink);
    QSignalSpy unwind(&camera, &ScreenController::unwind);
    sink.setVideoFrame(BarcodeFramePipeline::frameOf(QImage(path("qr.png"))));
    QTRY_COMPARE_WITH_TIMEOUT(unwind.size(), 1, 10000);
    QCOMPARE(m_server->requests().last().q(), "ISBN:" + kURL);

    QSignalSpy alerts(&form, &ScreenController::alert);
    form.unwindFromScanner();
    QCOMPARE(form.property("ISBNTextField").toString(), kURL);
    QCOMPARE(form.property("bookNameTextField").toString(), typedTitle);
    QTest::qWait(BookForm::kScannerNotFoundDelayMs / 10 + 100);
    QCOMPARE(alerts.size(), alert.isEmpty() ? 0 : 1);
    if (!alert.isEmpty())
        QCOMPARE(alerts.first().mid(0, 2), QVariantList({QStringLiteral("Book Not Found"), alert}));
}

void TestBarcodeScreens::scanAreaReadsInsideOnly_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("text");

    QTest::newRow("code in the area") << "frame-plain.png" << kISBN;
    QTest::newRow("code in a corner") << "frame-corner.png" << QString();
}

void TestBarcodeScreens::scanAreaReadsInsideOnly()
{
    QFETCH(QString, file);
    QFETCH(QString, text);

    TestApp t;
    QVideoSink sink;
    CaptureViewController screen(&t.app());
    attachPreview(screen, sink);
    QCOMPARE(screen.supportedInterfaceOrientations(), Qt::PortraitOrientation);
    QVERIFY(QRectF(QPointF(), kPreview).contains(screen.barcodeArea()));
    // A preview as wide as the frames, so that the area spans a book's EAN-13.
    screen.setPreviewSize(QSizeF(1280, 720));
    QSignalSpy nothing(&screen.metadataOutput(), &BarcodeFramePipeline::nothingRead);
    sink.setVideoFrame(BarcodeFramePipeline::frameOf(QImage(path(file.toLatin1().constData()))));
    if (text.isEmpty()) {
        QTRY_COMPARE_WITH_TIMEOUT(nothing.size(), 1, 10000);
        QVERIFY(!screen.handedOver());
    } else {
        QTRY_VERIFY_WITH_TIMEOUT(screen.handedOver(), 10000);
        QCOMPARE(t.app().state().scannedISBN(), text);
    }
}

void TestBarcodeScreens::photo_data()
{
    QTest::addColumn<QString>("file");   // empty: the clipboard's picture
    QTest::addColumn<QString>("label");
    QTest::addColumn<bool>("leaves");

    QTest::newRow("Code 39 from a file") << "code39.png" << "TOMEWISE-42" << true;
    QTest::newRow("Data Matrix from the clipboard") << QString() << "Tomewise DM" << true;
    QTest::newRow("no code") << "frame-empty.png" << CaptureViewControllerIOS16::kNothingRead << false;
    QTest::newRow("not a picture") << "make-pictures.sh" << "Not a picture: make-pictures.sh" << false;
}

void TestBarcodeScreens::photo()
{
    QFETCH(QString, file);
    QFETCH(QString, label);
    QFETCH(bool, leaves);

    TestApp t;
    CaptureViewControllerIOS16 screen(&t.app());
    QSignalSpy unwind(&screen, &ScreenController::unwind);
    QSignalSpy shown(&screen, &CaptureViewControllerIOS16::displayLabelChanged);
    if (file.isEmpty()) {
        t.platform().clipboard = QImage(path("datamatrix.png"));
        screen.StartScanning();
    } else {
        screen.pictureChosen(QUrl::fromLocalFile(path(file.toLatin1().constData())));
    }
    QTRY_VERIFY_WITH_TIMEOUT(!screen.isScanning() && !screen.displayLabel().isEmpty(), 10000);
    QCOMPARE(screen.displayLabel(), label);
    QCOMPARE(screen.alertTitle(), QString());
    if (leaves) {
        QTRY_COMPARE_WITH_TIMEOUT(unwind.size(), 1, ScannerController::kLookupWaitMs + 2000);
        QCOMPARE(t.app().state().scannedISBN(), label);
    } else {
        QTest::qWait(100);
        QCOMPARE(unwind.size(), 0);
    }
}

QTEST_MAIN(TestBarcodeScreens)
#include "tst_barcodescreens.moc"
