#pragma once

#include "model/bookstore.h"

#include <QAbstractListModel>
#include <QByteArray>

namespace tomewise {

// The rows a reference list shows; the one role is named after the list's
// attribute ("genre", "rating", "series"), an absent name reads as undefined.
class ReferenceListModel : public QAbstractListModel
{
    Q_OBJECT

public:
    explicit ReferenceListModel(const char *attribute, QObject *parent = nullptr);

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QHash<int, QByteArray> roleNames() const override;

    void reset(const QList<ReferenceEntry> &entries);
    void removeRowAt(int row);
    const QList<ReferenceEntry> &entries() const { return m_entries; }

private:
    QByteArray m_attribute;
    QList<ReferenceEntry> m_entries;
};

} // namespace tomewise
