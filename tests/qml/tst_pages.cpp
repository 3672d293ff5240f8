#include "app/qmltypes.h"
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
    }
    void qmlEngineAvailable(QQmlEngine *engine)
    {
        m_app = std::make_unique<tomewise::test::TestApp>();
        engine->rootContext()->setContextProperty(QStringLiteral("testApp"), &m_app->app());
        engine->rootContext()->setContextProperty(QStringLiteral("shots"), &m_shots);
    }

private:
    std::unique_ptr<tomewise::test::TestApp> m_app;
    Shots m_shots;
};

QUICK_TEST_MAIN_WITH_SETUP(pages, Setup)
#include "tst_pages.moc"
