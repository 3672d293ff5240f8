#include "app/qmltypes.h"
#include "support/booksapiserver.h"
#include "support/imagefixtures.h"
#include "support/testapp.h"

#include <QDate>
#include <QDir>
#include <QLocale>
#include <QQmlContext>
#include <QQmlEngine>
#include <QQuickStyle>
#include <QQuickWindow>
#include <QtQuickTest>

// Saves a window's picture when TOMEWISE_SHOTS names a folder.
class Shots : public QObject
{
    Q_OBJECT
public:
    Q_INVOKABLE bool save(QQuickWindow *window, const QString &name) const
    {
        const QString dir = qEnvironmentVariable("TOMEWISE_SHOTS");
        if (dir.isEmpty() || !window)
            return false;
        QDir().mkpath(dir);
        return window->grabWindow().save(QDir(dir).filePath(name + QStringLiteral(".png")));
    }
};

// Books put straight into the store of the file's application, with a cover.
class Library : public QObject
{
    Q_OBJECT
public:
    tomewise::test::TestApp *app = nullptr;
    // `read` is the day finished, as the start-up's date repair reads it.
    Q_INVOKABLE int addBook(const QString &name, const QString &author, const QString &notes, const QDate &read)
    {
        auto b = tomewise::test::book(name, author);
        b.notes = notes;
        b.year = qint16(read.year());
        b.month = qint16(read.month());
        b.day = qint16(read.day());
        b.dt = QLocale(QLocale::English, QLocale::UnitedStates).toString(read, QStringLiteral("MMM d, yyyy"));
        b.pictureImage = tomewise::test::encode(tomewise::test::coverImage(QSize(125, 180)), "JPEG", 80);
        return int(app->insert(b).pk);
    }
    Q_INVOKABLE int bookCount() { return int(app->allBooks(false).size()); }
    Q_INVOKABLE void setMessaging(bool available)
    {
        app->platform().textAvailable = app->platform().mailAvailable = available;
    }
    Q_INVOKABLE void setSetting(const QString &key, const QVariant &value)
    {
        app->app().userDefaults().setValue(key.toUtf8().constData(), value);
    }
    Q_INVOKABLE int openedUrls() const { return int(app->platform().openedUrls.size()); }
    // Titles across the alphabet, most with a cover, for the book lists.
    Q_INVOKABLE int seed() const
    {
        static const char *const books[][2]{
            {"Anna Karenina", "Leo Tolstoy"}, {"Atonement", "Ian McEwan"}, {"Beloved", "Toni Morrison"},
            {"Brave New World", "Aldous Huxley"}, {"Catch-22", "Joseph Heller"}, {"Dracula", "Bram Stoker"},
            {"Dune", "Frank Herbert"}, {"Émile", "Jean-Jacques Rousseau"}, {"Emma", "Jane Austen"},
            {"Frankenstein", "Mary Shelley"}, {"Great Expectations", "Charles Dickens"}, {"Hamlet", "William Shakespeare"},
            {"Invisible Man", "Ralph Ellison"}, {"Jane Eyre", "Charlotte Brontë"}, {"Kindred", "Octavia E. Butler"},
            {"Lolita", "Vladimir Nabokov"}, {"Middlemarch", "George Eliot"}, {"Moby-Dick", "Herman Melville"},
            {"Neuromancer", "William Gibson"}, {"Oryx and Crake", "Margaret Atwood"}, {"Persuasion", "Jane Austen"},
            {"Rebecca", "Daphne du Maurier"}, {"Siddhartha", "Hermann Hesse"}, {"The Hobbit", "J. R. R. Tolkien"},
            {"The Road", "Cormac McCarthy"}, {"Ulysses", "James Joyce"}, {"Villette", "Charlotte Brontë"},
            {"War and Peace", "Leo Tolstoy"}, {"Watership Down", "Richard Adams"}, {"Wide Sargasso Sea", "Jean Rhys"},
            {"Zorba the Greek", "Nikos Kazantzakis"}, {"1984", "George Orwell"}, {"2001: A Space Odyssey", "Arthur C. Clarke"},
            {"¡Ay, Carmela!", "José Sanchis Sinisterra"}};
        const auto &dates = app->app().dateText();
        int i = 0;
        for (const auto &[title, author] : books) {
            tomewise::Books b = tomewise::test::book(QString::fromUtf8(title), QString::fromUtf8(author));
            b.year = qint16(2015 + i % 10);
            b.month = qint16(1 + (i * 5) % 12);
            b.day = qint16(1 + (i * 7) % 28);
            b.dateRead = dates.startOfDay(*b.year, *b.month, *b.day);
            b.dt = dates.format(*b.dateRead, tomewise::DateText::Style::Medium);
            b.rating = QString(1 + (i * 3) % 5, u'*');
            if (i % 9 != 4) // a few without a cover
                b.pictureImage = tomewise::test::encode(tomewise::test::coverImage(QSize(200, 300), i), "jpeg", 85);
            app->insert(b);
            ++i;
        }
        return i;
    }
};

// Each test file gets a fresh engine and a fresh application over a scratch folder.
class Setup : public QObject
{
    Q_OBJECT
public Q_SLOTS:
    void applicationAvailable()
    {
        QQuickStyle::setStyle(QStringLiteral("Material"));
        tomewise::registerQmlTypes();
        // The books service the form's ISBN search asks, with one cover to download.
        m_server = std::make_unique<tomewise::test::BooksApiServer>();
        qputenv("TOMEWISE_BOOKS_API", m_server->volumesAddress().toEncoded());
        m_server->setAnswer(QStringLiteral("/covers/9780060853983.jpg"),
                            {200, tomewise::test::encode(tomewise::test::coverImage(QSize(128, 192)), "JPEG", 90),
                             "image/jpeg", 0});
    }
    void qmlEngineAvailable(QQmlEngine *engine)
    {
        m_app = std::make_unique<tomewise::test::TestApp>();
        tomewise::installImageProviders(*engine, m_app->app());
        engine->rootContext()->setContextProperty(QStringLiteral("testApp"), &m_app->app());
        engine->rootContext()->setContextProperty(QStringLiteral("shots"), &m_shots);
        m_library.app = m_app.get();
        engine->rootContext()->setContextProperty(QStringLiteral("library"), &m_library);
    }

private:
    std::unique_ptr<tomewise::test::BooksApiServer> m_server;
    std::unique_ptr<tomewise::test::TestApp> m_app;
    Shots m_shots;
    Library m_library;
};

QUICK_TEST_MAIN_WITH_SETUP(pages, Setup)
#include "tst_pages.moc"
