// Start-up, the store dump and the user guide.
#include "cli.h"

#include "app/mainmenuviewcontroller.h"
#include "app/pdfdocument.h"
#include "model/storedump.h"

#include <QJsonDocument>

namespace tomewise::cli {
namespace {

int start(Context &ctx)
{
    MainMenuViewController menu(ctx.app);
    AlertLog alerts(menu, ctx.err);
    menu.viewDidLoad();
    return alerts.count() ? 1 : 0;
}

int storeDump(Context &ctx)
{
    const QString usage = QStringLiteral("store dump Books|GenreList|RatingList|SeriesList");
    if (ctx.args.size() != 2 || ctx.args[0] != QLatin1String("dump"))
        return usageError(ctx, usage);
    const auto entity = entityFromName(ctx.args[1]);
    if (!entity || *entity == Entity::Thumbnail || *entity == Entity::Event)
        return usageError(ctx, usage);
    QString error;
    const auto array = dumpEntity(ctx.app->persistentContainer(), *entity, &error);
    if (!array) {
        ctx.err << error << Qt::endl;
        return 1;
    }
    ctx.out << QJsonDocument(*array).toJson(QJsonDocument::Indented);
    return 0;
}

int guide(Context &ctx)
{
    if (ctx.args.size() != 2)
        return usageError(ctx, QStringLiteral("guide MARKDOWN PDF"));
    QString error;
    if (!writeUserGuidePdf(ctx.args[0], ctx.args[1], &error)) {
        ctx.err << error << Qt::endl;
        return 1;
    }
    return 0;
}

const Registration r1({QStringLiteral("start"), QStringLiteral("start"),
                       QStringLiteral("Run the main menu's start-up (seeding, date repair) and exit."), true, start});
const Registration r2({QStringLiteral("store"), QStringLiteral("store dump ENTITY"),
                       QStringLiteral("Print Books, GenreList, RatingList or SeriesList as JSON."), true, storeDump});
const Registration r3({QStringLiteral("guide"), QStringLiteral("guide MARKDOWN PDF"),
                       QStringLiteral("Write the user guide PDF from its Markdown."), false, guide});

} // namespace
} // namespace tomewise::cli
