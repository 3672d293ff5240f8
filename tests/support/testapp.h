#pragma once

#include "app/appdelegate.h"
#include "platform/recordingplatform.h"

#include <QTemporaryDir>

namespace tomewise::test {

// A fresh application over a scratch folder: en_US, a pinned zone, a clock
// that stands still, a recording platform and no waiting on fixed delays
// unless asked for.
class TestApp
{
public:
    static QDateTime defaultNow() { return QDateTime(QDate(2026, 11, 21), QTime(15, 0), Qt::UTC); }

    explicit TestApp(const QByteArray &timeZone = "America/New_York", const QDateTime &now = defaultNow(),
                     double delayScale = 0.0);
    // Another application over the same folder, as a second launch is.
    std::unique_ptr<AppDelegate> relaunch(const QByteArray &timeZone = "America/New_York") const;

    AppDelegate &app() { return *m_app; }
    BookStore &store() { return m_app->persistentContainer(); }
    RecordingPlatform &platform() { return *m_platform; }
    FixedClock &clock() { return *m_clock; }
    QString dataDirectory() const { return m_dir.path(); }

    // Inserts a book and returns it with its key; fails the test on error.
    Books insert(Books book);
    QList<Books> allBooks(bool covers = true);
    QStringList entryNames(Entity entity);

private:
    QTemporaryDir m_dir;
    RecordingPlatform *m_platform = nullptr;
    FixedClock *m_clock = nullptr;
    std::unique_ptr<AppDelegate> m_app;
};

// A Books record with just a title and an author.
Books book(const QString &name, const QString &author);

// A file's bytes (empty when it cannot be read), and a file written whole
// (its path; empty when it cannot be written).
QByteArray readFile(const QString &path);
QString writeFile(const QString &path, const QByteArray &bytes);

} // namespace tomewise::test
