// The group summaries and breakdowns, through their screens.
#include "cli.h"

#include "browse/groupbreakdowntableviewcontroller.h"
#include "browse/grouptableviewcontroller.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace tomewise::cli {
namespace {

const QString kSummaryUsage = QStringLiteral("summary KIND [--desc] [--search TEXT] [--json]");
const QString kBreakdownUsage = QStringLiteral("breakdown KIND VALUE [--sort N]... [--search TEXT] [--json]");

std::optional<GroupKind> kindArgument(Context &ctx, const QString &usage)
{
    const auto kind = ctx.args.isEmpty() ? std::nullopt : groupKindNamed(ctx.args.takeFirst());
    if (!kind) {
        QStringList names;
        for (const auto &k : kGroupKinds)
            names << QLatin1String(k.name);
        usageError(ctx, usage);
        ctx.err << "KIND is one of " << names.join(QStringLiteral(", ")) << Qt::endl;
    }
    return kind;
}

void printJson(Context &ctx, const QString &header, const QJsonArray &rows)
{
    ctx.out << QJsonDocument(QJsonObject{{QStringLiteral("header"), header}, {QStringLiteral("rows"), rows}})
                   .toJson(QJsonDocument::Indented);
}

int summary(Context &ctx)
{
    const auto kind = kindArgument(ctx, kSummaryUsage);
    if (!kind)
        return 2;
    QStringList &args = ctx.args;
    const bool descending = takeFlag(args, QStringLiteral("--desc"));
    const bool json = takeFlag(args, QStringLiteral("--json"));
    const auto search = takeOption(args, QStringLiteral("--search"));
    if (!args.isEmpty())
        return usageError(ctx, kSummaryUsage);
    GroupTableViewController screen(*kind, ctx.app, nullptr);
    screen.viewDidLoad();
    if (search)
        screen.setSearchText(*search);
    if (descending)
        screen.SortButtonTapped();
    QJsonArray rows;
    if (!json)
        ctx.out << screen.header() << '\n';
    for (const QString &value : screen.shownList()) {
        const int n = screen.count(value);
        if (json)
            rows.append(QJsonObject{{QStringLiteral("value"), value}, {QStringLiteral("count"), n}});
        else
            ctx.out << printable(value) << '\t' << n << '\n';
    }
    if (json)
        printJson(ctx, screen.header(), rows);
    return 0;
}

int breakdown(Context &ctx)
{
    const auto kind = kindArgument(ctx, kBreakdownUsage);
    if (!kind)
        return 2;
    QStringList &args = ctx.args;
    const bool json = takeFlag(args, QStringLiteral("--json"));
    const auto search = takeOption(args, QStringLiteral("--search"));
    const auto sorts = takeSorts(args);
    if (!sorts || args.size() != 1)
        return usageError(ctx, kBreakdownUsage);
    if (!selectGroupValue(ctx, *kind, args.first()))
        return 1;

    GroupBreakdownTableViewController screen(*kind, ctx.app, nullptr);
    driveBreakdown(screen, *sorts, search);

    const QStringList outlets = screen.labelOutlets();
    const auto *model = screen.model();
    QJsonArray rows;
    if (!json)
        ctx.out << screen.header() << '\n';
    for (int row = 0; row < model->rowCount(); ++row) {
        const QStringList labels = model->labels(row);
        if (json) {
            QJsonObject fields;
            for (int i = 0; i < labels.size(); ++i)
                fields.insert(outlets.value(i), labels[i]);
            rows.append(QJsonObject{{QStringLiteral("pk"), model->book(row).pk}, {QStringLiteral("labels"), fields}});
        } else {
            ctx.out << '\n' << printable(labels.join(u'\n'), LineBreaks::Keep) << '\n';
        }
    }
    if (json)
        printJson(ctx, screen.header(), rows);
    return 0;
}

const Registration r1({QStringLiteral("summary"), kSummaryUsage,
                       QStringLiteral("A group summary: its header, then each value and its count."), true, summary});
const Registration r2({QStringLiteral("breakdown"), kBreakdownUsage,
                       QStringLiteral("The books behind one summary row, sorted as the sort menu's choices N."),
                       true, breakdown});

} // namespace
} // namespace tomewise::cli
