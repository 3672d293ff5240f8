// The export file and its import, through the export and import screens.
#include "cli.h"

#include "exchange/exportviewcontroller.h"
#include "exchange/importviewcontroller.h"

#include <QFile>
#include <QFileInfo>

namespace tomewise::cli {
namespace {

constexpr int kTimeoutMs = 24 * 60 * 60 * 1000;

int exportFile(Context &ctx)
{
    const bool display = takeFlag(ctx.args, QStringLiteral("--display"));
    if (ctx.args.size() > 1 || (display && !ctx.args.isEmpty()))
        return usageError(ctx, QStringLiteral("export [FILE] | export --display"));
    ExportViewController screen(ctx.app);
    AlertLog alerts(screen, ctx.err);
    screen.viewDidLoad();
    bool ok = false;
    bool done = false;
    QObject::connect(&screen, &ExportViewController::built, &screen, [&](bool built) {
        ok = built;
        done = true;
    });
    screen.CreateUpdateFile();
    waitUntil([&] { return done; }, kTimeoutMs);
    if (!ok)
        return 1;
    if (display) {
        ctx.out << screen.DataDisplayString();
        return 0;
    }
    // The file's own bytes, not a re-encoding of them.
    QString error;
    QFile stdoutFile;
    ctx.out.flush();
    const bool written = ctx.args.isEmpty()
        ? stdoutFile.open(stdout, QIODevice::WriteOnly) && screen.writeDataFile(stdoutFile, &error)
              && stdoutFile.flush()
        : screen.writeDataFile(ctx.args.first(), &error);
    if (!written) {
        ctx.err << "Export failed with error: " << (error.isEmpty() ? stdoutFile.errorString() : error)
                << Qt::endl;
        return 1;
    }
    return 0;
}

int importFile(Context &ctx)
{
    const QString usage = QStringLiteral("import FILE [--dry-run] [--include-unread]");
    const bool dryRun = takeFlag(ctx.args, QStringLiteral("--dry-run"));
    const bool includeUnread = takeFlag(ctx.args, QStringLiteral("--include-unread"));
    if (ctx.args.size() != 1)
        return usageError(ctx, usage);
    ImportViewController screen(ctx.app);
    screen.viewDidLoad();
    screen.setIncludeUnread(includeUnread);
    screen.documentPicker(QUrl::fromLocalFile(QFileInfo(ctx.args.first()).absoluteFilePath()));
    screen.answerAlert(0);
    if (!screen.importButtonEnabled()) {
        ctx.err << "The file could not be read: " << ctx.args.first() << Qt::endl;
        if (!screen.importText().isEmpty())
            ctx.err << screen.importText() << Qt::endl;
        return 1;
    }
    const bool service = screen.serviceImport() != nullptr;
    if ((dryRun || includeUnread) && !service)
        return usageError(ctx, usage + QStringLiteral(" (--dry-run and --include-unread are for Goodreads and "
                                                      "StoryGraph files)"));
    if (dryRun) {
        ctx.out << screen.importText();
        return 0;
    }
    bool done = false;
    QObject::connect(&screen, &ImportViewController::imported, &screen, [&] { done = true; });
    screen.ImportTextFile();
    waitUntil([&] { return done; }, kTimeoutMs);
    ctx.out << screen.alertTitle() << ": " << printable(screen.alertMessage(), LineBreaks::Keep) << Qt::endl;
    if (service) {
        ctx.err << printable(screen.notesText(), LineBreaks::Keep);
        return screen.failedCount() == 0 ? 0 : 1;
    }
    for (const auto &record : screen.notSaved()) {
        ctx.err << "Not saved: line " << record.line << ", \"" << printable(record.name) << "\" by \"" << printable(record.author)
                << "\": " << printable(record.reason) << Qt::endl;
    }
    const int unlisted = screen.failedCount() + screen.namelessCount() - int(screen.notSaved().size());
    if (unlisted > 0)
        ctx.err << "Not saved: " << unlisted << " more" << Qt::endl;
    // Records left out for want of a title or an author are the file's fault,
    // reported above; a record the store refused is a failed import.
    return screen.wrongFile() == 0 && screen.failedCount() == 0 ? 0 : 1;
}

const Registration r1({QStringLiteral("export"), QStringLiteral("export [FILE] | export --display"),
                       QStringLiteral("Write the export file (stdout without FILE), or print its display text."),
                       true, exportFile});
const Registration r2({QStringLiteral("import"), QStringLiteral("import FILE [--dry-run] [--include-unread]"),
                       QStringLiteral("Import an export file, a Goodreads library export or a StoryGraph export and "
                                      "print the closing alert; a wrong file or a record that could not be saved "
                                      "exits 1. For Goodreads and StoryGraph, --dry-run prints the preview and "
                                      "writes nothing, --include-unread takes books on every shelf."),
                       true, importFile});

} // namespace
} // namespace tomewise::cli
