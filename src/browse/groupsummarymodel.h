#pragma once

#include <QAbstractListModel>
#include <QHash>
#include <QStringList>

namespace tomewise {

// A summary's rows: the shown value texts and each one's book count.
class GroupSummaryModel : public QAbstractListModel
{
    Q_OBJECT
    Q_PROPERTY(int count READ rowCount NOTIFY countChanged)

public:
    enum Role { ValueRole = Qt::UserRole + 1, CountRole };

    using QAbstractListModel::QAbstractListModel;

    void setRows(const QStringList &values);
    // New counts for the same rows; a value no book carries any more shows 0.
    void setCounts(QHash<QString, qint64> counts);
    // A row's count as shown: a count that does not fit 16 bits is fatal.
    qint16 countOf(const QString &value) const;
    const QStringList &rows() const { return m_values; }

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void countChanged();

private:
    QStringList m_values;
    QHash<QString, qint64> m_counts;
};

} // namespace tomewise
