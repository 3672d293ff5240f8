#include "groupbreakdownmodel.h"

#include "app/datetext.h"
#include "browse/labeltemplate.h"

#include <algorithm>

namespace tomewise {

GroupBreakdownModel::GroupBreakdownModel(const GroupKindInfo &kind, QObject *parent)
    : QAbstractListModel(parent)
    , m_kind(kind)
{
}

void GroupBreakdownModel::setBookList(QList<Books> books)
{
    if (!m_searching)
        beginResetModel();
    m_all.clear();
    m_all.reserve(books.size());
    for (auto &b : books)
        m_all.append(std::make_shared<Row>(Row{std::move(b)}));
    if (!m_searching) {
        endResetModel();
        Q_EMIT countChanged();
    }
}

void GroupBreakdownModel::setSearchText(const QString &text)
{
    beginResetModel();
    m_searching = !text.isEmpty();
    m_filtered.clear();
    const QString needle = text.toLower();
    for (const auto &row : std::as_const(m_all)) {
        if (!m_searching || row->book.name.value_or(QString()).toLower().contains(needle))
            m_filtered.append(row);
    }
    endResetModel();
    Q_EMIT countChanged();
}

void GroupBreakdownModel::sortShownByName(bool ascending)
{
    for (const auto &row : std::as_const(m_filtered)) {
        if (!row->book.name)
            qFatal("A book without a name cannot be sorted by name");
    }
    beginResetModel();
    std::stable_sort(m_filtered.begin(), m_filtered.end(), [ascending](const auto &a, const auto &b) {
        const int c = QString::compare(*a->book.name, *b->book.name, Qt::CaseSensitive);
        return ascending ? c < 0 : c > 0;
    });
    endResetModel();
}

void GroupBreakdownModel::removeShownRow(int row)
{
    Rows &list = m_searching ? m_filtered : m_all;
    if (row < 0 || row >= list.size())
        return;
    beginRemoveRows({}, row, row);
    list.removeAt(row);
    endRemoveRows();
    Q_EMIT countChanged();
}

const Books &GroupBreakdownModel::book(int row) const
{
    return shown().at(row)->book;
}

QString GroupBreakdownModel::longDate(const Books &book) const
{
    if (!book.dateRead || !m_dates)
        return {};
    const qint64 key = book.dateRead->toSecsSinceEpoch();
    auto it = m_dayTexts.find(key);
    if (it == m_dayTexts.end())
        it = m_dayTexts.insert(key, m_dates->format(*book.dateRead, DateText::Style::Long));
    return *it;
}

QStringList GroupBreakdownModel::labels(int row) const
{
    QStringList list;
    const Books &b = book(row);
    for (const auto &label : m_kind.labels) {
        if (!label.outlet)
            break;
        list << fillLabel(label.text, b, [&] { return longDate(b); });
    }
    return list;
}

int GroupBreakdownModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(shown().size());
}

QVariant GroupBreakdownModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    Row &row = *shown().at(index.row());
    switch (role) {
    case PkRole:
        return row.book.pk;
    case CoverSourceRole:
        if (row.cover < 0)
            row.cover = m_hasCover && m_hasCover(row.book.pk) ? 1 : 0;
        return row.cover ? QStringLiteral("image://cover/%1").arg(row.book.pk) : QString();
    case LabelsRole:
        return labels(index.row());
    default:
        return {};
    }
}

QHash<int, QByteArray> GroupBreakdownModel::roleNames() const
{
    return {{PkRole, "pk"}, {CoverSourceRole, "coverSource"}, {LabelsRole, "labels"}};
}

} // namespace tomewise
