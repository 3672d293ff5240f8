#include "testapp.h"

#include <QTest>

namespace tomewise::test {

TestApp::TestApp(const QByteArray &timeZone, const QDateTime &now, double delayScale)
{
    AppDelegate::Options options;
    options.dataDirectory = m_dir.path();
    options.locale = QStringLiteral("en_US");
    options.timeZone = timeZone;
    auto clock = std::make_unique<FixedClock>(now);
    m_clock = clock.get();
    options.clock = std::move(clock);
    auto platform = std::make_unique<RecordingPlatform>();
    m_platform = platform.get();
    options.platform = std::move(platform);
    options.delayScale = delayScale;
    // Tests reopen a folder in the same process and run the command line on it.
    options.lockLibrary = false;
    m_app = std::make_unique<AppDelegate>(std::move(options));
}

std::unique_ptr<AppDelegate> TestApp::relaunch(const QByteArray &timeZone) const
{
    AppDelegate::Options options;
    options.dataDirectory = m_dir.path();
    options.locale = QStringLiteral("en_US");
    options.timeZone = timeZone;
    options.clock = std::make_unique<FixedClock>(m_clock->now());
    options.platform = std::make_unique<RecordingPlatform>();
    options.delayScale = 0;
    options.lockLibrary = false;
    return std::make_unique<AppDelegate>(std::move(options));
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

} // namespace tomewise::test
