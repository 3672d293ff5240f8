#pragma once

#include "model/fetchrequest.h"

#include <QString>
#include <QStringView>

#include <array>
#include <optional>

namespace tomewise {

struct BooksAttribute;

enum class GroupKind { Author, Format, Genre, Rating, Series, YearPublished, YearRead };

// Where a summary keeps the value the user tapped, and where its breakdown
// reads it back: a field of currentBook, selectedFormat, or selectedReadYear
// (whose summary also writes the year text into currentBook's `dt`).
enum class GroupValueSlot { CurrentBookText, CurrentBookYear, SelectedFormat, SelectedReadYear };

// When a summary header uses its singular word, given N values (and M shown
// while searching).
enum class Singular { Never, WhenZero, WhenOne, WhenOneOrNoValues };

struct GroupHeaderRule
{
    const char *prefix;
    const char *plural;
    const char *singular;
    Singular idle;            // applied to N
    bool searchShowsShown;    // searching shows M, else still N
    Singular searching;       // applied to the number shown while searching
};

// One choice of a breakdown's "Sort by" menu.
struct GroupSortAction
{
    const char *title;
    const char *sortName;
    const char *key;
};

// One label of a breakdown row: the cell outlet and its text, where
// "{attribute}" is the attribute's text (integers in decimal, 0 when unset)
// and "{dateRead}" the long-style date.
struct GroupRowLabel
{
    const char *outlet;
    const char *text;
};

// Everything the seven groupings do differently, summary and breakdown side
// by side; the controllers, models and pages are written once over it.
struct GroupKindInfo
{
    GroupKind kind;
    const char *name;          // command-line name
    const char *tabTitle;

    // The summary
    const char *summaryScreen;
    const char *summaryTarget;
    const char *summaryCell;
    std::array<const char *, 2> summaryLabels; // value label, count label
    const char *attribute;     // grouped; year read groups the "yyyy" text of dateRead
    const char *fetchSortKey;
    const char *fetchPredicate; // null: every book
    const char *countPredicate;
    const char *summaryPlaceholder;
    GroupHeaderRule header;
    GroupValueSlot slot;
    const char *slotField;     // the currentBook field, for the CurrentBook slots
    bool chart;                // bars; else a timeline of years

    // The breakdown
    const char *breakdownScreen;
    const char *breakdownTarget;
    const char *breakdownCell;
    const char *breakdownTitle;
    int rowHeight;
    std::array<GroupRowLabel, 6> labels; // a null outlet ends the list
    const char *pictureOutlet;
    std::array<GroupSortAction, 4> sortActions;
    const char *breakdownPredicate;
    const char *breakdownPlaceholder;
    const char *callingScreen;
    const char *unwindName;

