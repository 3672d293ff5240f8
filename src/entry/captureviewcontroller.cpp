#include "captureviewcontroller.h"

namespace tomewise {

CaptureViewController::CaptureViewController(AppDelegate *delegate, QObject *parent)
    : CaptureSessionController(delegate, parent, BarcodeDecoder::scanAreaTypes())
{
    setTitle(QStringLiteral("Scan Area"));
}

QRectF CaptureViewController::barcodeArea() const
{
    // A band across the middle, wide enough for a book's EAN-13 held at reading distance.
    const QSizeF s = previewSize();
    const qreal width = s.width() * 0.8;
    const qreal height = std::min(s.height() * 0.25, width * 0.6);
    return QRectF((s.width() - width) / 2, (s.height() - height) / 2, width, height);
}

void CaptureViewController::viewDidLoad()
{
    if (!app().platform().cameraAvailable()) {
        showAlert(QStringLiteral("Scanning not supported"),
                  QStringLiteral("Your device does not support scanning a code from an item. Please use a device "
                                 "with a camera."));
        return;
    }
    setUpCaptureSession();
}

} // namespace tomewise
