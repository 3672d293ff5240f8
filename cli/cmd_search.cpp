// Looking a book up by ISBN, as the new book form's search does.
#include "cli.h"

#include "entry/bookfill.h"
#include "entry/booksearchmanager.h"

namespace tomewise::cli {
namespace {

// Longer than the query's own time-out, so a stalled service ends as a logged failure.
constexpr int kWaitMs = BookSearchManager::kTimeoutMs + 5000;

// One line per field: a backslash doubles so that an escaped break stays readable.
QString oneLine(QString text)
{
    return printable(text.replace(QLatin1Char('\\'), QLatin1String("\\\\")));
}

int lookup(Context &ctx)
{
    if (ctx.args.size() != 1)
        return usageError(ctx, QStringLiteral("lookup ISBN"));
    AppState &state = ctx.app->state();
    BookSearchManager manager(&ctx.app->userDefaults());
    bool done = false;
    QObject::connect(&manager, &BookSearchManager::finished, &manager, [&done] { done = true; });
    manager.search(ctx.args.first(), [&state](const std::optional<QList<BookItem>> &items) {
        state.setScannedBookItems(items);
    });
    waitUntil([&done] { return done; }, kWaitMs);

    const QString today = ctx.app->dateText().format(ctx.app->now(), DateText::Style::Medium);
    const auto fill = BookFill::from(state.scannedBookItems(), today);
    if (!fill) {
        ctx.err << "Book Not Found: The Scanned Barcode returned no Results" << Qt::endl;
        return 1;
    }
    for (const auto &[field, value] : fill->fields())
        ctx.out << field << ": " << oneLine(value) << '\n';
    return 0;
}

const Registration r1({QStringLiteral("lookup"), QStringLiteral("lookup ISBN"),
                       QStringLiteral("Look a book up by ISBN and print what the form would fill in."), true, lookup});

} // namespace
} // namespace tomewise::cli
