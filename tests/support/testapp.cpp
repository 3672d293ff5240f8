#include "testapp.h"

#include <QFile>
#include <QTest>

namespace tomewise::test {

namespace {

AppDelegate::Options options(const QString &dir, const QByteArray &timeZone, double delayScale)
{
    AppDelegate::Options o;
    o.dataDirectory = dir;
    o.locale = QStringLiteral("en_US");
    o.timeZone = timeZone;
    o.delayScale = delayScale;
    // Tests reopen a folder in the same process and run the command line on it.
    o.lockLibrary = false;
    return o;
}

} // namespace

TestApp::TestApp(const QByteArray &timeZone, const QDateTime &now, double delayScale)
{
    AppDelegate::Options o = options(m_dir.path(), timeZone, delayScale);
    o.clock.reset(m_clock = new FixedClock(now));
    o.platform.reset(m_platform = new RecordingPlatform);
    m_app = std::make_unique<AppDelegate>(std::move(o));
}

std::unique_ptr<AppDelegate> TestApp::relaunch(const QByteArray &timeZone) const
{
    AppDelegate::Options o = options(m_dir.path(), timeZone, 0.0);
    o.clock = std::make_unique<FixedClock>(m_clock->now());
    o.platform = std::make_unique<RecordingPlatform>();
    return std::make_unique<AppDelegate>(std::move(o));
}

Books TestApp::insert(Books book)
{
    const auto result = store().insertBook(book);
    if (!result)
        QTest::qFail(qPrintable(result.error), __FILE__, __LINE__);
    return book;
}

QList<Books> TestApp::allBooks(bool covers)
{
    FetchRequest request;
    request.includesCovers = covers;
    return store().fetchBooks(request).value_or(QList<Books>());
}

QStringList TestApp::entryNames(Entity entity)
{
    FetchRequest request;
    request.entity = entity;
    QStringList names;
    for (const auto &e : store().fetchEntries(request).value_or(QList<ReferenceEntry>()))
        names << e.value.value_or(QStringLiteral("<absent>"));
    return names;
}

Books book(const QString &name, const QString &author)
{
    Books b;
    b.name = name;
    b.author = author;
    return b;
}

QByteArray readFile(const QString &path)
{
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

QString writeFile(const QString &path, const QByteArray &bytes)
{
    QFile f(path);
    return f.open(QIODevice::WriteOnly) && f.write(bytes) == bytes.size() ? path : QString();
}

} // namespace tomewise::test