    // The PDF list of books and the printed report of the group
    const char *pdfFileName;
    const char *pdfTitle;
    const char *reportPredicate;
    std::array<const char *, 2> reportSortKeys;
};

inline constexpr int kSummaryRowHeight = 45;
inline constexpr auto kSummaryCountLabel = "CountLabel";
inline constexpr auto kBreakdownHeader = "# of Books: ";

inline constexpr GroupSortAction kByDateRead{"By Date Read", "DateRead", "dateRead"};
inline constexpr GroupSortAction kByBookName{"By Book Name", "BookName", "name"};
inline constexpr GroupSortAction kByAuthor{"By Author", "Author", "author"};
inline constexpr GroupSortAction kByGenre{"By Genre", "Genre", "category"};
inline constexpr GroupSortAction kByRating{"By Rating", "Rating", "rating"};
inline constexpr GroupSortAction kBySeriesNumber{"By Series #", "Series #", "seriesNumber"};

inline constexpr std::array<GroupKindInfo, 7> kGroupKinds{{
    {GroupKind::Author, "author", "Author",
     "AuthorGroupTableViewController", "AuthorGroup", "AuthorGroupTableViewCell", {"AuthorNameLabel", kSummaryCountLabel},
     "author", "author", nullptr, "author = %@", "Sort and Search By Author",
     {"", " Authors", " Author", Singular::WhenOne, true, Singular::Never},
     GroupValueSlot::CurrentBookText, "author", true,
     "AuthorBreakdownTableViewController", "AuthorBreakdown", "AuthorBreakdownTableViewCell", "Author", 120,
     {{{"BookNameLabel", "Name: {name}"}, {"AuthorLabel", "Author: {author}"}, {"GenreLabel", "Genre: {category}"},
       {"RatingLabel", "Rating: {rating}"}, {"NotesLabel", "Date Read: {dateRead}"}, {}}},
     "BookImage", {kByDateRead, kByBookName, kByGenre, kByRating},
     "author = %@", "Search By Book Name", "AuthorBreakdown", "unwindToAuthorTableView",
     nullptr, nullptr, nullptr, {}},
    {GroupKind::Format, "format", "Format",
     "FormatGroupTableViewController", "FormatGroup", "FormatGroupTableViewCell", {"FormatLabel", kSummaryCountLabel},
     "bookFormat", "bookFormat", nullptr, "bookFormat = %@", "Sort and Search By Format Name",
     {"", " Formats", " Format", Singular::WhenZero, false, Singular::WhenZero},
     GroupValueSlot::SelectedFormat, nullptr, true,
     "FormatBreakdownTableViewController", "FormatBreakdown", "FormatBreakdownTableViewCell", "Format", 135,
     {{{"BookNameLabel", "Name: {name}"}, {"AuthorLabel", "Author: {author}"}, {"GenreLabel", "Genre: {category}"},
       {"RatingLabel", "DateRead: {dateRead}"}, {"SeriesLabel", "Rating: {rating}"}, {"NotesLabel", "Notes: {notes}"}}},
     "BookImage", {kByDateRead, kByBookName, kByRating, kByGenre},
     "bookFormat == %@", "Sort and Search By Book Name", "FormatBreakdown", "unwindToFormatTableView",
     nullptr, nullptr, nullptr, {}},
    {GroupKind::Genre, "genre", "Genre",
     "GenreGroupTableViewController", "GenreGroup", "GenreGroupTableViewCell", {"GenreNameLabel", kSummaryCountLabel},
     "category", "author", nullptr, "category = %@", "Sort and Search By Genre",
     {"# of Genre's: ", "", "", Singular::Never, true, Singular::Never},
     GroupValueSlot::CurrentBookText, "category", true,
     "GenreBreakdownTableViewController", "GenreBreakdown", "GenreBreakdownTableViewCell", "Genre", 120,
     {{{"BookNameLabel", "Name: {name}"}, {"AuthorLabel", "Author: {author}"}, {"GenreLabel", "Genre: {category}"},
       {"RatingLabel", "Rating: {rating}"}, {"NotesLabel", "Notes: {notes}"}, {}}},
     "BookImage", {kByDateRead, kByBookName, kByAuthor, kByRating},
     "category == %@", "Search By Book Name", "GenreBreakdown", "unwindToGenreTableView",
     nullptr, nullptr, nullptr, {}},
    {GroupKind::Rating, "rating", "Rating",
     "RatingGroupTableViewController", "RatingGroup", "RatingTableViewCell", {"RatingLabel", kSummaryCountLabel},
     "rating", "rating", nullptr, "rating = %@", "Sort and Search By Rating",
     {"", " Ratings", " Rating", Singular::WhenZero, false, Singular::WhenZero},
     GroupValueSlot::CurrentBookText, "rating", true,
     "RatingBreakdownTableViewController", "RatingBreakdown", "RatingBreakdownTableViewCell", "Ratings", 120,
     {{{"BookNameLabel", "Name: {name}"}, {"AuthorLabel", "Author: {author}"}, {"GenreLabel", "Genre: {category}"},
       {"RatingLabel", "Rating: {rating}"}, {"NotesLabel", "Notes: {notes}"}, {}}},
     "BookImage", {kByDateRead, kByBookName, kByAuthor, kByGenre},
     "rating = %@", "Search By Book Name", "RatingBreakdown", "unwindToRatingTableView",
     nullptr, nullptr, nullptr, {}},
    // The series summary counts in the rating words; kept.
    {GroupKind::Series, "series", "Series",
     "SeriesGroupTableViewController", "SeriesGroup", "SeriesTableViewCell", {"SeriesLabel", kSummaryCountLabel},
     "series", "name", nullptr, "series = %@", "Sort and Search By Series Name",
     {"", " Ratings", " Rating", Singular::WhenZero, false, Singular::WhenZero},
     GroupValueSlot::CurrentBookText, "series", true,
     "SeriesBreakdownTableViewController", "SeriesBreakdown", "SeriesBreakdownTableViewCell", "Series", 135,
     {{{"BookNameLabel", "Name: {name}"}, {"AuthorLabel", "Author: {author}"}, {"GenreLabel", "Genre: {category}"},
       {"RatingLabel", "Series: {series}"}, {"SeriesLabel", "Series #: {seriesNumber}"}, {"NotesLabel", "Notes: {notes}"}}},
     "BookImage", {kByDateRead, kByBookName, kByRating, kBySeriesNumber},
     "series = %@", "Sort and Search By Book Name", "SeriesBreakdown", "unwindToSeriesTableView",
     nullptr, nullptr, nullptr, {}},
    // The year-published cell's outlets and its `year` label are kept as named.
    {GroupKind::YearPublished, "year-published", "Year Published",
     "YearGroupTableViewController", "YearGroup", "YearTableViewCell", {"YearLabel", kSummaryCountLabel},
     "publishDate", "publishDate", "publishDate > %@", "publishDate = %@", "Sort and Search By Year",
     {"", " Year's Published", " Year Published", Singular::WhenZero, true, Singular::WhenOneOrNoValues},
     GroupValueSlot::CurrentBookYear, "publishDate", false,
     "YearBreakdownTableViewController", "YearBreakdown", "YearBreakdownTableViewCell", "Years Published", 120,
     {{{"BrandLabel", "Name: {name}"}, {"ValueLabel", "Author: {author}"},
       {"PlayerNameLabel", "# Pages: {numberPages}  Year Published: {year}"}, {"RatingLabel", "Rating: {rating}"},
       {"NotesLabel", "Notes: {notes}"}, {}}},
     "CardImage", {kByDateRead, kByBookName, kByAuthor, kByRating},
     "publishDate == %@", "Search By Book Name", "YearBreakdown", "unwindToYearTableView",
     nullptr, nullptr, nullptr, {}},
    {GroupKind::YearRead, "year-read", "Year Read",
     "DateReadTableViewController", "DateReadGroup", "YearReadTableViewCell", {"YearLabel", kSummaryCountLabel},
     "dateRead", "dateRead", nullptr, "dateRead >= %@ AND dateRead <= %@", "Sort and Search By Year Read",
     {"", " Year's Read", " Year Read", Singular::Never, true, Singular::WhenOne},
     GroupValueSlot::SelectedReadYear, "dt", false,
     "DateReadGroupTableViewController", "DateReadBreakdown", "YearReadBreakdownTableViewCell", "Date Read", 120,
     {{{"BookNameLabel", "Name: {name}"}, {"AuthorLabel", "Author: {author}"},
       {"NumberPagesLabel", "# Pages: {numberPages}  Date Read: {dateRead}"}, {"RatingLabel", "Rating: {rating}"},
       {"NotesLabel", "Notes: {notes}"}, {}}},
     "BookImage", {kByDateRead, kByBookName, kByAuthor, kByRating},
     "dateRead >= %@ AND dateRead <= %@", "Search By Book Name", "YearBreakdown", "unwindToDateReadTableView",
     nullptr, nullptr, nullptr, {}},
}};

constexpr const GroupKindInfo &groupKind(GroupKind kind)
{
    return kGroupKinds[static_cast<std::size_t>(kind)];
}

static_assert(groupKind(GroupKind::Author).kind == GroupKind::Author);
static_assert(groupKind(GroupKind::Format).kind == GroupKind::Format);
static_assert(groupKind(GroupKind::Genre).kind == GroupKind::Genre);
static_assert(groupKind(GroupKind::Rating).kind == GroupKind::Rating);
static_assert(groupKind(GroupKind::Series).kind == GroupKind::Series);
static_assert(groupKind(GroupKind::YearPublished).kind == GroupKind::YearPublished);
static_assert(groupKind(GroupKind::YearRead).kind == GroupKind::YearRead);

// The kind of a command-line name ("year-read"), of a summary or breakdown
// navigation target, or nothing.
std::optional<GroupKind> groupKindNamed(QStringView name);
std::optional<GroupKind> groupKindOfTarget(QStringView target);

// The Books attribute a table entry names.
const BooksAttribute &groupAttribute(const char *name);

// A summary's section header for N values, M of them shown while searching.
QString groupHeader(const GroupHeaderRule &rule, qsizetype values, qsizetype shown, bool searching);

// The store predicates of a format such as "rating = %@" or
// "dateRead >= %@ AND dateRead <= %@", one argument per "%@" in order;
// integer attributes take their argument as a number.
QList<Predicate> groupPredicates(const char *format, const QVariantList &arguments);

} // namespace tomewise
