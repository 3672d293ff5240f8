#pragma once

#include "entry/capturesessioncontroller.h"

namespace tomewise {

// The camera screen with a marked scan area: only codes inside the area are
// read, of more types than the plain camera screen takes. Portrait only.
class CaptureViewController : public CaptureSessionController
{
    Q_OBJECT
    // The area in preview coordinates; the page draws barcodeAreaView and its bracket there.
    Q_PROPERTY(QRectF barcodeArea READ barcodeArea NOTIFY previewSizeChanged)
    Q_PROPERTY(bool prefersStatusBarHidden READ prefersStatusBarHidden CONSTANT)
    Q_PROPERTY(Qt::ScreenOrientations supportedInterfaceOrientations READ supportedInterfaceOrientations CONSTANT)

public:
    explicit CaptureViewController(AppDelegate *delegate = nullptr, QObject *parent = nullptr);

    QRectF barcodeArea() const;
    bool prefersStatusBarHidden() const { return false; }
    Qt::ScreenOrientations supportedInterfaceOrientations() const { return Qt::PortraitOrientation; }

    // A machine without a camera is told so instead of seeing an empty preview.
    void viewDidLoad() override;

protected:
    QRectF readArea() const override { return barcodeArea(); }
};

} // namespace tomewise
