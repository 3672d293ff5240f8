#pragma once

#include "app/appstate.h"
#include "app/clock.h"
#include "app/datetext.h"
#include "app/settings.h"
#include "feedback/reviewrequester.h"
#include "model/bookstore.h"
#include "platform/platformservices.h"

#include <QObject>

#include <memory>

namespace tomewise {

// Owns what lives for the whole process: the store (opened on first use), the
// settings, the process-wide values, the clock, the date texts and the
// platform services. Screens receive it by reference; nothing else is global.
class AppDelegate : public QObject
{
    Q_OBJECT
    Q_PROPERTY(tomewise::AppState *state READ statePtr CONSTANT)
    Q_PROPERTY(tomewise::PlatformServices *platform READ platformPtr CONSTANT)
    Q_PROPERTY(QString dataDirectory READ dataDirectory CONSTANT)

public:
    struct Options
    {
        QString dataDirectory;            // empty: defaultDataDirectory()
        QString locale;                   // empty: the device's
        QByteArray timeZone;              // empty: the device's
        std::unique_ptr<Clock> clock;     // null: the system clock
        std::unique_ptr<PlatformServices> platform; // null: the desktop's
        double delayScale = 1.0;          // scales the screens' fixed delays
    };

    static constexpr auto kStoreFileName = "Tomewise.sqlite";
    static constexpr auto kSettingsFileName = "Tomewise.ini";

    explicit AppDelegate(Options options, QObject *parent = nullptr);
    ~AppDelegate() override;

    // The environment's TOMEWISE_DATA_DIR, else the platform's app-data folder.
    static QString defaultDataDirectory();

    // The store; the first call opens it and a failure ends the process with
    // "Unresolved error ...".
    BookStore &persistentContainer();
    void saveContext();
    void applicationWillTerminate() { saveContext(); }

    Settings &userDefaults() { return *m_settings; }
    AppState &state() { return *m_state; }
    const DateText &dateText() const { return *m_dateText; }
    QDateTime now() const { return m_clock->now(); }
    Clock &clock() { return *m_clock; }
    PlatformServices &platform() { return *m_platform; }
    QString dataDirectory() const { return m_dataDirectory; }
    int scaledDelay(int milliseconds) const;
    // The store-review service; null until one is installed, and then asked
    // by the detail screen five seconds after it loads.
    ReviewRequester *reviewService() const { return m_reviewService.get(); }
    void setReviewService(std::unique_ptr<ReviewRequester> service) { m_reviewService = std::move(service); }

private:
    AppState *statePtr() { return m_state.get(); }
    PlatformServices *platformPtr() { return m_platform.get(); }

    QString m_dataDirectory;
    std::unique_ptr<BookStore> m_store;
    std::unique_ptr<Settings> m_settings;
    std::unique_ptr<AppState> m_state;
    std::unique_ptr<DateText> m_dateText;
    std::unique_ptr<Clock> m_clock;
    std::unique_ptr<PlatformServices> m_platform;
    std::unique_ptr<ReviewRequester> m_reviewService;
    double m_delayScale = 1.0;
};

// Writes a failed save's description to the diagnostic log; true when it saved.
bool logIfFailed(const StoreResult &result);

} // namespace tomewise
