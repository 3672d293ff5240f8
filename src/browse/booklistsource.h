#pragma once

#include "model/fetchrequest.h"

#include <QHash>
#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace tomewise {

class BookStore;
class DateText;
class TitleCollation;

// The store's side of every book list: the keys of all books in a list's
// order, the keys a search keeps, and the A-Z order under the locale's
// collation. Lists hold keys only and fetch the rows they show.
class BookListSource
{
public:
    explicit BookListSource(BookStore &store);

    // Every book's key, ordered by the sort descriptors, ties in store order.
    std::optional<std::vector<qint64>> keys(const QList<SortDescriptor> &order, QString *error = nullptr);

    // Every book's key by title under the collation, with the index letter of
    // each; the keys are kept in the store and refreshed for changed titles.
    struct Sectioned
    {
        std::vector<qint64> keys;
        QStringList sections; // one per key
    };
    std::optional<Sectioned> titleOrder(const TitleCollation &collation, QString *error = nullptr);

    // The keys (ascending) of the books one of whose attributes contains the
    // text, both lower-cased. "dateRead" compares the date as yyyy-MM-dd in
    // the device's time zone.
    std::optional<std::vector<qint64>> matching(const QStringList &attributes, const QString &text,
                                                const DateText &dates, QString *error = nullptr);

    // Keeps, in order, the keys that are among `found` (ascending).
    static std::vector<qint64> keep(const std::vector<qint64> &keys, const std::vector<qint64> &found);

private:
    std::optional<std::vector<qint64>> matchingDates(const QString &needle, const DateText &dates, QString *error);

    BookStore &m_store;
    QHash<qint64, QString> m_dayTexts; // dateRead -> yyyy-MM-dd, formatted once
};

} // namespace tomewise
