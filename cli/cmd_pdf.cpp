// The PDF list of a breakdown and the printed report, through their screens.
#include "cli.h"

#include "browse/groupbreakdowntableviewcontroller.h"
#include "browse/pdflistbuilder.h"
#include "exchange/printgroupbybooksviewcontroller.h"

#include <QPrinter>

namespace tomewise::cli {
namespace {

const QString kPdfUsage = QStringLiteral("pdf KIND VALUE [--sort N]... [--search TEXT] [-o FILE] [--documents-dir DIR]");
const QString kReportUsage = QStringLiteral("report [KIND VALUE] [--desc] (--pdf FILE | --text)");

void useDocumentsDir(QStringList &args)
{
    if (const auto dir = takeOption(args, QStringLiteral("--documents-dir")))
        qputenv(PdfListBuilder::kDocumentsEnv, dir->toLocal8Bit());
}

int pdf(Context &ctx)
{
    QStringList &args = ctx.args;
    useDocumentsDir(args);
    const auto output = takeOption(args, QStringLiteral("-o"));
    const auto search = takeOption(args, QStringLiteral("--search"));
    const auto sorts = takeSorts(args);
    if (!sorts)
        return usageError(ctx, kPdfUsage);
    const auto kind = args.size() == 2 ? groupKindNamed(args.first()) : std::nullopt;
    if (!kind)
        return usageError(ctx, kPdfUsage);
    if (!selectGroupValue(ctx, *kind, args.last()))
        return 1;

    GroupBreakdownTableViewController screen(*kind, ctx.app, nullptr);
    driveBreakdown(screen, *sorts, search);
    if (!screen.canShare()) {
        ctx.err << "No books to list" << Qt::endl;
        return 1;
    }
    const QString path = output.value_or(screen.pdfFilePath());
    if (!screen.writePdfList(path))
        return 1;
    ctx.out << "wrote PDF file with multiple pages to: " << path << '\n';
    return 0;
}

int report(Context &ctx)
{
    QStringList &args = ctx.args;
    const bool descending = takeFlag(args, QStringLiteral("--desc"));
    const bool text = takeFlag(args, QStringLiteral("--text"));
    const auto pdfPath = takeOption(args, QStringLiteral("--pdf"));
    if (text == bool(pdfPath) || (args.size() != 0 && args.size() != 2))
        return usageError(ctx, kReportUsage);
    AppState &state = ctx.app->state();
    state.setCallingScreen(QStringLiteral("MainMenu"));
    if (args.size() == 2) {
        const auto kind = groupKindNamed(args.first());
        if (!kind)
            return usageError(ctx, kReportUsage);
        if (!selectGroupValue(ctx, *kind, args.last()))
            return 1;
        state.setCallingScreen(QLatin1String(groupKind(*kind).callingScreen));
    }
    state.setGroupSortAscending(!descending);

    PrintGroupByBooksViewController screen(ctx.app, nullptr);
    AlertLog alerts(screen, ctx.err);
    screen.viewDidLoad();
    screen.buildNow();
    if (alerts.count() > 0)
        return 1;
    if (text) {
        ctx.out << screen.plainText();
        return 0;
    }
    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(*pdfPath);
    printer.setPageSize(QPageSize(QPageSize::A4));
    return screen.printTo(printer) ? 0 : 1;
}

const Registration r1({QStringLiteral("pdf"), kPdfUsage,
                       QStringLiteral("The PDF list of the books a breakdown shows (driven as breakdown is);\n"
                                      "default file: its name in the documents folder ($TOMEWISE_DOCUMENTS_DIR)."),
                       true, pdf});
const Registration r2({QStringLiteral("report"), kReportUsage,
                       QStringLiteral("The printed report of every book, or of one group, as a PDF or plain text."),
                       true, report});

} // namespace
} // namespace tomewise::cli
