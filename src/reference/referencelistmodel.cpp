#include "referencelistmodel.h"

namespace tomewise {

ReferenceListModel::ReferenceListModel(const char *attribute, QObject *parent)
    : QAbstractListModel(parent)
    , m_attribute(attribute)
{
}

int ReferenceListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_entries.size());
}

QVariant ReferenceListModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    if (role != Qt::DisplayRole && role != Qt::UserRole)
        return {};
    const Text &value = m_entries.at(index.row()).value;
    return value ? QVariant(*value) : QVariant();
}

QHash<int, QByteArray> ReferenceListModel::roleNames() const
{
    return {{Qt::UserRole, m_attribute}};
}

void ReferenceListModel::reset(const QList<ReferenceEntry> &entries)
{
    beginResetModel();
    m_entries = entries;
    endResetModel();
}

void ReferenceListModel::removeRowAt(int row)
{
    if (row < 0 || row >= m_entries.size())
        return;
    beginRemoveRows({}, row, row);
    m_entries.removeAt(row);
    endRemoveRows();
}

} // namespace tomewise
