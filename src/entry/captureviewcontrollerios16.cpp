#include "captureviewcontrollerios16.h"

#include "entry/barcodeframepipeline.h"

#include <QFileInfo>
#include <QImageReader>

namespace tomewise {

CaptureViewControllerIOS16::CaptureViewControllerIOS16(AppDelegate *delegate, QObject *parent)
    : ScannerController(delegate, parent)
    , m_pipeline(new BarcodeFramePipeline({}, this))
{
    setTitle(QStringLiteral("Scan a Photo"));
    connect(m_pipeline, &BarcodeFramePipeline::codeRead, this, [this](const BarcodeRead &read) {
        setScanning(false);
        if (handedOver())
            return;
        m_pipeline->stop();
        setDisplayLabel(read.text);
        handOver(read.text);
    });
    connect(m_pipeline, &BarcodeFramePipeline::nothingRead, this, [this] {
        setScanning(false);
        setDisplayLabel(QLatin1String(kNothingRead));
    });
}

CaptureViewControllerIOS16::~CaptureViewControllerIOS16() = default;

void CaptureViewControllerIOS16::StartScanning()
{
    if (const auto image = app().platform().clipboardImage()) {
        scanPicture(*image);
        return;
    }
    // A picture on disk is the next source; a camera screen is only opened
    // where there is none, since this screen is itself reached from one.
    if (app().platform().canChoosePicture()) {
        choosePicture();
        return;
    }
    if (app().platform().cameraAvailable()) {
        Q_EMIT navigate(QStringLiteral("BarCode"));
        return;
    }
    showAlert(QStringLiteral("Scanner is not available for usage. please chech settings"), QString());
}

void CaptureViewControllerIOS16::choosePicture()
{
    Q_EMIT documentPickerRequested();
}

bool CaptureViewControllerIOS16::pictureChosen(const QUrl &url)
{
    const QString path = url.isLocalFile() ? url.toLocalFile() : url.toString();
    QImageReader reader(path);
    reader.setAutoTransform(true);
    const QImage image = reader.read();
    if (image.isNull()) {
        setDisplayLabel(QStringLiteral("Not a picture: ") + QFileInfo(path).fileName());
        return false;
    }
    scanPicture(image);
    return true;
}

void CaptureViewControllerIOS16::scanPicture(const QImage &image)
{
    if (handedOver() || image.isNull())
        return;
    m_picture = image;
    Q_EMIT pictureChanged();
    setDisplayLabel(QString());
    setScanning(true);
    m_pipeline->offer(BarcodeFramePipeline::frameOf(image, false));
}

void CaptureViewControllerIOS16::setDisplayLabel(const QString &text)
{
    if (m_displayLabel == text)
        return;
    m_displayLabel = text;
    Q_EMIT displayLabelChanged();
}

void CaptureViewControllerIOS16::setScanning(bool scanning)
{
    if (m_scanning == scanning)
        return;
    m_scanning = scanning;
    Q_EMIT scanningChanged();
}

} // namespace tomewise
