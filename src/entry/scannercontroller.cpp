#include "scannercontroller.h"

#include "entry/booksearchmanager.h"

#include <QPointer>
#include <QTimer>

namespace tomewise {

void ScannerController::handOver(const QString &value)
{
    if (m_handedOver)
        return;
    m_handedOver = true;
    Q_EMIT handedOverChanged();

    AppState &state = app().state();
    state.setScannedISBN(value);
    // The search outlives this screen: its answer is the form's to use.
    auto *search = new BookSearchManager(&app().userDefaults(), &state);
    QPointer<AppState> held(&state);
    search->search(value, [held](const std::optional<QList<BookItem>> &items) {
        if (held)
            held->setScannedBookItems(items);
    });
    connect(search, &BookSearchManager::finished, search, &QObject::deleteLater);
    connect(search, &BookSearchManager::finished, this, &ScannerController::leave);
    QTimer::singleShot(kLookupWaitMs, this, &ScannerController::leave);
}

void ScannerController::leave()
{
    if (m_left)
        return;
    m_left = true;
    Q_EMIT unwind(QLatin1String(kUnwindName));
}

} // namespace tomewise
