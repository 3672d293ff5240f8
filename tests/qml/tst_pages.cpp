#include "app/qmltypes.h"
#include "support/booksapiserver.h"
#include "support/imagefixtures.h"
#include "support/testapp.h"

#include <QDir>
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
    }

private:
    std::unique_ptr<tomewise::test::BooksApiServer> m_server;
    std::unique_ptr<tomewise::test::TestApp> m_app;
    Shots m_shots;
};

QUICK_TEST_MAIN_WITH_SETUP(pages, Setup)
#include "tst_pages.moc"
