// The export file and its import, through the export and import screens.
#include "cli.h"

#include "exchange/exportviewcontroller.h"
#include "exchange/importviewcontroller.h"

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
    } else if (ctx.args.isEmpty()) {
        // The file's own bytes, not a re-encoding of them.
        ctx.out.flush();
        if (QIODevice *device = ctx.out.device())
            device->write(screen.dataBytes());
        else
            ctx.out << screen.DataString();
    } else {
        QString error;
        if (!screen.writeDataFile(ctx.args.first(), &error)) {
            ctx.err << "Export failed with error: " << error << Qt::endl;
            return 1;
        }
    }
    return 0;
}

int importFile(Context &ctx)
{
    if (ctx.args.size() != 1)
        return usageError(ctx, QStringLiteral("import FILE"));
    ImportViewController screen(ctx.app);
    screen.viewDidLoad();
    screen.documentPicker(QUrl::fromLocalFile(QFileInfo(ctx.args.first()).absoluteFilePath()));
    screen.answerAlert(0);
    if (!screen.importButtonEnabled()) {
        ctx.err << "The file could not be read: " << ctx.args.first() << Qt::endl;
        return 1;
    }
    bool done = false;
    QObject::connect(&screen, &ImportViewController::imported, &screen, [&] { done = true; });
    screen.ImportTextFile();
    waitUntil([&] { return done; }, kTimeoutMs);
    ctx.out << screen.alertTitle() << ": " << screen.alertMessage() << Qt::endl;
    return screen.wrongFile() == 0 ? 0 : 1;
}

const Registration r1({QStringLiteral("export"), QStringLiteral("export [FILE] | export --display"),
                       QStringLiteral("Write the export file (stdout without FILE), or print its display text."),
                       true, exportFile});
const Registration r2({QStringLiteral("import"), QStringLiteral("import FILE"),
                       QStringLiteral("Import an export file and print the closing alert; a wrong file exits 1."),
                       true, importFile});

} // namespace
} // namespace tomewise::cli
