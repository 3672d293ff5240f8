// The review prompt's 7-day rule, the rate-and-share rows and their command line.
#include "feedback/ratesharetableviewcontroller.h"
#include "feedback/reviewservice.h"
#include "support/clirun.h"
#include "support/testapp.h"

#include <QTest>
#include <QTimeZone>
#include <QWindow>

using namespace tomewise;
using namespace tomewise::test;

namespace {

QDateTime newYork(int year, int month, int day, int hour, int minute = 0)
{
    return QDateTime(QDate(year, month, day), QTime(hour, minute), QTimeZone("America/New_York"));
}

// Both streams, as a user sees them.
QByteArray cli(const QString &dataDir, const QStringList &args, int *status = nullptr)
{
    const CliRun run = runCli(dataDir, args);
    if (status)
        *status = run.status;
    return (run.out + run.err).toUtf8();
}

} // namespace

class TestFeedback : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void sevenCalendarDays_data()
    {
        QTest::addColumn<QVariant>("stored");
        QTest::addColumn<QDateTime>("now");
        QTest::addColumn<bool>("asked");

        const QDateTime now = newYork(2026, 11, 21, 10);
        QTest::newRow("first request ever") << QVariant() << now << true;
        QTest::newRow("not a date") << QVariant(QStringLiteral("2026-11-20T10:00:00Z")) << now << true;
        QTest::newRow("6 days 23 hours") << QVariant(now.addSecs(-(6 * 24 + 23) * 3600)) << now << false;
        QTest::newRow("exactly 7 days") << QVariant(now.addDays(-7)) << now << false;
        QTest::newRow("7 days 1 minute") << QVariant(now.addDays(-7).addSecs(-60)) << now << true;
        // 7 x 24 hours and a half have passed, but on the wall it is half an hour short of 7 days.
        QTest::newRow("clocks went back") << QVariant(newYork(2026, 10, 29, 12)) << newYork(2026, 11, 5, 11, 30) << false;
        // Half an hour short of 7 x 24 hours, but on the wall 7 days and half an hour.
        QTest::newRow("clocks went forward") << QVariant(newYork(2026, 3, 5, 12)) << newYork(2026, 3, 12, 12, 30) << true;
    }

    void sevenCalendarDays()
    {
        QFETCH(QVariant, stored);
        QFETCH(QDateTime, now);
        QFETCH(bool, asked);
        TestApp t("America/New_York", now);
        if (stored.isValid()) {
            t.app().userDefaults().setValue(SettingsKey::ReviewLastRequest, stored);
            t.app().userDefaults().synchronize();
        }
        ReviewService service(t.app());
        service.setWindowLookup([] { return nullptr; });

        QCOMPARE(service.request(), asked);
        QCOMPARE(t.platform().reviewRequests, asked ? 1 : 0);
        // Read back by a second launch: what was stored, not what was held.
        auto relaunched = t.relaunch();
        const auto last = ReviewService(*relaunched).lastRequest();
        QVERIFY(last.has_value());
        QCOMPARE(*last, asked ? now : stored.toDateTime());
    }

    // The window stands in for the scene: with one the prompt goes over it;
    // without, the plain request. Either way the next chance is 7 days off.
    void windowOrNone_data()
    {
        QTest::addColumn<bool>("withWindow");
        QTest::newRow("window") << true;
        QTest::newRow("no window") << false;
    }

    void windowOrNone()
    {
        QFETCH(bool, withWindow);
        TestApp t;
        QWindow window;
        ReviewService service(t.app());
        service.setWindowLookup([&] { return withWindow ? &window : nullptr; });

        QVERIFY(service.request());
        QCOMPARE(t.platform().reviewRequests, 1);
        QCOMPARE(t.platform().reviewWindows, withWindow ? QList<QWindow *>{&window} : QList<QWindow *>{});
        QCOMPARE(service.lastRequest(), std::optional(t.clock().now()));
        t.clock().advance(6 * 24 * 3600);
        QVERIFY(!service.request());
        QCOMPARE(t.platform().reviewRequests, 1);
        // Writing absent removes the key.
        service.setLastRequest(std::nullopt);
        QVERIFY(!t.app().userDefaults().contains(SettingsKey::ReviewLastRequest));
    }

    // What each row did, one line each: "open ADDRESS", "share ITEM | ITEM" or "alert TITLE: MESSAGE".
    void rows_data()
    {
        QTest::addColumn<int>("row");
        QTest::addColumn<QVariantMap>("overrides");
        QTest::addColumn<bool>("canSend");
        QTest::addColumn<QStringList>("done");

        const QVariantMap none;
        const QString product = QStringLiteral("https://apps.example.com/app/tomewise/id0000000000");
        const QString instructions = QLatin1String(RateShareTableViewController::kInstructions);
        const QString noText = QStringLiteral("alert Can't Send Text Message: Your Device is not able to send text messages.");
        QTest::newRow("rate") << 0 << none << true << QStringList{"open " + product + "?action=write-review"};
        QTest::newRow("rate keeps the product's own query")
            << 0 << QVariantMap{{"Feedback.productURL", "https://apps.example.org/app/id42?l=en"}} << true
            << QStringList{"open https://apps.example.org/app/id42?l=en&action=write-review"};
        QTest::newRow("rate, product address does not form")
            << 0 << QVariantMap{{"Feedback.productURL", "https://[bad/app"}} << true << QStringList{};
        QTest::newRow("share the app") << 1 << none << true << QStringList{"share " + product};
        QTest::newRow("share the app, product address does not form")
            << 1 << QVariantMap{{"Feedback.productURL", "https://[bad/app"}} << true << QStringList{};
        QTest::newRow("share the app, no messages") << 1 << none << false << QStringList{noText};
        QTest::newRow("share the site, its text has the blank") << 2 << none << true << QStringList{"share " + instructions};
        QTest::newRow("share the site, a text that parses")
            << 2 << QVariantMap{{"Feedback.website", "https://www.example.org/tomewise.html"}} << true
            << QStringList{"share " + instructions + " | https://www.example.org/tomewise.html"};
        QTest::newRow("share the site, no messages") << 2 << none << false << QStringList{noText};
        QTest::newRow("visit") << 3 << none << true << QStringList{"open https://www.example.com/Tomewise.html"};
        QTest::newRow("write to us")
            << 4 << QVariantMap{{"Feedback.supportMail", "help@example.net"}} << true
            << QStringList{"open mailto:help@example.net?body=Enter%20your%20comments%20about%20the%20Tomewise%20App%20below:%20"};
        QTest::newRow("write to us, no mail program")
            << 4 << none << false << QStringList{"alert Can't Send Email: Your Device is not able to send Email."};
        QTest::newRow("no such row") << 5 << none << true << QStringList{};
    }

    void rows()
    {
        QFETCH(int, row);
        QFETCH(QVariantMap, overrides);
        QFETCH(bool, canSend);
        QFETCH(QStringList, done);
        TestApp t;
        for (auto it = overrides.cbegin(); it != overrides.cend(); ++it)
            t.app().userDefaults().setValue(it.key().toUtf8().constData(), it.value());
        t.platform().textAvailable = canSend;
        t.platform().mailAvailable = canSend;

        RateShareTableViewController screen(&t.app());
        screen.viewDidLoad();
        screen.didSelectRow(row);

        QStringList doneNow;
        for (const QUrl &u : t.platform().openedUrls)
            doneNow << "open " + u.toString(QUrl::FullyEncoded);
        for (const ShareItems &s : t.platform().shares) {
            QStringList items;
            if (!s.text.isEmpty())
                items << s.text;
            for (const QUrl &u : s.links)
                items << u.toString();
            doneNow << "share " + items.join(QStringLiteral(" | "));
        }
        if (!screen.alertTitle().isEmpty())
            doneNow << "alert " + screen.alertTitle() + ": " + screen.alertMessage();
        QCOMPARE(doneNow, done);
    }

    void commandLine()
    {
        TestApp t;
        const QString dir = t.dataDirectory();
        QCOMPARE(cli(dir, {"review", "--now", "2026-11-21T10:00:00"}), "asked\nlastRequest: 2026-11-21T15:00:00Z\n");
        QCOMPARE(cli(dir, {"review", "--now", "2026-11-28T09:00:00"}),
                 "not asked\nlastRequest: 2026-11-21T15:00:00Z\n");
        QCOMPARE(cli(dir, {"review", "--now", "2026-11-28T10:01:00-05:00"}),
                 "asked\nlastRequest: 2026-11-28T15:01:00Z\n");
        cli(dir, {"settings", "set", SettingsKey::ReviewLastRequest, "soon"});
        QCOMPARE(cli(dir, {"review", "--now", "2026-11-29T10:00:00Z"}), "asked\nlastRequest: 2026-11-29T10:00:00Z\n");

        QCOMPARE(cli(dir, {"rate-share", "2"}), QByteArray(RateShareTableViewController::kInstructions) + '\n');
        int status = 0;
        QCOMPARE(cli(dir, {"review", "--now", "yesterday"}, &status), "usage: tomewise-cli review [--now ISO-TIME]\n");
        QCOMPARE(status, 2);
    }
};

QTEST_MAIN(TestFeedback)
#include "tst_feedback.moc"
