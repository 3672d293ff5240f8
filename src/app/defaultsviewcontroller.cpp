#include "defaultsviewcontroller.h"

namespace tomewise {

namespace {
QDate dayOf(const DateText &dates, const QDateTime &instant)
{
    const auto c = dates.components(instant);
    return QDate(c.year, c.month, c.day);
}
} // namespace

DefaultsViewController::DefaultsViewController(AppDelegate *delegate, QObject *parent)
    : ScreenController(delegate, parent)
{
    setTitle(QStringLiteral("Default Settings"));
}

void DefaultsViewController::viewDidLoad()
{
    Settings &defaults = app().userDefaults();
    m_pickerDate = dayOf(app().dateText(), app().now());
    m_defaultDateOn = defaults.boolValue(SettingsKey::UseDefaultDate);
    m_defaultDateText.clear();
    if (m_defaultDateOn && defaults.contains(SettingsKey::DefaultDate)) {
        m_defaultDateText = defaults.stringValue(SettingsKey::DefaultDate);
        if (const auto day = app().dateText().parse(m_defaultDateText, DateText::Style::Medium))
            m_pickerDate = dayOf(app().dateText(), *day);
    }
    m_wheelOn = defaults.boolValue(SettingsKey::UseDateWheel);
    m_compactOn = defaults.boolValue(SettingsKey::UseDateCompact);
    m_inlineOn = defaults.boolValue(SettingsKey::UseDateInline);
    // The preview takes the stored style in the order the book form tests them.
    m_pickerStyle = m_wheelOn ? Wheels : m_compactOn ? Compact : m_inlineOn ? Inline : Automatic;
    Q_EMIT changed();
}

void DefaultsViewController::SwitchChanged(bool isOn)
{
    Settings &defaults = app().userDefaults();
    m_defaultDateOn = isOn;
    defaults.setValue(SettingsKey::UseDefaultDate, isOn);
    if (!isOn) {
        defaults.setValue(SettingsKey::DefaultDate, QString());
        m_defaultDateText.clear();
    }
    defaults.synchronize();
    Q_EMIT changed();
}

void DefaultsViewController::writeDefaultDate(const QDateTime &day)
{
    m_defaultDateText = app().dateText().format(day, DateText::Style::Medium);
    app().userDefaults().setValue(SettingsKey::DefaultDate, m_defaultDateText);
    app().userDefaults().synchronize();
    Q_EMIT changed();
}

void DefaultsViewController::doneClick()
{
    if (const auto day = app().dateText().startOfDay(m_pickerDate.year(), m_pickerDate.month(), m_pickerDate.day()))
        writeDefaultDate(*day);
}

void DefaultsViewController::todayClick()
{
    const QDateTime now = app().now();
    m_pickerDate = dayOf(app().dateText(), now);
    writeDefaultDate(now);
}

void DefaultsViewController::dateChanged(int year, int month, int day)
{
    const QDate date(year, month, day);
    if (!date.isValid())
        return;
    m_pickerDate = date;
    doneClick();
}

void DefaultsViewController::DateEntered()
{
    doneClick();
}

void DefaultsViewController::chooseStyle(PickerStyle style)
{
    m_wheelOn = style == Wheels;
    m_compactOn = style == Compact;
    m_inlineOn = style == Inline;
    Settings &defaults = app().userDefaults();
    defaults.setValue(SettingsKey::UseDateWheel, m_wheelOn);
    defaults.setValue(SettingsKey::UseDateCompact, m_compactOn);
    defaults.setValue(SettingsKey::UseDateInline, m_inlineOn);
    defaults.synchronize();
    m_pickerStyle = style;
    Q_EMIT changed();
}

void DefaultsViewController::DateWheelSwitch(bool isOn)
{
    if (isOn) {
        chooseStyle(Wheels);
    } else {
        // Only the switch itself goes off; the stored key stays true.
        m_wheelOn = false;
        Q_EMIT changed();
    }
}

void DefaultsViewController::DateCompactSwitch(bool isOn)
{
    if (isOn) {
        chooseStyle(Compact);
    } else {
        m_compactOn = false;
        Q_EMIT changed();
    }
}

void DefaultsViewController::DateInlineSwitch(bool isOn)
{
    if (isOn) {
        chooseStyle(Inline);
    } else {
        m_inlineOn = false;
        Q_EMIT changed();
    }
}

} // namespace tomewise
