#include "selftest.h"

#include "app/appdelegate.h"
#include "app/pagedirectory.h"
#include "app/qmltypes.h"
#include "platform/recordingplatform.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QMetaObject>
#include <QQmlApplicationEngine>
#include <QQuickItem>
#include <QTemporaryDir>

#include <cstdio>

namespace tomewise {

namespace {

int g_warnings = 0;
QtMessageHandler g_previous = nullptr;

void countingHandler(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    // Only what QML and JavaScript report counts; platform chatter does not.
    const QLatin1String category(context.category ? context.category : "");
    const bool fromQml = category == QLatin1String("qml") || category == QLatin1String("js")
        || category.startsWith(QLatin1String("qt.qml")) || message.contains(QLatin1String(".qml:"));
    if (fromQml && (type == QtWarningMsg || type == QtCriticalMsg || type == QtFatalMsg))
        ++g_warnings;
    if (g_previous)
        g_previous(type, context, message);
}

void settle(int milliseconds)
{
    QElapsedTimer timer;
    timer.start();
    while (timer.elapsed() < milliseconds)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
}

} // namespace

int runSelfTest()
{
    QTemporaryDir dir;
    if (!dir.isValid())
        return 1;
    AppDelegate::Options options;
    options.dataDirectory = dir.path();
    options.platform = std::make_unique<RecordingPlatform>();
    AppDelegate delegate(std::move(options));

    g_previous = qInstallMessageHandler(countingHandler);
    int failures = 0;
    {
        QQmlApplicationEngine engine;
        installImageProviders(engine, delegate);
        engine.setInitialProperties({{QStringLiteral("appDelegate"), QVariant::fromValue(&delegate)}});
        engine.load(QUrl(QStringLiteral("qrc:/qml/Main.qml")));
        if (engine.rootObjects().isEmpty()) {
            std::fprintf(stderr, "self-test: the main window did not load\n");
            ++failures;
        } else {
            QObject *window = engine.rootObjects().first();
            settle(200);
            for (const QString &target : PageDirectory().targets()) {
                if (target == QLatin1String("MainMenu"))
                    continue;
                const int before = g_warnings;
                QVariant page;
                QMetaObject::invokeMethod(window, "openPage", Q_RETURN_ARG(QVariant, page),
                                          Q_ARG(QVariant, target), Q_ARG(QVariant, QVariant()));
                settle(150);
                if (!page.value<QObject *>()) {
                    std::fprintf(stderr, "self-test: page %s did not open\n", qPrintable(target));
                    ++failures;
                }
                QMetaObject::invokeMethod(window, "back");
                settle(50);
                std::fprintf(stderr, "self-test: %-20s %s\n", qPrintable(target),
                             g_warnings == before ? "ok" : "WARNINGS");
            }
        }
    }
    qInstallMessageHandler(g_previous);
    if (g_warnings > 0)
        std::fprintf(stderr, "self-test: %d QML warning(s)\n", g_warnings);
    return failures == 0 && g_warnings == 0 ? 0 : 1;
}

} // namespace tomewise
