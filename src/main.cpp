// The Tomewise app: one phone-sized window over the core.
#include "app/appdelegate.h"
#include "app/log.h"
#include "app/qmltypes.h"
#include "app/selftest.h"
#include "feedback/reviewservice.h"

#include <QCommandLineParser>
#include <QApplication>
#include <QQmlApplicationEngine>
#include <QQmlContext>
#include <QQuickStyle>

#include <cstdio>
#include <cstring>

namespace {

struct Options
{
    QCommandLineOption dataDir{QStringLiteral("data-dir"),
                               QStringLiteral("Folder of the store and settings (default: $TOMEWISE_DATA_DIR or the app-data folder)."),
                               QStringLiteral("DIR")};
    QCommandLineOption selfTest{QStringLiteral("self-test"),
                                QStringLiteral("Load every page offscreen; exit 1 on any QML warning.")};
};

void describe(QCommandLineParser &parser, const Options &options)
{
    parser.setApplicationDescription(QStringLiteral("Tomewise, a personal reading log"));
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addOption(options.dataDir);
    parser.addOption(options.selfTest);
}

bool asksForHelpOrVersion(int argc, char *argv[])
{
    for (int i = 1; i < argc; ++i) {
        for (const char *flag : {"-h", "--help", "-?", "--help-all", "-v", "--version"}) {
            if (std::strcmp(argv[i], flag) == 0)
                return true;
        }
    }
    return false;
}

void nameApplication()
{
    QCoreApplication::setApplicationName(QStringLiteral("Tomewise"));
    QCoreApplication::setOrganizationName(QStringLiteral("Tomewise"));
    QCoreApplication::setApplicationVersion(QStringLiteral(TOMEWISE_VERSION));
}

// Another Tomewise has the library: say so in a window of our own, since the
// user started this one by hand and may never see stderr.
int refuseLibraryInUse(const QString &message)
{
    std::fprintf(stderr, "%s\n", qPrintable(message));
    QQmlApplicationEngine engine;
    engine.setInitialProperties({{QStringLiteral("message"), message}});
    engine.load(QUrl(QStringLiteral("qrc:/qml/LibraryInUse.qml")));
    if (!engine.rootObjects().isEmpty())
        QGuiApplication::exec();
    return tomewise::AppDelegate::kLibraryInUseStatus;
}

} // namespace

int main(int argc, char *argv[])
{
    tomewise::filterRuntimeFolderWarning();
    Options options;
    // Help and version need no window, so they answer before the GUI looks
    // for a display (where there is none, it would abort).
    if (asksForHelpOrVersion(argc, argv)) {
        QCoreApplication core(argc, argv);
        nameApplication();
        QCommandLineParser parser;
        describe(parser, options);
        parser.process(core); // prints and exits
        return 0;
    }

    // Widgets only for the desktop's print dialog; the screens are Qt Quick.
    QApplication app(argc, argv);
    nameApplication();
    QCommandLineParser parser;
    describe(parser, options);
    parser.process(app);

    QQuickStyle::setStyle(QStringLiteral("Material"));
    tomewise::registerQmlTypes();

    if (parser.isSet(options.selfTest))
        return tomewise::runSelfTest();

    tomewise::AppDelegate::Options delegateOptions;
    delegateOptions.dataDirectory = parser.value(options.dataDir);
    tomewise::AppDelegate delegate(std::move(delegateOptions));
    if (const auto holder = delegate.takeLibraryLock())
        return refuseLibraryInUse(delegate.inUseMessage(*holder));
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
