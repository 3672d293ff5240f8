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
#include <optional>

class QLockFile;

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
        // One process per library: the first open of the store takes the
        // folder's lock file; a test over a scratch folder may go without.
        bool lockLibrary = true;
    };

    static constexpr auto kStoreFileName = "Tomewise.sqlite";
    static constexpr auto kSettingsFileName = "Tomewise.ini";
    static constexpr auto kLockFileName = "Tomewise.lock";
    // How long an open waits for another process to let go of the library,
    // and the exit status when it does not.
    static constexpr int kLockWaitMs = 2000;
    static constexpr int kLibraryInUseStatus = 3;

    explicit AppDelegate(Options options, QObject *parent = nullptr);
    ~AppDelegate() override;

    // The environment's TOMEWISE_DATA_DIR, else the platform's app-data folder.
    static QString defaultDataDirectory();

    // The store; the first call takes the library's lock and opens it. A
    // library locked by another live process ends this one with a message
    // and kLibraryInUseStatus; a failure to open ends it with "Unresolved error ...".
    BookStore &persistentContainer();
    // Takes the library's lock now; when another live process holds it,
    // answers that process's id (0 when unknown) and leaves the library alone.
    std::optional<qint64> takeLibraryLock();
    // "The library DIR is in use by another Tomewise (pid N)"
    QString inUseMessage(qint64 pid) const;
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

    void lockLibrary();

    QString m_dataDirectory;
    bool m_lockLibrary = true;
    std::unique_ptr<QLockFile> m_lock;
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
