#include "datetext.h"

#include <QLocale>

#include <unicode/datefmt.h>
#include <unicode/gregocal.h>
#include <unicode/smpdtfmt.h>
#include <unicode/timezone.h>
#include <unicode/unistr.h>

namespace tomewise {

namespace {

icu::UnicodeString toIcu(const QString &s)
{
    return icu::UnicodeString(reinterpret_cast<const UChar *>(s.utf16()), int32_t(s.size()));
}

QString fromIcu(const icu::UnicodeString &s)
{
    return QString(reinterpret_cast<const QChar *>(s.getBuffer()), s.length());
}

UDate toUDate(const QDateTime &t)
{
    return UDate(t.toMSecsSinceEpoch());
}

QDateTime fromUDate(UDate d)
{
    return QDateTime::fromMSecsSinceEpoch(qint64(d), Qt::UTC);
}

} // namespace

QString DateText::deviceLocaleName()
{
    const QString name = QLocale::system().name();
    return (name == QLatin1String("C") || name.isEmpty()) ? QStringLiteral("en_US") : name;
}

DateText::DateText(const QString &locale, const QByteArray &timeZone)
    : m_localeName(locale.isEmpty() ? deviceLocaleName() : locale)
{
    m_locale = std::make_unique<icu::Locale>(m_localeName.toUtf8().constData());
    if (timeZone.isEmpty()) {
        m_zone.reset(icu::TimeZone::detectHostTimeZone());
    } else {
        m_zone.reset(icu::TimeZone::createTimeZone(icu::UnicodeString::fromUTF8(timeZone.constData())));
    }
    std::string id;
    icu::UnicodeString zoneId;
    m_zone->getID(zoneId).toUTF8String(id);
    m_timeZoneId = QByteArray::fromStdString(id);
}

DateText::~DateText() = default;

icu::DateFormat &DateText::formatter(Style style) const
{
    auto &slot = style == Style::Medium ? m_medium : m_long;
    if (!slot) {
        slot.reset(icu::DateFormat::createDateInstance(
            style == Style::Medium ? icu::DateFormat::kMedium : icu::DateFormat::kLong, *m_locale));
        slot->setTimeZone(*m_zone);
        slot->setLenient(false);
    }
    return *slot;
}

QString DateText::format(const QDateTime &instant, Style style) const
{
    icu::UnicodeString out;
    formatter(style).format(toUDate(instant), out);
    return fromIcu(out);
}

std::optional<QDateTime> DateText::parse(const QString &text, Style style) const
{
    if (text.isEmpty())
        return std::nullopt;
    UErrorCode status = U_ZERO_ERROR;
    const icu::UnicodeString in = toIcu(text);
    icu::ParsePosition pos(0);
    const UDate d = formatter(style).parse(in, pos);
    (void)status;
    if (pos.getIndex() == 0 || pos.getIndex() != in.length())
        return std::nullopt;
    return fromUDate(d);
}

QString DateText::formatPattern(const QDateTime &instant, const QString &pattern, bool utc) const
{
    UErrorCode status = U_ZERO_ERROR;
    icu::SimpleDateFormat f(toIcu(pattern), *m_locale, status);
    if (U_FAILURE(status))
        return {};
    if (utc)
        f.adoptTimeZone(icu::TimeZone::createTimeZone(u"UTC"));
    else
        f.setTimeZone(*m_zone);
    icu::UnicodeString out;
    f.format(toUDate(instant), out);
    return fromIcu(out);
}

std::optional<QDateTime> DateText::parsePattern(const QString &text, const QString &pattern) const
{
    UErrorCode status = U_ZERO_ERROR;
    icu::SimpleDateFormat f(toIcu(pattern), icu::Locale("en_US_POSIX"), status);
    if (U_FAILURE(status))
        return std::nullopt;
    f.setTimeZone(*m_zone);
    f.setLenient(false);
    const icu::UnicodeString in = toIcu(text);
    icu::ParsePosition pos(0);
    const UDate d = f.parse(in, pos);
    if (pos.getIndex() == 0 || pos.getIndex() != in.length())
        return std::nullopt;
    return fromUDate(d);
}

icu::Calendar &DateText::calendar() const
{
    if (!m_calendar) {
        UErrorCode status = U_ZERO_ERROR;
        m_calendar = std::make_unique<icu::GregorianCalendar>(*m_zone, *m_locale, status);
        m_calendar->setLenient(true);
    }
    return *m_calendar;
}

DateText::Components DateText::components(const QDateTime &instant) const
{
    UErrorCode status = U_ZERO_ERROR;
    icu::Calendar &cal = calendar();
    cal.setTime(toUDate(instant), status);
    Components c;
    c.year = cal.get(UCAL_EXTENDED_YEAR, status);
    c.month = cal.get(UCAL_MONTH, status) + 1;
    c.day = cal.get(UCAL_DATE, status);
    return c;
}

std::optional<QDateTime> DateText::startOfDay(int year, int month, int day) const
{
    UErrorCode status = U_ZERO_ERROR;
    icu::Calendar &cal = calendar();
    cal.clear();
    cal.set(UCAL_EXTENDED_YEAR, year);
    cal.set(UCAL_MONTH, month - 1);
    cal.set(UCAL_DATE, day);
    const UDate d = cal.getTime(status);
    if (U_FAILURE(status))
        return std::nullopt;
    return fromUDate(d);
}

icu::Calendar &DateText::localCalendar() const
{
    if (!m_localCalendar) {
        UErrorCode status = U_ZERO_ERROR;
        m_localCalendar.reset(icu::Calendar::createInstance(*m_zone, *m_locale, status));
        if (U_FAILURE(status) || !m_localCalendar) {
            status = U_ZERO_ERROR;
            m_localCalendar = std::make_unique<icu::GregorianCalendar>(*m_zone, *m_locale, status);
        }
        m_localCalendar->setLenient(true);
    }
    return *m_localCalendar;
}

int DateText::localYear(const QDateTime &instant) const
{
    UErrorCode status = U_ZERO_ERROR;
    icu::Calendar &cal = localCalendar();
    cal.setTime(toUDate(instant), status);
    return cal.get(UCAL_EXTENDED_YEAR, status);
}

std::optional<std::pair<QDateTime, QDateTime>> DateText::localYearSpan(int year, bool extended) const
{
    UErrorCode status = U_ZERO_ERROR;
    icu::Calendar &cal = localCalendar();
    const UCalendarDateFields field = extended ? UCAL_EXTENDED_YEAR : UCAL_YEAR;
    cal.clear();
    cal.set(field, year);
    cal.set(UCAL_MONTH, 0);
    cal.set(UCAL_DATE, 1);
    const UDate start = cal.getTime(status);
    const bool sameYear = cal.get(field, status) == year; // no year 0 of an era
    cal.add(UCAL_YEAR, 1, status);
    const UDate next = cal.getTime(status);
    // The lenient calendar answers anything: past its range both ends pin to
    // the same instant, which is no year at all.
    constexpr UDate kShortestYear = 300.0 * 24 * 3600 * 1000;
    if (U_FAILURE(status) || !sameYear || next - start < kShortestYear)
        return std::nullopt;
    return std::pair{fromUDate(start), fromUDate(next).addSecs(-1)};
}

} // namespace tomewise
