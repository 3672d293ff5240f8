// The default settings screen: the default date and the date picker style.
#include "support/clirun.h"
#include "support/testapp.h"

#include "app/defaultsviewcontroller.h"

#include <QTemporaryDir>
#include <QTest>

using namespace tomewise;
using tomewise::test::TestApp;

class TestDefaults : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void showsStoredSettings_data()
    {
        QTest::addColumn<QVariant>("useDefault");
        QTest::addColumn<QVariant>("defaultDate");
        QTest::addColumn<bool>("switchOn");
        QTest::addColumn<QString>("field");
        QTest::newRow("nothing stored") << QVariant() << QVariant() << false << "";
        QTest::newRow("on with a date") << QVariant(true) << QVariant("Jan 1, 2020") << true << "Jan 1, 2020";
        QTest::newRow("on without a date") << QVariant(true) << QVariant() << true << "";
        QTest::newRow("off hides a stored date") << QVariant(false) << QVariant("Jan 1, 2020") << false << "";
        QTest::newRow("a text is not true") << QVariant("yes") << QVariant("Jan 1, 2020") << false << "";
    }

    void showsStoredSettings()
    {
        QFETCH(QVariant, useDefault);
        QFETCH(QVariant, defaultDate);
        QFETCH(bool, switchOn);
        QFETCH(QString, field);
        TestApp t;
        if (useDefault.isValid())
            t.app().userDefaults().setValue(SettingsKey::UseDefaultDate, useDefault);
        if (defaultDate.isValid())
            t.app().userDefaults().setValue(SettingsKey::DefaultDate, defaultDate);
        DefaultsViewController screen(&t.app());
        screen.viewDidLoad();
        QCOMPARE(screen.defaultDateSwitch(), switchOn);
        QCOMPARE(screen.defaultDateText(), field);
        if (!field.isEmpty())
            QCOMPARE(screen.pickerDate(), QDate(2020, 1, 1)); // the picker opens on the stored day
    }

    void defaultDateOffClearsIt()
    {
        TestApp t;
        Settings &defaults = t.app().userDefaults();
        DefaultsViewController screen(&t.app());
        screen.viewDidLoad();
        screen.SwitchChanged(true);
        screen.dateChanged(2020, 1, 1);
        QCOMPARE(defaults.stringValue(SettingsKey::DefaultDate), QStringLiteral("Jan 1, 2020"));

        screen.SwitchChanged(false);
        QVERIFY(defaults.contains(SettingsKey::UseDefaultDate));
        QCOMPARE(defaults.boolValue(SettingsKey::UseDefaultDate), false);
        QVERIFY(defaults.contains(SettingsKey::DefaultDate));
        QCOMPARE(defaults.stringValue(SettingsKey::DefaultDate), QString());
        QCOMPARE(screen.defaultDateText(), QString());

        // On again: an empty field until a date is chosen.
        screen.SwitchChanged(true);
        QCOMPARE(defaults.boolValue(SettingsKey::UseDefaultDate), true);
        QCOMPARE(screen.defaultDateText(), QString());
        QCOMPARE(defaults.stringValue(SettingsKey::DefaultDate), QString());
    }

    void dateButtonsWriteMediumText_data()
    {
        QTest::addColumn<QByteArray>("zone");
        QTest::addColumn<QString>("button");
        QTest::addColumn<QString>("expected");
        // The fixed clock reads 21 Nov 2026 15:00 UTC.
        QTest::newRow("today, New York") << QByteArray("America/New_York") << "today" << "Nov 21, 2026";
        QTest::newRow("today, Auckland is a day ahead") << QByteArray("Pacific/Auckland") << "today" << "Nov 22, 2026";
        QTest::newRow("done, picked day") << QByteArray("America/New_York") << "done" << "Feb 29, 2024";
        QTest::newRow("done, picked day, Auckland") << QByteArray("Pacific/Auckland") << "done" << "Feb 29, 2024";
    }

    void dateButtonsWriteMediumText()
    {
        QFETCH(QByteArray, zone);
        QFETCH(QString, button);
        QFETCH(QString, expected);
        TestApp t(zone);
        DefaultsViewController screen(&t.app());
        screen.viewDidLoad();
        screen.SwitchChanged(true);
        if (button == QLatin1String("today")) {
            screen.todayClick();
        } else {
            screen.dateChanged(2024, 2, 29);
            screen.doneClick();
        }
        QCOMPARE(screen.defaultDateText(), expected);
        QCOMPARE(t.app().userDefaults().stringValue(SettingsKey::DefaultDate), expected);
        // What the book form reads back must be the day shown.
        const auto day = t.app().dateText().parse(expected, DateText::Style::Medium);
        QVERIFY(day);
        QCOMPARE(t.app().dateText().format(*day, DateText::Style::Medium), expected);
    }

    void styleSwitches_data()
    {
        // Steps are "wheel+", "inline-" ...; expected: keys stored (w, c, i), switches shown, preview style.
        QTest::addColumn<QStringList>("steps");
        QTest::addColumn<QString>("keys");     // "wci" letters present = key true, "-" = never written
        QTest::addColumn<QString>("switches"); // letters of the switches that are on
        QTest::addColumn<int>("style");
        QTest::newRow("wheel") << QStringList{"wheel+"} << "w" << "w" << 1;
        QTest::newRow("wheel then inline") << QStringList{"wheel+", "inline+"} << "i" << "i" << 3;
        QTest::newRow("inline off keeps its key") << QStringList{"wheel+", "inline+", "inline-"} << "i" << "" << 3;
        QTest::newRow("compact then wheel") << QStringList{"compact+", "wheel+"} << "w" << "w" << 1;
        QTest::newRow("off first writes nothing") << QStringList{"compact-"} << "-" << "" << 0;
    }

    void styleSwitches()
    {
        QFETCH(QStringList, steps);
        QFETCH(QString, keys);
        QFETCH(QString, switches);
        QFETCH(int, style);
        TestApp t;
        DefaultsViewController screen(&t.app());
        screen.viewDidLoad();
        for (const QString &step : steps) {
            const bool on = step.endsWith(u'+');
            if (step.startsWith(QLatin1String("wheel")))
                screen.DateWheelSwitch(on);
            else if (step.startsWith(QLatin1String("compact")))
                screen.DateCompactSwitch(on);
            else
                screen.DateInlineSwitch(on);
        }
        Settings &defaults = t.app().userDefaults();
        if (keys == QLatin1String("-")) {
            QVERIFY(!defaults.contains(SettingsKey::UseDateWheel));
            QVERIFY(!defaults.contains(SettingsKey::UseDateCompact));
            QVERIFY(!defaults.contains(SettingsKey::UseDateInline));
        } else {
            QCOMPARE(defaults.boolValue(SettingsKey::UseDateWheel), keys.contains(u'w'));
            QCOMPARE(defaults.boolValue(SettingsKey::UseDateCompact), keys.contains(u'c'));
            QCOMPARE(defaults.boolValue(SettingsKey::UseDateInline), keys.contains(u'i'));
        }
        QCOMPARE(screen.useDateWheel(), switches.contains(u'w'));
        QCOMPARE(screen.useCompactDate(), switches.contains(u'c'));
        QCOMPARE(screen.useInlineDate(), switches.contains(u'i'));
        QCOMPARE(screen.datePickerStyle(), style);

        // Opening the screen again shows the stored style.
        DefaultsViewController again(&t.app());
        again.viewDidLoad();
        QCOMPARE(again.useDateWheel(), keys.contains(u'w'));
        QCOMPARE(again.useInlineDate(), keys.contains(u'i'));
        QCOMPARE(again.datePickerStyle(), style);
    }

    void cliGoesThroughTheScreen()
    {
        QTemporaryDir dir;
        auto run = [&](const QStringList &args) {
            const auto r = tomewise::test::runCli(dir.path(), args);
            return std::pair{r.status, r.out.trimmed()};
        };
        QCOMPARE(run({"settings", "default-date", "2020-01-01"}), std::pair(0, QStringLiteral("Jan 1, 2020")));
        QCOMPARE(run({"settings", "get", "UseDefaultDate"}), std::pair(0, QStringLiteral("true")));
        QCOMPARE(run({"settings", "default-date", "off"}).first, 0);
        QCOMPARE(run({"settings", "get", "DefaultDate"}), std::pair(0, QString()));
        QCOMPARE(run({"settings", "date-style", "wheel"}).first, 0);
        QCOMPARE(run({"settings", "date-style", "compact"}).first, 0);
        QCOMPARE(run({"settings", "get", "UseDateWheel"}), std::pair(0, QStringLiteral("false")));
        QCOMPARE(run({"settings", "get", "UseDateCompact"}), std::pair(0, QStringLiteral("true")));
        QCOMPARE(run({"settings", "set", "UseDateWheel", "maybe"}).first, 2);
    }
};

QTEST_GUILESS_MAIN(TestDefaults)
#include "tst_defaults.moc"
