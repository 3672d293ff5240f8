#pragma once

#include <QAbstractListModel>
#include <QHash>
#include <QStringList>

#include <functional>
#include <optional>

namespace tomewise {

// A summary's rows: the shown value texts and each one's book count. A count
// is asked of the store when its row is shown and kept until the counts are
// forgotten; the summary hands in all of them at once when it has them.
class GroupSummaryModel : public QAbstractListModel
{
    Q_OBJECT
    Q_PROPERTY(int count READ rowCount NOTIFY countChanged)

public:
    enum Role { ValueRole = Qt::UserRole + 1, CountRole };
    using Counter = std::function<std::optional<qint64>(const QString &)>;

    using QAbstractListModel::QAbstractListModel;

    void setCounter(Counter counter) { m_counter = std::move(counter); }
    void setRows(const QStringList &values);
    void setCounts(QHash<QString, qint64> counts);
    // The rows are shown again: each count is asked afresh.
    void forgetCounts();
    // A row's count as shown: a count that does not fit 16 bits is fatal.
    qint16 countOf(const QString &value) const;
    const QStringList &rows() const { return m_values; }

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void countChanged();

private:
    void countsChanged();

    QStringList m_values;
    Counter m_counter;
    mutable QHash<QString, qint64> m_counts;
};

} // namespace tomewise
