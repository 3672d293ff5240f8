#pragma once

#include "model/books.h"

#include <QList>
#include <QStringList>

namespace tomewise {

class AppDelegate;

// The main menu's start-up work over the store.
namespace LaunchTasks {

const QStringList &starterGenres();
const QStringList &starterRatings();

// Inserts the starter genres, then the starter ratings, each saved on its own.
void seedReferenceLists(AppDelegate &app);

struct RepairCounts
{
    int books = 0;      // books walked
    int repaired = 0;   // uniquely identified books given their dateRead again
    int covers = 0;     // covers re-encoded
};

// Rebuilds dateRead from year/month/day for every book that is the only one
// with its title and author, and re-encodes its cover at quality 0.05. A book
// without a title or author is left alone and named in the log; a day the
// calendar cannot form is fatal.
RepairCounts repairDates(AppDelegate &app, const QList<Books> &bookList);

// The cover re-encoded as JPEG at the given quality (0..1); nothing when the
// bytes are not an image.
std::optional<QByteArray> reencodeJpeg(const QByteArray &bytes, double quality);

} // namespace LaunchTasks
} // namespace tomewise
