#include "appdelegate.h"

#include "app/log.h"
#include "platform/desktopplatform.h"

#include <QDir>
#include <QStandardPaths>

namespace tomewise {

AppDelegate::AppDelegate(Options options, QObject *parent)
    : QObject(parent)
    , m_dataDirectory(options.dataDirectory.isEmpty() ? defaultDataDirectory() : options.dataDirectory)
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

BookStore &AppDelegate::persistentContainer()
{
    if (!m_store) {
        auto store = std::make_unique<BookStore>();
        QString userInfo;
        const auto result = store->open(QDir(m_dataDirectory).filePath(QLatin1String(kStoreFileName)), &userInfo);
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
