#include "selftest.h"

#include "app/appdelegate.h"
#include "app/pagedirectory.h"
#include "app/qmltypes.h"
#include "platform/recordingplatform.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QMetaObject>
#include <QQmlApplicationEngine>
#include <QQmlComponent>
#include <QQmlContext>
#include <QQuickItem>
#include <QSet>
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
    while (timer.elapsed() < milliseconds) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
        // A popped page's items go only when deferred deletes run, as the event loop would.
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

// Everything below `root` in both the object tree and the visual tree: popups
// inside list delegates and loaded bar actions are reachable only through the latter.
void collect(QObject *root, QSet<QObject *> &seen, QList<QObject *> &out)
{
    if (!root || seen.contains(root))
        return;
    seen.insert(root);
    out.append(root);
    for (QObject *child : root->children())
        collect(child, seen, out);
    if (auto *item = qobject_cast<QQuickItem *>(root)) {
        for (QQuickItem *child : item->childItems())
            collect(child, seen, out);
    }
}

bool isPopup(const QObject *object)
{
    return object->inherits("QQuickPopup") || object->inherits("QQuickAbstractDialog");
}

// Opens and closes each kind of popup and dialog the page holds, and compiles
// what its loaders would load on demand: a module that only a dialog imports
// (the file dialog's folder model) fails here, not in the user's hands.
int openPopups(const QList<QObject *> &roots)
{
    QSet<QObject *> seen;
    QList<QObject *> objects;
    for (QObject *root : roots)
        collect(root, seen, objects);
    int opened = 0;
    QSet<QByteArray> kinds;
    for (QObject *object : std::as_const(objects)) {
        if (object->inherits("QQuickLoader") && !object->property("active").toBool()
            && !object->property("source").toUrl().isEmpty()) {
            // Compiled, not made: what it loads may start a camera.
            const QUrl url = qmlContext(object)->resolvedUrl(object->property("source").toUrl());
            QQmlComponent component(qmlEngine(object), url);
            for (const QQmlError &error : component.errors())
                std::fprintf(stderr, "%s\n", qPrintable(error.toString()));
            g_warnings += int(component.errors().size());
            ++opened;
            continue;
        }
        if (!isPopup(object) || kinds.contains(object->metaObject()->className()))
            continue;
        kinds.insert(object->metaObject()->className());
        QMetaObject::invokeMethod(object, "open");
        settle(100);
        QMetaObject::invokeMethod(object, "close");
        settle(20);
        ++opened;
    }
    return opened;
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
            // The window's own popups and the main menu's, which is never opened again.
            std::fprintf(stderr, "self-test: %-20s %2d popup(s) %s\n", "MainMenu", openPopups({window}),
                         g_warnings == 0 ? "ok" : "WARNINGS");
            for (const QString &target : PageDirectory().targets()) {
                if (target == QLatin1String("MainMenu"))
                    continue;
                const int before = g_warnings;
                QVariant page;
                QMetaObject::invokeMethod(window, "openPage", Q_RETURN_ARG(QVariant, page),
                                          Q_ARG(QVariant, target), Q_ARG(QVariant, QVariant()));
                settle(150);
                auto *pageObject = page.value<QObject *>();
                if (!pageObject) {
                    std::fprintf(stderr, "self-test: page %s did not open\n", qPrintable(target));
                    ++failures;
                }
                const int popups = openPopups({pageObject, window->property("header").value<QObject *>()});
                QMetaObject::invokeMethod(window, "back");
                settle(50);
                std::fprintf(stderr, "self-test: %-20s %2d popup(s) %s\n", qPrintable(target), popups,
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
