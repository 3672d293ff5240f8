// The desktop's answer to "can this device send mail" (only when a mail
// program is registered for mailto: addresses), and addresses opened where
// there is no window system.
#include "platform/desktopplatform.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

using tomewise::DesktopPlatform;

class TestDesktopPlatform : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void canSendMail_data()
    {
        QTest::addColumn<bool>("registered");
        QTest::newRow("no mail program") << false;
        QTest::newRow("a mailto: handler") << true;
    }
    void canSendMail()
    {
        QFETCH(bool, registered);
        if (QStandardPaths::findExecutable(QStringLiteral("xdg-mime")).isEmpty())
            QSKIP("xdg-utils is not installed");
        QTemporaryDir home;
        const QString config = home.filePath(QStringLiteral("config"));
        const QString apps = home.filePath(QStringLiteral("data/applications"));
        QVERIFY(QDir().mkpath(config) && QDir().mkpath(apps));
        if (registered) {
            QFile list(config + QStringLiteral("/mimeapps.list"));
            QVERIFY(list.open(QIODevice::WriteOnly));
            list.write("[Default Applications]\nx-scheme-handler/mailto=testmail.desktop\n");
            QFile entry(apps + QStringLiteral("/testmail.desktop"));
            QVERIFY(entry.open(QIODevice::WriteOnly));
            entry.write("[Desktop Entry]\nType=Application\nName=Mail\nExec=true %u\nMimeType=x-scheme-handler/mailto;\n");
        }
        // Only this folder is looked at, not the machine's own settings.
        qputenv("XDG_CONFIG_HOME", config.toUtf8());
        qputenv("XDG_CONFIG_DIRS", config.toUtf8());
        qputenv("XDG_DATA_HOME", home.filePath(QStringLiteral("data")).toUtf8());
        qputenv("XDG_DATA_DIRS", home.filePath(QStringLiteral("data")).toUtf8());
        qputenv("XDG_CURRENT_DESKTOP", "");
        QCOMPARE(DesktopPlatform().canSendMail(), registered);
    }

    // Reported as handled only when xdg-open could be started.
    void openUrlWithoutWindowSystem_data()
    {
        QTest::addColumn<bool>("opener");
        QTest::newRow("xdg-open") << true;
        QTest::newRow("no opener") << false;
    }
    void openUrlWithoutWindowSystem()
    {
        QFETCH(bool, opener);
        QTemporaryDir bin;
        const QString seen = bin.filePath(QStringLiteral("seen"));
        if (opener) {
            QFile script(bin.filePath(QStringLiteral("xdg-open")));
            QVERIFY(script.open(QIODevice::WriteOnly));
            script.write(QStringLiteral("#!/bin/sh\nprintf %s \"$1\" > %1\n").arg(seen).toUtf8());
            script.close();
            QVERIFY(script.setPermissions(script.permissions() | QFile::ExeOwner));
        }
        const QByteArray path = qgetenv("PATH");
        qputenv("PATH", bin.path().toUtf8());
        const QUrl address(QStringLiteral("https://example.org/a b"));
        const bool handled = DesktopPlatform().openUrl(address);
        qputenv("PATH", path);
        QCOMPARE(handled, opener);
        const auto written = [&seen] {
            QFile file(seen);
            return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
        };
        if (opener)
            QTRY_COMPARE(written(), QByteArray("https://example.org/a%20b"));
    }
};

QTEST_GUILESS_MAIN(TestDesktopPlatform)
#include "tst_desktopplatform.moc"
