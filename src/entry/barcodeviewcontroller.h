#pragma once

#include "entry/capturesessioncontroller.h"

namespace tomewise {

// The live camera screen that reads the ISBN's barcode.
class BarCodeViewController : public CaptureSessionController
{
    Q_OBJECT
public:
    explicit BarCodeViewController(AppDelegate *delegate = nullptr, QObject *parent = nullptr)
        : CaptureSessionController(delegate, parent)
    {
        setTitle(QStringLiteral("Scan Barcode"));
    }
};

} // namespace tomewise
