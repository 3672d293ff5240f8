#include "appdelegate.h"

#include "app/log.h"
#include "platform/desktopplatform.h"

#include <QDir>
#include <QLockFile>
#include <QStandardPaths>

#include <cstdio>
#include <cstdlib>

namespace tomewise {

AppDelegate::AppDelegate(Options options, QObject *parent)
    : QObject(parent)
    , m_dataDirectory(options.dataDirectory.isEmpty() ? defaultDataDirectory() : options.dataDirectory)
    , m_lockLibrary(options.lockLibrary)
    , m_state(std::make_unique<AppState>())
    , m_dateText(std::make_unique<DateText>(options.locale, options.timeZone))
    , m_clock(options.clock ? std::move(options.clock) : std::make_unique<Clock>())
    , m_platform(options.platform ? std::move(options.platform) : std::make_unique<DesktopPlatform>())
    , m_delayScale(options.delayScale)
{
    QDir().mkpath(m_dataDirectory);
    m_settings = std::make_unique<Settings>(QDir(m_dataDirectory).filePath(QLatin1String(kSettingsFileName)));
}

AppDelegate::~AppDelegate()
{
    if (m_store && m_store->isOpen())
        saveContext();
}

QString AppDelegate::defaultDataDirectory()
{
    const QString fromEnv = qEnvironmentVariable("TOMEWISE_DATA_DIR");
    if (!fromEnv.isEmpty())
        return fromEnv;
    QString dir = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
    if (dir.isEmpty())
        dir = QDir::home().filePath(QStringLiteral(".local/share/Tomewise"));
    return dir;
}

std::optional<qint64> AppDelegate::takeLibraryLock()
{
    if (m_lock || !m_lockLibrary)
        return std::nullopt;
    auto lock = std::make_unique<QLockFile>(QDir(m_dataDirectory).filePath(QLatin1String(kLockFileName)));
    // Only a dead holder makes a lock stale, however long a live one has held it.
    lock->setStaleLockTime(0);
    if (lock->tryLock(kLockWaitMs)) {
        m_lock = std::move(lock);
        return std::nullopt;
    }
    if (lock->error() != QLockFile::LockFailedError) {
        // A folder where no lock can be made (read-only, say) is opened as it is.
        qCWarning(lcApp).noquote() << "The library could not be locked:" << m_dataDirectory;
        return std::nullopt;
    }
    qint64 pid = 0;
    QString host;
    QString application;
    lock->getLockInfo(&pid, &host, &application);
    return pid;
}

QString AppDelegate::inUseMessage(qint64 pid) const
{
    return QStringLiteral("The library %1 is in use by another Tomewise (pid %2)")
        .arg(QDir::toNativeSeparators(m_dataDirectory))
        .arg(pid);
}

void AppDelegate::lockLibrary()
{
    const auto holder = takeLibraryLock();
    if (!holder)
        return;
    // Said on stderr whatever the logging rules: the process ends here.
    std::fprintf(stderr, "%s\n", qPrintable(inUseMessage(*holder)));
    std::fflush(stderr);
    std::exit(kLibraryInUseStatus);
}

BookStore &AppDelegate::persistentContainer()
{
    if (!m_store) {
        if (m_lockLibrary && !m_lock)
            lockLibrary();
        auto store = std::make_unique<BookStore>();
        QString userInfo;
        bool customWait = false;
        const int busyMs = qEnvironmentVariableIntValue("TOMEWISE_BUSY_TIMEOUT_MS", &customWait);
        const auto result = store->open(QDir(m_dataDirectory).filePath(QLatin1String(kStoreFileName)), &userInfo,
                                        customWait ? busyMs : BookStore::kBusyTimeoutMs);
        if (!result)
            qFatal("Unresolved error %s, %s", qPrintable(result.error), qPrintable(userInfo));
        m_store = std::move(store);
    }
    return *m_store;
}

void AppDelegate::saveContext()
{
    if (!m_store)
        return;
    const auto result = m_store->saveContext();
    if (!result)
        qFatal("Unresolved error %s, {path: %s}", qPrintable(result.error), qPrintable(m_store->path()));
}

int AppDelegate::scaledDelay(int milliseconds) const
{
    return int(milliseconds * m_delayScale);
}

bool logIfFailed(const StoreResult &result)
{
    if (!result)
        qCWarning(lcStore).noquote() << result.error;
    return result.ok;
}

} // namespace tomewise
