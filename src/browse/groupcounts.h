#pragma once

#include "browse/groupkind.h"

#include <QDateTime>
#include <QHash>
#include <QSqlQuery>
#include <QString>

#include <limits>
#include <optional>

namespace tomewise {

class BookStore;
class DateText;

struct GroupValueCount
{
    QString value;
    qint64 count = 0;
};

// The summaries' numbers straight from the store: each kind's distinct values
// with their book counts in one grouped statement over the kind's index
// (year read: one range count per year that has books), so that no row costs
// a fetch and no cover is read.
class GroupCounts
{
public:
    GroupCounts(BookStore &store, const DateText &dates);

    // The distinct non-empty values and their counts, in no particular order.
    std::optional<QList<GroupValueCount>> values(const GroupKindInfo &kind, QString *error = nullptr);
    // The count of one row as the kind's count predicate gives it; year read
    // reads the year from the text and logs why a text yields 0.
    std::optional<qint64> count(const GroupKindInfo &kind, const QString &value, QString *error = nullptr);
    // The first and the last second of a year of the current era in the
    // locale's calendar and the device's zone.
    std::optional<std::pair<QDateTime, QDateTime>> yearRange(int year) const;
    bool hasCover(qint64 pk);

private:
    std::optional<QList<GroupValueCount>> yearReadValues(const GroupKindInfo &kind, QString *error);
    QSqlQuery *run(const QString &sql, const QVariantList &binds, QString *error);

    BookStore &m_store;
    const DateText &m_dates;
    QHash<QString, QSqlQuery> m_statements;
};

} // namespace tomewise
