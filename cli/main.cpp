// tomewise-cli: the app's screens driven from the command line.
#include "cli.h"

#include "app/log.h"

#include <QGuiApplication>

#include <algorithm>

using namespace tomewise;

namespace {

bool isHelp(const QString &word)
{
    return word == QLatin1String("--help") || word == QLatin1String("-h");
}

// Usages and summaries in two columns within 80 characters: a usage too long
// for its column puts its summary on the next line, and a long summary wraps
// at word breaks under its column.
void printHelp(QTextStream &out)
{
    out << "usage: tomewise-cli [--data-dir DIR] COMMAND [ARGS...]\n\n"
        << "The store (Tomewise.sqlite) and the settings (Tomewise.ini) live in DIR;\n"
        << "default: $TOMEWISE_DATA_DIR, else the platform's app-data folder.\n"
        << "Alerts print to stderr as TITLE: MESSAGE; log lines go to stderr too.\n"
        << "COMMAND --help prints that command's usage.\n\n"
        << "Commands:\n";
    constexpr qsizetype kIndent = 2;
    constexpr qsizetype kMaxColumn = 36;
    constexpr qsizetype kWidth = 80;
    qsizetype column = 0;
    for (const auto &c : cli::commands()) {
        if (c.usage.size() < kMaxColumn)
            column = std::max(column, c.usage.size() + 2);
    }
    const QString margin(kIndent + column, u' ');
    for (const auto &c : cli::commands()) {
        // A usage with alternatives ("a | b") gives each its own line.
        const QStringList alternatives = c.usage.split(QStringLiteral(" | "));
        for (qsizetype i = 0; i + 1 < alternatives.size(); ++i)
            out << QString(kIndent, u' ') << alternatives.at(i) << '\n';
        const QString &usage = alternatives.last();
        out << QString(kIndent, u' ') << usage;
        qsizetype at = kIndent + usage.size();
        if (usage.size() + 2 > column) {
            out << '\n';
            at = 0;
        }
        for (const QString &word : c.summary.section(u'\n', 0, 0).split(u' ', Qt::SkipEmptyParts)) {
            const bool lineStart = at <= margin.size();
            if (!lineStart && at + 1 + word.size() > kWidth) {
                out << '\n';
                at = 0;
            }
            if (at < margin.size()) {
                out << QString(margin.size() - at, u' ');
                at = margin.size();
            } else {
                out << ' ';
                ++at;
            }
            out << word;
            at += word.size();
        }
        out << '\n';
    }
    out.flush();
}

void printCommandHelp(QTextStream &out, const cli::Command &command)
{
    out << "usage: tomewise-cli [--data-dir DIR] " << command.usage << "\n\n" << command.summary << '\n';
    out.flush();
}

} // namespace

int main(int argc, char *argv[])
{
    filterRuntimeFolderWarning();
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
    if (args.isEmpty() || isHelp(args.first()) || args.first() == QLatin1String("help")) {
        printHelp(out);
        return args.isEmpty() ? 2 : 0;
    }

    const QString name = args.takeFirst();
    for (const auto &command : cli::commands()) {
        if (command.name != name)
            continue;
        // Asking for help never opens the library nor runs the command.
        if (std::any_of(args.cbegin(), args.cend(), isHelp)) {
            printCommandHelp(out, command);
            return 0;
        }
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
