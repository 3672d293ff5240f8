#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>

#include <memory>
#include <optional>
#include <utility>

#include <unicode/uversion.h>

U_NAMESPACE_BEGIN
class Calendar;
class DateFormat;
class TimeZone;
class Locale;
U_NAMESPACE_END

namespace tomewise {

// Date texts as the device shows them: ICU's date styles and patterns in one
// locale and time zone (the device's unless a test pins them), and the
// Gregorian calendar arithmetic the store relies on.
class DateText
{
public:
    enum class Style { Medium, Long };
    struct Components
    {
        int year = 0;
        int month = 0;
        int day = 0;
        bool operator==(const Components &) const = default;
    };

    // Empty arguments mean the device's locale and time zone.
    explicit DateText(const QString &locale = {}, const QByteArray &timeZone = {});
    ~DateText();
    DateText(const DateText &) = delete;
    DateText &operator=(const DateText &) = delete;

    QString localeName() const { return m_localeName; }
    QByteArray timeZoneId() const { return m_timeZoneId; }

    // A date style with no time ("Nov 21, 2026" / "November 21, 2026" in en_US).
    QString format(const QDateTime &instant, Style style) const;
    // Reads a date-style text back to the start of that day; nothing if it does not parse.
    std::optional<QDateTime> parse(const QString &text, Style style) const;

    // ICU patterns such as "yyyy" or "yyyy-MM-dd HH:mm:ss Z", in the device's zone or in UTC.
    QString formatPattern(const QDateTime &instant, const QString &pattern, bool utc = false) const;
    std::optional<QDateTime> parsePattern(const QString &text, const QString &pattern) const;

    // Year, month and day of an instant in the Gregorian calendar of the device's zone.
    Components components(const QDateTime &instant) const;
    // The start of the named day; the calendar is lenient, so out-of-range
    // components roll over (0/0/0 is the last day of November, 2 BC).
    std::optional<QDateTime> startOfDay(int year, int month, int day) const;

    // Years as the locale counts them (Buddhist years in th_TH), the calendar
    // a "yyyy" pattern writes: the extended year of an instant (1 BC is 0), and
    // the first and last second of a year, given as the year of the current
    // era or, when `extended`, as the extended year.
    int localYear(const QDateTime &instant) const;
    std::optional<std::pair<QDateTime, QDateTime>> localYearSpan(int year, bool extended = false) const;

    // The locale name ICU is given for the device locale ("C" reads as en_US).
    static QString deviceLocaleName();

private:
    icu::DateFormat &formatter(Style style) const;
    icu::Calendar &calendar() const;
    icu::Calendar &localCalendar() const;

    QString m_localeName;
    QByteArray m_timeZoneId;
    std::unique_ptr<icu::Locale> m_locale;
    std::unique_ptr<icu::TimeZone> m_zone;
    mutable std::unique_ptr<icu::DateFormat> m_medium;
    mutable std::unique_ptr<icu::DateFormat> m_long;
    mutable std::unique_ptr<icu::Calendar> m_calendar; // built once: start-up asks it for every book
    mutable std::unique_ptr<icu::Calendar> m_localCalendar;
};

} // namespace tomewise
