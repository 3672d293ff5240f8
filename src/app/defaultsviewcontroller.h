#pragma once

#include "app/screencontroller.h"

#include <QDate>

namespace tomewise {

// The "Default Settings" screen: the default date read for the new-book form
// and the date picker's style, all kept in the settings.
class DefaultsViewController : public ScreenController
{
    Q_OBJECT
    Q_PROPERTY(bool DefaultDateSwitch READ defaultDateSwitch NOTIFY changed)
    Q_PROPERTY(QString DefaultDateTextField READ defaultDateText NOTIFY changed)
    // The day the picker shows, month 1-12.
    Q_PROPERTY(int pickerYear READ pickerYear NOTIFY changed)
    Q_PROPERTY(int pickerMonth READ pickerMonth NOTIFY changed)
    Q_PROPERTY(int pickerDay READ pickerDay NOTIFY changed)
    Q_PROPERTY(bool UseDateWheel READ useDateWheel NOTIFY changed)
    Q_PROPERTY(bool UseCompactDate READ useCompactDate NOTIFY changed)
    Q_PROPERTY(bool UseInlineDate READ useInlineDate NOTIFY changed)
    Q_PROPERTY(int datePickerStyle READ datePickerStyle NOTIFY changed)

public:
    // The platform's numbering of picker styles.
    enum PickerStyle { Automatic = 0, Wheels = 1, Compact = 2, Inline = 3 };
    Q_ENUM(PickerStyle)

    explicit DefaultsViewController(AppDelegate *delegate = nullptr, QObject *parent = nullptr);

    bool defaultDateSwitch() const { return m_defaultDateOn; }
    QString defaultDateText() const { return m_defaultDateText; }
    QDate pickerDate() const { return m_pickerDate; }
    int pickerYear() const { return m_pickerDate.year(); }
    int pickerMonth() const { return m_pickerDate.month(); }
    int pickerDay() const { return m_pickerDate.day(); }
    bool useDateWheel() const { return m_wheelOn; }
    bool useCompactDate() const { return m_compactOn; }
    bool useInlineDate() const { return m_inlineOn; }
    int datePickerStyle() const { return m_pickerStyle; }

    // Shows the stored settings.
    Q_INVOKABLE void viewDidLoad();
    Q_INVOKABLE void SwitchChanged(bool isOn);
    Q_INVOKABLE void doneClick();
    Q_INVOKABLE void todayClick();
    // The picker moved to a day (also the end of editing).
    Q_INVOKABLE void dateChanged(int year, int month, int day);
    Q_INVOKABLE void DateEntered();
    // The style switches; turning one off does nothing at all.
    Q_INVOKABLE void DateWheelSwitch(bool isOn);
    Q_INVOKABLE void DateCompactSwitch(bool isOn);
    Q_INVOKABLE void DateInlineSwitch(bool isOn);

Q_SIGNALS:
    void changed();

private:
    void writeDefaultDate(const QDateTime &day);
    void chooseStyle(PickerStyle style);

    bool m_defaultDateOn = false;
    QString m_defaultDateText;
    QDate m_pickerDate;
    bool m_wheelOn = false;
    bool m_compactOn = false;
    bool m_inlineOn = false;
    int m_pickerStyle = Automatic;
};

} // namespace tomewise
