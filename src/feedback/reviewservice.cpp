#include "reviewservice.h"

#include "app/appdelegate.h"

#include <QGuiApplication>
#include <QTimeZone>
#include <QWindow>

namespace tomewise {

ReviewService::ReviewService(AppDelegate &app)
    : m_app(app)
    , m_windowLookup([] { return qGuiApp ? QGuiApplication::topLevelWindows().value(0) : nullptr; })
{
}

QDateTime ReviewService::now() const
{
    return m_clock ? m_clock->now() : m_app.now();
}

std::optional<QDateTime> ReviewService::lastRequest() const
{
    const QVariant stored = m_app.userDefaults().object(SettingsKey::ReviewLastRequest);
    if (stored.typeId() != QMetaType::QDateTime || !stored.toDateTime().isValid())
        return std::nullopt;
    return stored.toDateTime();
}

void ReviewService::setLastRequest(const std::optional<QDateTime> &when)
{
    Settings &defaults = m_app.userDefaults();
    if (when)
        defaults.setValue(SettingsKey::ReviewLastRequest, when->toUTC());
    else
        defaults.remove(SettingsKey::ReviewLastRequest);
    defaults.synchronize();
}

bool ReviewService::canRequest() const
{
    const auto last = lastRequest();
    if (!last)
        return true;
    // Calendar days in the user's zone: a daylight-saving change in between
    // moves the limit by the clock on the wall, not by an hour.
    const QByteArray zoneId = m_app.dateText().timeZoneId();
    const QTimeZone zone = zoneId.isEmpty() ? QTimeZone::systemTimeZone() : QTimeZone(zoneId);
    return *last < now().toTimeZone(zone).addDays(-kDaysBetweenRequests);
}

bool ReviewService::request()
{
    if (!canRequest())
        return false;
    PlatformServices &platform = m_app.platform();
    if (QWindow *window = m_windowLookup ? m_windowLookup() : nullptr)
        platform.requestStoreReviewIn(window);
    else
        platform.requestStoreReview();
    setLastRequest(now());
    return true;
}

} // namespace tomewise
