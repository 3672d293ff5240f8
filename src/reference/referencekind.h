#pragma once

#include "model/fetchrequest.h"

#include <array>
#include <string_view>

namespace tomewise {

enum class ReferenceKind { Genre, Rating, Series };

// Which process-wide selected name a tap on a row writes.
enum class SelectedNameSlot { None, Genre, Series };

// What differs between the genre, rating and series lists and their add and
// edit screens; everything else is written once.
struct ReferenceKindInfo
{
    ReferenceKind kind;
    Entity entity;
    const char *attribute;         // the entity's one attribute, also the list's role name
    const char *listTitle;
    const char *addTitle;
    const char *editTitle;
    const char *searchPlaceholder; // nullptr: no search, no sort button, no count
    const char *notEnteredMessage; // the add screen's empty-text alert
    const char *textFieldName;     // the add and edit screens' text field
    const char *unwindName;        // back to the list from its add and edit screens
    const char *showSegue;         // list to edit screen
    bool editGetsEntry;            // the edit screen gets the row's entry (else reads the selected name)
    SelectedNameSlot selectedName; // where a tapped row's name goes
    bool seedsFromBooks;           // an empty list is filled from the books' own names on opening
    const char *listTarget;
    const char *addTarget;
    const char *editTarget;
};

inline constexpr std::array<ReferenceKindInfo, 3> kReferenceKinds{{
    {ReferenceKind::Genre, Entity::GenreList, "genre", "Genre List", "Add Genre", "Edit Genre",
     "Search by Genre", "Genre not Entered", "GenreTextField", "unwindToGenreTableView", "showGenre",
     true, SelectedNameSlot::Genre, false, "GenreReferenceList", "AddGenre", "EditGenre"},
    {ReferenceKind::Rating, Entity::RatingList, "rating", "Rating List", "Add Rating", "Edit Rating",
     "Search by Rating", "Rating not Entered", "RatingTextField", "unwindToRatingTableView", "showRating",
     true, SelectedNameSlot::None, false, "RatingReferenceList", "AddRating", "EditRating"},
    // The series screens say "Rating not Entered" too; the wording is kept.
    {ReferenceKind::Series, Entity::SeriesList, "series", "Series List", "Add Series", "Edit Series",
     nullptr, "Rating not Entered", "SeriesNameTextField", "unwindToSeriesTableView", "showSeries",
     false, SelectedNameSlot::Series, true, "SeriesReferenceList", "AddNewSeries", "EditNewSeries"},
}};

constexpr const ReferenceKindInfo &referenceKind(ReferenceKind kind)
{
    return kReferenceKinds[static_cast<std::size_t>(kind)];
}

static_assert(referenceKind(ReferenceKind::Genre).kind == ReferenceKind::Genre);
static_assert(referenceKind(ReferenceKind::Rating).kind == ReferenceKind::Rating);
static_assert(referenceKind(ReferenceKind::Series).kind == ReferenceKind::Series);

} // namespace tomewise
