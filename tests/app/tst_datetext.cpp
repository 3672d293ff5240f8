#include "app/datetext.h"

#include <QTest>
#include <QTimeZone>

using namespace tomewise;

class TestDateText : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void styles_data()
    {
        QTest::addColumn<QString>("locale");
        QTest::addColumn<QString>("medium");
        QTest::addColumn<QString>("longText");
        QTest::newRow("en_US") << "en_US" << "Nov 21, 2026" << "November 21, 2026";
        QTest::newRow("en_GB") << "en_GB" << "21 Nov 2026" << "21 November 2026";
        QTest::newRow("de_DE") << "de_DE" << "21.11.2026" << "21. November 2026";
    }

    void styles()
    {
        QFETCH(QString, locale);
        QFETCH(QString, medium);
        QFETCH(QString, longText);
        const DateText dates(locale, "Asia/Tokyo");
        // 20:30 UTC is already the 21st in Tokyo.
        const QDateTime instant(QDate(2026, 11, 20), QTime(20, 30), Qt::UTC);
        QCOMPARE(dates.format(instant, DateText::Style::Medium), medium);
        QCOMPARE(dates.format(instant, DateText::Style::Long), longText);
        const QDateTime startOfDay(QDate(2026, 11, 21), QTime(0, 0), QTimeZone("Asia/Tokyo"));
        QCOMPARE(dates.parse(medium, DateText::Style::Medium), std::optional<QDateTime>(startOfDay));
        QCOMPARE(dates.parse(longText, DateText::Style::Long), std::optional<QDateTime>(startOfDay));
        QVERIFY(!dates.parse(QStringLiteral("not a date"), DateText::Style::Medium));
        QVERIFY(!dates.parse(QString(), DateText::Style::Medium));
    }

    void patterns()
    {
        const DateText dates(QStringLiteral("en_US"), "America/New_York");
        const QDateTime instant(QDate(2021, 3, 7), QTime(18, 45), Qt::UTC);
        QCOMPARE(dates.formatPattern(instant, QStringLiteral("yyyy-MM-dd HH:mm:ss Z"), true),
                 QStringLiteral("2021-03-07 18:45:00 +0000"));
        QCOMPARE(dates.formatPattern(instant, QStringLiteral("yyyy-MM-dd")), QStringLiteral("2021-03-07"));
        QCOMPARE(dates.formatPattern(QDateTime(QDate(2021, 3, 7), QTime(2, 0), Qt::UTC), QStringLiteral("yyyy-MM-dd")),
                 QStringLiteral("2021-03-06"));
        QCOMPARE(dates.parsePattern(QStringLiteral("2021-03-07 18:45:00 +0000"), QStringLiteral("yyyy-MM-dd HH:mm:ss Z")),
                 std::optional<QDateTime>(instant));
        QCOMPARE(dates.parsePattern(QStringLiteral("2021-03-07 20:45:00 +0200"), QStringLiteral("yyyy-MM-dd HH:mm:ss Z")),
                 std::optional<QDateTime>(instant));
        QVERIFY(!dates.parsePattern(QStringLiteral("2021-03-07"), QStringLiteral("yyyy-MM-dd HH:mm:ss Z")));
    }

    void componentsFollowTheZone()
    {
        const QDateTime instant(QDate(2021, 3, 5), QTime(3, 0), Qt::UTC);
        QCOMPARE(DateText(QStringLiteral("en_US"), "America/New_York").components(instant),
                 (DateText::Components{2021, 3, 4}));
        QCOMPARE(DateText(QStringLiteral("en_US"), "Asia/Tokyo").components(instant), (DateText::Components{2021, 3, 5}));
        const DateText utc(QStringLiteral("en_US"), "UTC");
        QCOMPARE(utc.startOfDay(2021, 13, 1), std::optional<QDateTime>(QDateTime(QDate(2022, 1, 1), QTime(0, 0), Qt::UTC)));
    }
};

QTEST_GUILESS_MAIN(TestDateText)
#include "tst_datetext.moc"
