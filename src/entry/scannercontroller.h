#pragma once

#include "app/screencontroller.h"

namespace tomewise {

// What the barcode screens share: the value read goes to the form. The screen
// stores it in scannedISBN, sends the book search for it, and returns by
// "unwindFromScanner" once the answer is in, so the form can fill at once; a
// service slower than kLookupWaitMs is not waited for (its answer is still
// held when it comes, for the next double tap on the ISBN).
class ScannerController : public ScreenController
{
    Q_OBJECT
    Q_PROPERTY(bool handedOver READ handedOver NOTIFY handedOverChanged)

public:
    static constexpr int kLookupWaitMs = 3000;
    static constexpr auto kUnwindName = "unwindFromScanner";

    using ScreenController::ScreenController;

    bool handedOver() const { return m_handedOver; }

Q_SIGNALS:
    void handedOverChanged();

protected:
    // Only the first value read is handed over.
    void handOver(const QString &value);

private:
    void leave();

    bool m_handedOver = false;
    bool m_left = false;
};

} // namespace tomewise
