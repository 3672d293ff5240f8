// The genre, rating and series lists, through their list, add and edit screens.
#include "cli.h"

#include "reference/referenceaddcontroller.h"
#include "reference/referenceeditcontroller.h"
#include "reference/referencetablecontroller.h"

namespace tomewise::cli {
namespace {

QString usageOf(const ReferenceKindInfo &info)
{
    const QString name = QLatin1String(info.attribute);
    return name + (info.searchPlaceholder ? QStringLiteral(" list [--desc] [--search TEXT]") : QStringLiteral(" list"))
        + QStringLiteral(" | add TEXT | rename OLD NEW | delete NAME");
}

// Opens the list screen as a tap on the hub does and waits for its first load.
std::unique_ptr<ReferenceTableController> openList(const ReferenceKindInfo &info, Context &ctx)
{
    auto list = std::make_unique<ReferenceTableController>(info.kind, ctx.app, nullptr);
    bool loaded = false;
    QObject::connect(list.get(), &ReferenceTableController::listReloaded, list.get(), [&loaded] { loaded = true; });
    list->viewDidLoad();
    waitUntil([&loaded] { return loaded; }, 10000);
    return list;
}

// The row that shows the name, or -1 after saying there is none.
int rowNamed(const ReferenceKindInfo &info, const ReferenceTableController &list, const QString &name, Context &ctx)
{
    const auto &rows = list.searchText().isEmpty() ? list.list() : list.filteredList();
    for (int i = 0; i < rows.size(); ++i) {
        if (rows[i].value == name)
            return i;
    }
    ctx.err << "No " << info.attribute << " named " << printable(name) << Qt::endl;
    return -1;
}

int listEntries(const ReferenceKindInfo &info, Context &ctx)
{
    QStringList args = ctx.args;
    const bool descending = takeFlag(args, QStringLiteral("--desc"));
    const auto search = takeOption(args, QStringLiteral("--search"));
    if (!args.isEmpty() || ((descending || search) && !info.searchPlaceholder))
        return usageError(ctx, usageOf(info));
    auto list = openList(info, ctx);
    if (descending)
        list->SortButtonTapped();
    if (search)
        list->setSearchText(*search);
    const auto *rows = list->rows();
    for (int i = 0; i < rows->rowCount(); ++i)
        ctx.out << printable(rows->index(i).data().toString()) << '\n';
    return 0;
}

int addEntry(const ReferenceKindInfo &info, Context &ctx)
{
    if (ctx.args.size() != 1)
        return usageError(ctx, usageOf(info));
    ReferenceAddController add(info.kind, ctx.app, nullptr);
    AlertLog alerts(add, ctx.err);
    add.viewDidLoad();
    add.setText(ctx.args[0]);
    add.save();
    return alerts.count() ? 1 : 0;
}

int renameEntry(const ReferenceKindInfo &info, Context &ctx)
{
    if (ctx.args.size() != 2)
        return usageError(ctx, usageOf(info));
    auto list = openList(info, ctx);
    const int row = rowNamed(info, *list, ctx.args[0], ctx);
    if (row < 0)
        return 1;
    ReferenceEditController edit(info.kind, ctx.app, nullptr);
    // The row's tap hands the entry over (genre, rating) or records the selected name (series).
    QObject::connect(list.get(), &ScreenController::navigate, &edit,
                     [&] { edit.setPassedEntry(list->passedEntry()); });
    list->didSelectRow(row);
    edit.viewDidLoad();
    edit.setText(ctx.args[1]);
    edit.save();
    return 0;
}

int deleteEntry(const ReferenceKindInfo &info, Context &ctx)
{
    if (ctx.args.size() != 1)
        return usageError(ctx, usageOf(info));
    auto list = openList(info, ctx);
    const int row = rowNamed(info, *list, ctx.args[0], ctx);
    if (row < 0)
        return 1;
    list->deleteRow(row);
    return 0;
}

int run(const ReferenceKindInfo &info, Context &ctx)
{
    if (ctx.args.isEmpty())
        return usageError(ctx, usageOf(info));
    const QString action = ctx.args.takeFirst();
    if (action == QLatin1String("list"))
        return listEntries(info, ctx);
    if (action == QLatin1String("add"))
        return addEntry(info, ctx);
    if (action == QLatin1String("rename"))
        return renameEntry(info, ctx);
    if (action == QLatin1String("delete"))
        return deleteEntry(info, ctx);
    return usageError(ctx, usageOf(info));
}

const bool registered = [] {
    for (const auto &info : kReferenceKinds) {
        Registration({QLatin1String(info.attribute),
                      QLatin1String(info.attribute) + QStringLiteral(" list|add|rename|delete ..."),
                      QStringLiteral("List, add, rename or delete the %1 names of the book form's picker.")
                          .arg(QLatin1String(info.attribute)),
                      true, [&info](Context &ctx) { return run(info, ctx); }});
    }
    return true;
}();

} // namespace
} // namespace tomewise::cli
