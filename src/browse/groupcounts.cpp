#include "groupcounts.h"

#include "app/datetext.h"
#include "app/log.h"
#include "model/bookstore.h"

#include <QSet>
#include <QSqlError>

#include <algorithm>

namespace tomewise {

GroupCounts::GroupCounts(BookStore &store, const DateText &dates)
    : m_store(store)
    , m_dates(dates)
{
}

QSqlQuery *GroupCounts::run(const QString &sql, const QVariantList &binds, QString *error)
{
    auto it = m_statements.find(sql);
    if (it == m_statements.end()) {
        QSqlQuery q(m_store.database());
        q.setForwardOnly(true);
        if (!q.prepare(sql)) {
            if (error)
                *error = q.lastError().text();
            return nullptr;
        }
        it = m_statements.insert(sql, q);
    }
    QSqlQuery &q = *it;
    for (int i = 0; i < binds.size(); ++i)
        q.bindValue(i, binds.at(i));
    if (!q.exec()) {
        if (error)
            *error = q.lastError().text();
        return nullptr;
    }
    return &q;
}

std::optional<QList<GroupValueCount>> GroupCounts::values(const GroupKindInfo &kind, QString *error)
{
    if (kind.kind == GroupKind::YearRead)
        return yearReadValues(kind, error);
    const QString attribute = QLatin1String(kind.attribute);
    QString sql = QStringLiteral("SELECT %1, COUNT(*) FROM Books WHERE %1 IS NOT NULL").arg(attribute);
    QVariantList binds;
    if (kind.fetchPredicate) {
        // Only the year published filters, and only by "publishDate > 0".
        for (const auto &p : groupPredicates(kind.fetchPredicate, {QStringLiteral("0")})) {
            Q_ASSERT(p.op == Predicate::Op::Greater);
            sql += QStringLiteral(" AND %1 > ?").arg(p.attribute);
            binds << p.value;
        }
    } else {
        sql += QStringLiteral(" AND %1 <> ''").arg(attribute);
    }
    sql += QStringLiteral(" GROUP BY %1 ORDER BY %1").arg(attribute);
    QSqlQuery *q = run(sql, binds, error);
    if (!q)
        return std::nullopt;
    QList<GroupValueCount> list;
    while (q->next())
        list.append({q->value(0).toString(), q->value(1).toLongLong()});
    q->finish();
    return list;
}

std::optional<QList<GroupValueCount>> GroupCounts::yearReadValues(const GroupKindInfo &kind, QString *error)
{
    // Walks from year to year that has a book, so a sparse century costs a
    // few look-ups, not one per year.
    const QString first = QStringLiteral("SELECT MIN(dateRead) FROM Books WHERE dateRead > ?");
    QList<GroupValueCount> list;
    QSet<QString> seen;
    qint64 after = std::numeric_limits<qint64>::min();
    for (;;) {
        QSqlQuery *q = run(first, {after}, error);
        if (!q || !q->next())
            return std::nullopt;
        const QVariant next = q->value(0);
        q->finish();
        if (next.isNull())
            break;
        const QDateTime instant = QDateTime::fromSecsSinceEpoch(next.toLongLong());
        // The text is the year of its era, so 1 BC and AD 1 both read "0001":
        // one row, as the summary keeps each text once.
        const QString text = m_dates.formatPattern(instant, QStringLiteral("yyyy"));
        if (!seen.contains(text)) {
            seen.insert(text);
            const auto n = count(kind, text, error);
            if (!n)
                return std::nullopt;
            list.append({text, *n});
        }
        // A year whose bounds cannot be formed still shows (with 0): step past
        // this one book and go on.
        const auto range = m_dates.localYearSpan(m_dates.localYear(instant), true);
        after = range ? std::max(range->second.toSecsSinceEpoch(), next.toLongLong()) : next.toLongLong();
    }
    return list;
}

std::optional<std::pair<QDateTime, QDateTime>> GroupCounts::yearRange(int year) const
{
    return m_dates.localYearSpan(year);
}

std::optional<qint64> GroupCounts::count(const GroupKindInfo &kind, const QString &value, QString *error)
{
    QVariantList arguments{value};
    if (kind.kind == GroupKind::YearRead) {
        bool ok = false;
        const int year = value.toInt(&ok, 10);
        if (!ok) {
            qCInfo(lcBrowse).noquote() << "Invalid year format";
            return 0;
        }
        const auto range = yearRange(year);
        if (!range) {
            qCInfo(lcBrowse).noquote() << "Failed to calculate date range";
            return 0;
        }
        arguments = {range->first, range->second};
    }
    FetchRequest request;
    request.predicates = groupPredicates(kind.countPredicate, arguments);
    const auto n = m_store.count(request, error);
    if (!n)
        return std::nullopt;
    return qint64(*n);
}

bool GroupCounts::hasCover(qint64 pk)
{
    QSqlQuery *q = run(QStringLiteral("SELECT 1 FROM BooksPictureImage WHERE book = ?"), {pk}, nullptr);
    const bool found = q && q->next();
    if (q)
        q->finish();
    return found;
}

} // namespace tomewise
