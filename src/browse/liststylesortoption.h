#pragma once

#include <QString>
#include <QStringView>

#include <array>
#include <span>

namespace tomewise {

// One choice of the list-style list's "Sort By" menu: what it is called, how it
// sorts, what the search compares and what each card label shows. Labels are
// templates: "{attribute}" is the attribute's text (integers in decimal, 0 when
// unset), "{attribute|None}" falls back to "None" when the attribute is absent,
// and "{dateRead}" is the medium-style date, or `dt` when there is no date.
struct ListStyleSortOption
{
    const char *actionTitle;
    const char *sortName;
    const char *placeholder;
    std::array<const char *, 2> sortKeys; // the second may be null
    const char *comparedAttribute;        // "dateRead" is compared as yyyy-MM-dd
    std::array<const char *, 6> labels;   // TopLabel, MiddleLabel, BottomLabel, RatingLabel, SeriesLabel, NotesLabel
};

inline constexpr std::array<ListStyleSortOption, 6> kListStyleSortOptions{{
    {"By Date Read", "DateRead", "Sort By Date Read (yyyy-MM-dd)", {"dateRead", nullptr}, "dateRead",
     {"Date Read: {dateRead}", "Book Name: {name}", "Author: {author}  Genre: {category}",
      "Rating: {rating}  Year Published: {publishDate}", "Series: {series|None}", "Notes: {notes}"}},
    {"By Book Name", "BookName", "Sort By Book Name", {"name", nullptr}, "name",
     {"Book Name: {name}", "Author: {author}", "# Pages: {numberPages}  Genre: {category}",
      "Rating: {rating}  Year Published: {publishDate}", "Series: {series|None}", "Notes: {notes}"}},
    {"By Author", "Author", "Sort By Author", {"author", nullptr}, "author",
     {"Author: {author}", "Book Name: {name}", "# Pages: {numberPages}  Genre: {category}",
      "Rating: {rating}  Year Published: {publishDate}", "Series: {series|None}", "Notes: {notes}"}},
    {"By Genre", "Genre", "Sort By Genre", {"category", nullptr}, "category",
     {"Genre: {category}", "Book Name: {name}", "Author: {author}  # Pages= {numberPages}",
      "Rating: {rating}  Year Published: {publishDate}", "Series: {series|None}", "Notes: {notes}"}},
    {"By Rating", "Rating", "Sort By Rating", {"rating", nullptr}, "rating",
     {"Rating: {rating}  Year Published: {publishDate}", "Book Name: {name}", "Author: {author}  Genre: {category}",
      "# Pages: {numberPages}", "Series: {series}", "Notes: {notes}"}},
    {"By Series", "Series", "Sort By Series", {"series", "seriesNumber"}, "series",
     {"Series: {series|None} #{seriesNumber}", "Book Name: {name}", "Author: {author}  Genre: {category}",
      "# Pages: {numberPages}", "Rating: {rating}  Year Published: {publishDate}", "Notes: {notes}"}},
}};

// The placeholder the search shows before any option is chosen.
inline constexpr auto kListStyleLoadPlaceholder = "Search By Date Read (yyyy-MM-dd)";
inline constexpr std::array<const char *, 6> kListStyleLabelNames{
    "TopLabel", "MiddleLabel", "BottomLabel", "RatingLabel", "SeriesLabel", "NotesLabel"};

// The option of a sort name, or null.
const ListStyleSortOption *listStyleSortOption(QStringView sortName);

} // namespace tomewise
