// The Tomewise app: one phone-sized window over the core.
#include "app/appdelegate.h"
#include "app/qmltypes.h"
#include "app/selftest.h"
#include "feedback/reviewservice.h"

#include <QCommandLineParser>
#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQmlContext>
#include <QQuickStyle>

int main(int argc, char *argv[])
{
    QGuiApplication app(argc, argv);
    QGuiApplication::setApplicationName(QStringLiteral("Tomewise"));
    QGuiApplication::setOrganizationName(QStringLiteral("Tomewise"));

    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Tomewise, a personal reading log"));
    parser.addHelpOption();
    QCommandLineOption dataDir(QStringLiteral("data-dir"),
                               QStringLiteral("Folder of the store and settings (default: $TOMEWISE_DATA_DIR or the app-data folder)."),
                               QStringLiteral("DIR"));
    QCommandLineOption selfTest(QStringLiteral("self-test"),
                                QStringLiteral("Load every page offscreen; exit 1 on any QML warning."));
    parser.addOption(dataDir);
    parser.addOption(selfTest);
    parser.process(app);

    QQuickStyle::setStyle(QStringLiteral("Material"));
    tomewise::registerQmlTypes();

    if (parser.isSet(selfTest))
        return tomewise::runSelfTest();

    tomewise::AppDelegate::Options options;
    options.dataDirectory = parser.value(dataDir);
    tomewise::AppDelegate delegate(std::move(options));
    QObject::connect(&app, &QGuiApplication::aboutToQuit, &delegate, &tomewise::AppDelegate::applicationWillTerminate);
    delegate.setReviewService(std::make_unique<tomewise::ReviewService>(delegate));

    QQmlApplicationEngine engine;
    tomewise::installImageProviders(engine, delegate);
    engine.setInitialProperties({{QStringLiteral("appDelegate"), QVariant::fromValue(&delegate)}});
    engine.load(QUrl(QStringLiteral("qrc:/qml/Main.qml")));
    if (engine.rootObjects().isEmpty())
        return 1;
    return QGuiApplication::exec();
}
