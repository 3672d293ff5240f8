#pragma once

#include "entry/capturesessioncontroller.h"

namespace tomewise {

// The live camera screen the form's Scan button opens.
class NewCaptureViewController : public CaptureSessionController
{
    Q_OBJECT
public:
    explicit NewCaptureViewController(AppDelegate *delegate = nullptr, QObject *parent = nullptr)
        : CaptureSessionController(delegate, parent)
    {
        setTitle(QStringLiteral("Scan Barcode"));
    }
};

} // namespace tomewise
