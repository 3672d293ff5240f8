// The book form's save, the detail screen and the list-style list, from the command line.
#include "cli.h"

#include "browse/bookshelfviewcontroller.h"
#include "browse/liststyletableviewcontroller.h"
#include "entry/booksearchmanager.h"
#include "entry/detailviewcontroller.h"
#include "entry/newbookviewcontroller.h"
#include "entry/scannercontroller.h"
#include "model/coverimage.h"

#include <QImage>
#include <QRegularExpression>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace tomewise::cli {

std::optional<QString> scanPicture(Context &ctx, const QString &path);

namespace {

const QString kFieldUsage = QStringLiteral(
    "[--date TEXT|YYYY-MM-DD] [--title T] [--author A] [--subtitle ..] [--publisher ..] [--year-published ..] "
    "[--pages ..] [--isbn ..] [--format ..] [--genre ..] [--rating ..] [--series ..] [--series-number ..] "
    "[--notes ..] [--cover IMAGE]");
const QString kAddUsage = QStringLiteral("book add [--scan IMAGE] [--lookup] ") + kFieldUsage;
const QString kListOptions = QStringLiteral(
    "[--sort date-read|book-name|author|genre|rating|series] [--asc|--desc] [--search TEXT]");

// Each option and the form field it types into; numeric ones take digits only.
struct FieldOption
{
    const char *option;
    const char *field;
    bool digitsOnly;
};
constexpr FieldOption kFieldOptions[]{
    {"--date", "dateTextField", false},
    {"--title", "bookNameTextField", false},
    {"--subtitle", "SubTitleTextField", false},
    {"--author", "bookAuthorTextField", false},
    {"--publisher", "publishersNameTextField", false},
    {"--year-published", "datePublishedTextField", true},
    {"--pages", "numberOfPagesTextField", true},
    {"--isbn", "ISBNTextField", false},
    {"--format", "BookFormatTextField", false},
    {"--genre", "bookCategoryTextField", false},
    {"--rating", "RatingTextField", false},
    {"--series", "SeriesTextField", false},
    {"--series-number", "SeriesNumberTextField", true},
    {"--notes", "NotesTextView", false},
};

// Longer than the query's own time-out, so a stalled service ends as a logged failure.
constexpr int kSearchWaitMs = BookSearchManager::kTimeoutMs + 5000;

// A day written YYYY-MM-DD, or an invalid date for any other text.
QDate isoDate(const QString &text)
{
    static const QRegularExpression pattern(QStringLiteral("^\\d{4}-\\d{2}-\\d{2}$"));
    return pattern.match(text).hasMatch() ? QDate::fromString(text, Qt::ISODate) : QDate();
}

// Types the options' values into the form's fields as the keyboard would;
// 0, or the exit status of a refused value.
int typeFields(Context &ctx, QStringList &args, BookForm &form)
{
    for (const auto &o : kFieldOptions) {
        const auto value = takeOption(args, QLatin1String(o.option));
        if (!value)
            continue;
        if (o.digitsOnly && !BookForm::shouldChangeCharacters(QString(), *value)) {
            ctx.err << o.option << ": only digits are accepted, not \"" << printable(*value) << "\"" << Qt::endl;
            return 2;
        }
        const QDate day = std::string_view(o.option) == "--date" ? isoDate(*value) : QDate();
        if (day.isValid())
            form.dateChanged(day.year(), day.month(), day.day()); // as picked with the date picker
        else
            form.setProperty(o.field, *value);
    }
    if (const auto cover = takeOption(args, QStringLiteral("--cover"))) {
        const CoverImage::Decoded image = CoverImage::decodeFile(*cover);
        if (!image) {
            ctx.err << "--cover: " << printable(*cover) << ": " << image.error << Qt::endl;
            return 2;
        }
        form.imagePicked(image.image);
    }
    if (!form.dateTextField().isEmpty() && !form.readDate().isValid()) {
        ctx.err << "--date: not a date: \"" << printable(form.dateTextField()) << "\"" << Qt::endl;
        return 2;
    }
    return 0;
}

// The ISBN search as a second double tap sees it: the answer is held before
// the fill step runs, and the cover has arrived before anything is saved.
bool lookUp(Context &ctx, BookForm &form, const AlertLog &alerts)
{
    form.startSearch();
    BookSearchManager &search = form.searchManager();
    waitUntil([&search] { return search.pendingCount() == 0; }, kSearchWaitMs);
    const auto &held = ctx.app->state().scannedBookItems();
    const bool found = held && !held->isEmpty();
    const int alertsBefore = alerts.count();
    form.fillFromHeldAnswer();
    if (!found) {
        waitUntil([&] { return alerts.count() > alertsBefore; }, BookForm::kNotFoundDelayMs * 2);
        return false;
    }
    waitUntil([&search] { return search.pendingCount() == 0; }, kSearchWaitMs);
    return true;
}

// A barcode screen's hand-over after a read: the value kept as scannedISBN,
// its search sent and waited for as the screen waits, then the form's return
// path. The form fills from a held answer, or, with nothing found and no title
// typed, says "Book Not Found" 0.6 s later; both are waited for here, the cover
// download included, so nothing is saved before they have landed.
void scanHandOver(Context &ctx, BookForm &form, const AlertLog &alerts, const QString &isbn)
{
    struct PhotoScanner : ScannerController
    {
        using ScannerController::ScannerController;
        using ScannerController::handOver;
    } scanner(ctx.app);
    bool left = false;
    QObject::connect(&scanner, &ScreenController::unwind, &scanner, [&left] { left = true; });
    scanner.handOver(isbn);
    waitUntil([&left] { return left; }, ScannerController::kLookupWaitMs + 1000);
    // Decided before the return path, which clears the held answer as it fills.
    const auto &held = ctx.app->state().scannedBookItems();
    const bool found = held && !held->isEmpty();
    const bool titleTyped = !form.property("bookNameTextField").toString().isEmpty();
    const int alertsBefore = alerts.count();
    form.unwindFromScanner();
    if (found) {
        BookSearchManager &search = form.searchManager();
        waitUntil([&search] { return search.pendingCount() == 0; }, kSearchWaitMs);
    } else if (!titleTyped) {
        waitUntil([&] { return alerts.count() > alertsBefore; },
                  ctx.app->scaledDelay(BookForm::kScannerNotFoundDelayMs) * 2 + 1000);
    }
}

// The screens log a save the store refused and carry on, as they must; the
// command still fails then, naming what was not saved.
int refusedByStore(Context &ctx, int failedBefore, const QString &what)
{
    if (ctx.app->persistentContainer().failedWrites() == failedBefore)
        return 0;
    ctx.err << what << " (the store refused the change)" << Qt::endl;
    return 1;
}

int bookAdd(Context &ctx, QStringList &args)
{
    NewBookViewController form(ctx.app);
    AlertLog alerts(form, ctx.err);
    form.viewDidLoad();
    form.viewWillAppear();
    const bool lookup = takeFlag(args, QStringLiteral("--lookup"));
    if (const auto picture = takeOption(args, QStringLiteral("--scan"))) {
        if (args.contains(QStringLiteral("--isbn"))) {
            ctx.err << "--scan and --isbn: choose one" << Qt::endl;
            return 2;
        }
        // Without a look-up the code read is the ISBN field's text, as if typed.
        if (!lookup) {
            const auto isbn = scanPicture(ctx, *picture);
            if (!isbn)
                return 1;
            args << QStringLiteral("--isbn") << *isbn;
        } else {
            // The fields given are typed before Scan is tapped, so a title
            // already there keeps "Book Not Found" away, as in the app; they are
            // typed again below, so they win over the looked-up ones.
            QStringList typedFirst = args;
            if (const int refused = typeFields(ctx, typedFirst, form))
                return refused;
            const auto isbn = scanPicture(ctx, *picture);
            if (!isbn)
                return 1;
            scanHandOver(ctx, form, alerts, *isbn);
        }
    } else if (lookup) {
        const auto isbn = takeOption(args, QStringLiteral("--isbn"));
        if (!isbn)
            return usageError(ctx, kAddUsage);
        form.setProperty("ISBNTextField", *isbn);
        if (!lookUp(ctx, form, alerts))
            return 1;
    }
    if (const int refused = typeFields(ctx, args, form))
        return refused;
    if (!args.isEmpty())
        return usageError(ctx, kAddUsage);
    const int failedBefore = ctx.app->persistentContainer().failedWrites();
    if (!form.SaveNewBook())
        return 1;
    if (const int status = refusedByStore(
            ctx, failedBefore, QStringLiteral("Not saved: \"%1\"").arg(printable(form.savedBook().name.value_or(QString())))))
        return status;
    ctx.out << "Saved \"" << printable(form.savedBook().name.value_or(QString())) << "\" ("
            << printable(form.savedBook().dt.value_or(QString()))
            << ")" << Qt::endl;
    return 0;
}

// Opens the list as the screen does, then applies --sort, --asc/--desc and --search.
bool openList(QStringList &args, ListStyleTableViewController &list)
{
    static const QStringList sorts{QStringLiteral("date-read"), QStringLiteral("book-name"), QStringLiteral("author"),
                                   QStringLiteral("genre"), QStringLiteral("rating"), QStringLiteral("series")};
    const auto sort = takeOption(args, QStringLiteral("--sort"));
    const bool asc = takeFlag(args, QStringLiteral("--asc"));
    const bool desc = takeFlag(args, QStringLiteral("--desc"));
    const auto search = takeOption(args, QStringLiteral("--search"));
    if ((sort && !sorts.contains(*sort)) || (asc && desc))
        return false;
    list.viewDidLoad();
    list.viewWillAppear();
    if (asc)
        list.SortButtonTapped();
    if (sort)
        list.selectSortOption(int(sorts.indexOf(*sort)) + 1);
    if (search)
        list.setSearchText(*search);
    return true;
}

// "books --mode az|pictures|grid": the other lists' rows, the count line, then
// title and author per book; the A-Z list opens each section with "[letter]".
int printShelf(Context &ctx, QStringList &args, const QString &mode)
{
    const auto search = takeOption(args, QStringLiteral("--search"));
    if (!args.isEmpty() || !QStringList{QStringLiteral("az"), QStringLiteral("pictures"), QStringLiteral("grid")}
                                 .contains(mode))
        return usageError(ctx, QStringLiteral("books --mode az|pictures|grid [--search TEXT]"));
    BookShelfViewController shelf(ctx.app);
    shelf.setMode(mode);
    shelf.viewDidLoad();
    shelf.viewWillAppear();
    if (search)
        shelf.setSearchText(*search);
    BookWindowModel &model = *shelf.model();
    ctx.out << shelf.header() << "\n";
    QString section;
    for (int row = 0; row < model.rowCount(); ++row) {
        if (mode == u"az" && model.section(row) != section) {
            section = model.section(row);
            ctx.out << "[" << section << "]\n";
        }
        const Books b = model.book(row);
        ctx.out << b.name.value_or(QString()) << "\t" << b.author.value_or(QString()) << "\n";
    }
    ctx.out.flush();
    return 0;
}

int books(Context &ctx)
{
    QStringList args = ctx.args;
    if (const auto mode = takeOption(args, QStringLiteral("--mode")))
        return printShelf(ctx, args, *mode);
    ListStyleTableViewController list(ctx.app);
    const bool json = takeFlag(args, QStringLiteral("--json"));
    if (!openList(args, list) || !args.isEmpty())
        return usageError(ctx, QStringLiteral("books ") + kListOptions + QStringLiteral(" [--json]"));
    ListStyleModel &model = *list.model();
    if (json) {
        QJsonArray array;
        const auto roles = model.roleNames();
        for (int row = 0; row < model.rowCount(); ++row) {
            QJsonObject o;
            for (auto it = roles.begin(); it != roles.end(); ++it) {
                const QVariant v = model.data(model.index(row), it.key());
                if (v.isValid())
                    o.insert(QString::fromLatin1(it.value()), QJsonValue::fromVariant(v));
            }
            array.append(o);
        }
        ctx.out << QJsonDocument(QJsonObject{{QStringLiteral("header"), list.header()},
                                             {QStringLiteral("books"), array}})
                       .toJson(QJsonDocument::Indented);
        return 0;
    }
    ctx.out << list.header() << "\n";
    for (int row = 0; row < model.rowCount(); ++row)
        ctx.out << "\n" << printable(model.labels(row).join(u'\n'), LineBreaks::Keep) << "\n";
    return 0;
}

// "--index N" of the list opened with the list options; the row, or nothing
// after the message has been printed (status in *status).
std::optional<int> selectedRow(Context &ctx, QStringList &args, ListStyleTableViewController &list,
                               const QString &usage, int *status)
{
    const auto index = takeOption(args, QStringLiteral("--index"));
    bool ok = false;
    const int row = index ? index->toInt(&ok) : 0;
    if (!index || !ok || !openList(args, list)) {
        *status = usageError(ctx, usage);
        return std::nullopt;
    }
    if (row < 0 || row >= list.model()->rowCount()) {
        ctx.err << "No book at index " << row << " (" << list.header() << ")" << Qt::endl;
        *status = 1;
        return std::nullopt;
    }
    return row;
}

int bookDelete(Context &ctx, QStringList &args)
{
    const QString usage = QStringLiteral("book delete ") + kListOptions + QStringLiteral(" --index N");
    ListStyleTableViewController list(ctx.app);
    int status = 0;
    const auto row = selectedRow(ctx, args, list, usage, &status);
    if (!row)
        return status;
    if (!args.isEmpty())
        return usageError(ctx, usage);
    const QStringList labels = list.model()->labels(*row);
    const int failedBefore = ctx.app->persistentContainer().failedWrites();
    list.deleteRow(*row);
    if (refusedByStore(ctx, failedBefore, QStringLiteral("Not deleted: ") + labels.value(0)))
        return 1;
    ctx.out << "Deleted:\n" << printable(labels.join(u'\n'), LineBreaks::Keep) << Qt::endl;
    return 0;
}

// Taps the row in the list, which opens the detail screen over that book.
int openDetail(Context &ctx, QStringList &args, const QString &usage, DetailViewController &detail)
{
    ListStyleTableViewController list(ctx.app);
    int status = 0;
    const auto row = selectedRow(ctx, args, list, usage, &status);
    if (!row)
        return status;
    list.selectRow(*row);
    detail.viewDidLoad();
    return 0;
}

int bookShow(Context &ctx, QStringList &args)
{
    const QString usage = QStringLiteral("book show ") + kListOptions + QStringLiteral(" --index N");
    DetailViewController detail(ctx.app);
    if (const int status = openDetail(ctx, args, usage, detail))
        return status;
    if (!args.isEmpty())
        return usageError(ctx, usage);
    ctx.out << printable(detail.shareText(), LineBreaks::Keep);
    return 0;
}

int bookEdit(Context &ctx, QStringList &args)
{
    const QString usage = QStringLiteral("book edit ") + kListOptions + QStringLiteral(" --index N ") + kFieldUsage;
    DetailViewController detail(ctx.app);
    AlertLog alerts(detail, ctx.err);
    if (const int status = openDetail(ctx, args, usage, detail))
        return status;
    if (const int refused = typeFields(ctx, args, detail))
        return refused;
    if (!args.isEmpty())
        return usageError(ctx, usage);
    const int failedBefore = ctx.app->persistentContainer().failedWrites();
    const QString notSaved = QStringLiteral("Not saved: the changes to the book");
    if (!detail.UpdateBook()) {
        if (const int status = refusedByStore(ctx, failedBefore, notSaved))
            return status;
        if (!alerts.count())
            ctx.err << "The book was not saved" << Qt::endl;
        return 1;
    }
    if (const int status = refusedByStore(ctx, failedBefore, notSaved))
        return status;
    ctx.out << printable(detail.shareText(), LineBreaks::Keep);
    return 0;
}

int book(Context &ctx)
{
    QStringList args = ctx.args;
    const QString sub = args.isEmpty() ? QString() : args.takeFirst();
    if (sub == QLatin1String("add"))
        return bookAdd(ctx, args);
    if (sub == QLatin1String("delete"))
        return bookDelete(ctx, args);
    if (sub == QLatin1String("show"))
        return bookShow(ctx, args);
    if (sub == QLatin1String("edit"))
        return bookEdit(ctx, args);
    return usageError(ctx, QStringLiteral("book add|show|edit|delete ..."));
}

const Registration r1({QStringLiteral("book"), QStringLiteral("book add|show|edit|delete ..."),
                       QStringLiteral("Save a book as the Add Book form does (--lookup fills it by ISBN first); show, "
                                      "edit or delete one picked as the list shows it.\n\n  ")
                           + kAddUsage + QStringLiteral("\n  book show ") + kListOptions
                           + QStringLiteral(" --index N\n  book edit ") + kListOptions + QStringLiteral(" --index N ")
                           + kFieldUsage + QStringLiteral("\n  book delete ") + kListOptions
                           + QStringLiteral(" --index N\n\n--date takes the form's own text (\"Mar 4, 2021\") or "
                                            "YYYY-MM-DD, which is entered as the date picker would."),
                       true, book});
const Registration r2({QStringLiteral("books"),
                       QStringLiteral("books [--sort ..] [--asc|--desc] [--search ..] [--json] | books --mode az|pictures|grid "
                                      "[--search ..]"),
                       QStringLiteral("The book list's cards in one of its six orders, filtered by its search; with "
                                      "--mode, the A-Z list (\"[E]\" opens a section), the picture list or the grid "
                                      "as title<TAB>author lines."),
                       true,
                       books});

} // namespace
} // namespace tomewise::cli
