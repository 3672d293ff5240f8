#include "groupsummarymodel.h"

#include <limits>

namespace tomewise {

void GroupSummaryModel::setRows(const QStringList &values)
{
    beginResetModel();
    m_values = values;
    endResetModel();
    Q_EMIT countChanged();
}

void GroupSummaryModel::setCounts(QHash<QString, qint64> counts)
{
    m_counts = std::move(counts);
    countsChanged();
}

void GroupSummaryModel::forgetCounts()
{
    m_counts.clear();
    countsChanged();
}

void GroupSummaryModel::countsChanged()
{
    if (!m_values.isEmpty())
        Q_EMIT dataChanged(index(0), index(int(m_values.size()) - 1), {CountRole});
}

qint16 GroupSummaryModel::countOf(const QString &value) const
{
    auto it = m_counts.constFind(value);
    if (it == m_counts.constEnd()) {
        const auto counted = m_counter ? m_counter(value) : std::nullopt;
        it = m_counts.insert(value, counted.value_or(0));
    }
    const qint64 n = *it;
    if (n < std::numeric_limits<qint16>::min() || n > std::numeric_limits<qint16>::max())
        qFatal("The count of %s (%lld) does not fit 16 bits", qPrintable(value), static_cast<long long>(n));
    return qint16(n);
}

int GroupSummaryModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_values.size());
}

QVariant GroupSummaryModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const QString &value = m_values.at(index.row());
    if (role == ValueRole || role == Qt::DisplayRole)
        return value;
    if (role == CountRole)
        return int(countOf(value));
    return {};
}

QHash<int, QByteArray> GroupSummaryModel::roleNames() const
{
    return {{ValueRole, "value"}, {CountRole, "count"}};
}

} // namespace tomewise
