#pragma once

#include "model/fetchrequest.h"

#include <QFuture>
#include <QHash>
#include <QString>
#include <QStringList>

#include <memory>
#include <optional>
#include <string>
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
        std::vector<int> sections; // one per key, an index into names
        QStringList names;         // the letters in list order
    };
    std::optional<Sectioned> titleOrder(const TitleCollation &collation, QString *error = nullptr);

    // The keys (ascending) of the books one of whose attributes contains the
    // text, both lower-cased. "dateRead" compares the date as yyyy-MM-dd in
    // the device's time zone.
    std::optional<std::vector<qint64>> matching(const QStringList &attributes, const QString &text,
                                                const DateText &dates, QString *error = nullptr);

    // Starts reading, off this thread, what a search over the attributes
    // compares, so that the first keystroke finds it read.
    void prepareSearch(const QStringList &attributes);
    // The store's state: unchanged while no row was written, here or by another connection.
    std::pair<qint64, qint64> changeMark();
    // A book this list deleted (the store's mark just before): the texts held stay good without it.
    void forgetKey(qint64 key, std::pair<qint64, qint64> markBefore);

    // The indexes the lists' orders read from; made once per store.
    static bool prepareIndexes(BookStore &store, QString *error = nullptr);

    // The searched attributes of every book, lower-cased, one after another:
    // a keystroke scans this rather than every row of the store.
    struct Folded
    {
        QStringList columns;
        std::pair<qint64, qint64> mark{-1, -1};
        std::vector<qint64> keys;    // -1 for a book deleted since
        std::vector<quint32> starts; // where each book's text starts
        std::string text;            // UTF-8, each attribute ended by a zero byte
    };

private:
    std::optional<std::vector<qint64>> matchingDates(const QString &needle, const DateText &dates, QString *error);
    bool loadFolded(const QStringList &columns, QString *error);

    BookStore &m_store;
    bool m_indexed = false;
    QHash<qint64, QString> m_dayTexts; // dateRead -> yyyy-MM-dd, formatted once
    Folded m_folded;
    QFuture<std::shared_ptr<Folded>> m_pending;
};

} // namespace tomewise
