// The review prompt and the rate-and-share screen.
#include "cli.h"

#include "feedback/ratesharetableviewcontroller.h"
#include "feedback/reviewservice.h"

namespace tomewise::cli {
namespace {

int review(Context &ctx)
{
    const QString usage = QStringLiteral("review [--now ISO-TIME]");
    const auto nowText = takeOption(ctx.args, QStringLiteral("--now"));
    if (!ctx.args.isEmpty())
        return usageError(ctx, usage);
    ReviewService service(*ctx.app);
    // A time without an offset is the device's local time.
    FixedClock clock(nowText ? QDateTime::fromString(*nowText, Qt::ISODate) : ctx.app->now());
    if (!clock.now().isValid())
        return usageError(ctx, usage);
    service.setClock(&clock);

    ctx.out << (service.request() ? "asked" : "not asked") << '\n';
    const auto last = service.lastRequest();
    ctx.out << "lastRequest: " << (last ? last->toUTC().toString(Qt::ISODate) : QStringLiteral("absent")) << '\n';
    return 0;
}

int rateShare(Context &ctx)
{
    bool isNumber = false;
    const int row = ctx.args.size() == 1 ? ctx.args[0].toInt(&isNumber) : 0;
    if (!isNumber)
        return usageError(ctx, QStringLiteral("rate-share ROW"));
    RateShareTableViewController screen(ctx.app);
    AlertLog alerts(screen, ctx.err);
    bool unopened = false;
    QObject::connect(&screen, &RateShareTableViewController::opened, &screen,
                     [&](const QUrl &address, bool handled) {
                         ctx.out << address.toString(QUrl::FullyEncoded) << '\n';
                         if (!handled)
                             ctx.err << "No program opened the address." << Qt::endl;
                         unopened = !handled;
                     });
    QObject::connect(&ctx.app->platform(), &PlatformServices::shareRequested, &screen,
                     [&ctx](const QString &text, const QImage &, const QList<QUrl> &, const QList<QUrl> &links) {
                         if (!text.isEmpty())
                             ctx.out << printable(text, LineBreaks::Keep) << '\n';
                         for (const QUrl &link : links)
                             ctx.out << link.toString() << '\n';
                     });
    screen.viewDidLoad();
    screen.didSelectRow(row);
    return alerts.count() || unopened ? 1 : 0;
}

const Registration r1({QStringLiteral("review"), QStringLiteral("review [--now ISO-TIME]"),
                       QStringLiteral("Ask for a store review as the book detail screen does."), true, review});
const Registration r2({QStringLiteral("rate-share"), QStringLiteral("rate-share ROW"),
                       QStringLiteral("Do what row 0-4 of Rate & Share does; print what it opened or shared."), true,
                       rateShare});

} // namespace
} // namespace tomewise::cli
