// tomewise-cli: the app's screens driven from the command line.
#include "cli.h"

#include <QGuiApplication>

#include <cstdio>

using namespace tomewise;

namespace {

void printHelp(QTextStream &out)
{
    out << "usage: tomewise-cli [--data-dir DIR] COMMAND [ARGS...]\n\n"
        << "The store (Tomewise.sqlite) and the settings (Tomewise.ini) live in DIR;\n"
        << "default: $TOMEWISE_DATA_DIR, else the platform's app-data folder.\n"
        << "Alerts print to stderr as TITLE: MESSAGE; log lines go to stderr too.\n\n"
        << "Commands:\n";
    for (const auto &c : cli::commands())
        out << "  " << qSetFieldWidth(44) << Qt::left << c.usage << qSetFieldWidth(0) << c.summary << '\n';
    out.flush();
}

} // namespace

int main(int argc, char *argv[])
{
    // Fonts and images need a GUI application; there is no window to show.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication application(argc, argv);
    QGuiApplication::setApplicationName(QStringLiteral("Tomewise"));
    QGuiApplication::setOrganizationName(QStringLiteral("Tomewise"));

    QTextStream out(stdout);
    QTextStream err(stderr);
    QStringList args = QCoreApplication::arguments().mid(1);
    const QString dataDir = cli::takeOption(args, QStringLiteral("--data-dir")).value_or(QString());
    if (args.isEmpty() || args.first() == QLatin1String("--help") || args.first() == QLatin1String("-h")
        || args.first() == QLatin1String("help")) {
        printHelp(out);
        return args.isEmpty() ? 2 : 0;
    }

    const QString name = args.takeFirst();
    for (const auto &command : cli::commands()) {
        if (command.name != name)
            continue;
        std::unique_ptr<AppDelegate> app;
        if (command.needsApp) {
            AppDelegate::Options options;
            options.dataDirectory = dataDir;
            options.delayScale = 0; // nobody is watching: delayed alerts show at once
            app = std::make_unique<AppDelegate>(std::move(options));
        }
        cli::Context ctx{app.get(), args, out, err};
        const int status = command.run(ctx);
        out.flush();
        err.flush();
        if (app)
            app->applicationWillTerminate();
        return status;
    }
    err << "tomewise-cli: unknown command " << name << " (see --help)" << Qt::endl;
    return 2;
}
