#include "liststylemodel.h"

#include "app/datetext.h"
#include "browse/labeltemplate.h"

#include <QHash>

namespace tomewise {

ListStyleModel::ListStyleModel(QObject *parent)
    : QAbstractListModel(parent)
{
}

void ListStyleModel::setBooks(QList<Books> books, const ListStyleSortOption &option, const DateText &dates,
                              QSet<qint64> coverKeys)
{
    beginResetModel();
    m_option = &option;
    m_books.clear();
    m_books.reserve(books.size());
    const bool byDate = QLatin1String(option.comparedAttribute) == QLatin1String("dateRead");
    const BooksAttribute *compared = booksAttribute(QString::fromLatin1(option.comparedAttribute));
    // Books read on one day share their instant, so each day is formatted once.
    QHash<qint64, std::pair<QString, QString>> dayTexts;
    for (auto &b : books) {
        Row row;
        row.hasCover = coverKeys.contains(b.pk);
        if (b.dateRead) {
            const qint64 key = b.dateRead->toSecsSinceEpoch();
            auto it = dayTexts.find(key);
            if (it == dayTexts.end()) {
                it = dayTexts.insert(key, {dates.format(*b.dateRead, DateText::Style::Medium),
                                           dates.formatPattern(*b.dateRead, QStringLiteral("yyyy-MM-dd"))});
            }
            row.dateMedium = it->first;
            if (byDate)
                row.searchKey = it->second;
        } else {
            row.dateMedium = b.dt.value_or(QString());
        }
        if (!byDate && compared)
            row.searchKey = attributeValue(b, *compared).toString().toLower();
        row.book = std::move(b);
        m_books.push_back(std::move(row));
    }
    m_all.resize(qsizetype(m_books.size()));
    for (int i = 0; i < int(m_books.size()); ++i)
        m_all[i] = i;
    m_filtered = m_all;
    m_searching = false;
    endResetModel();
    Q_EMIT countChanged();
}

void ListStyleModel::refilter(const QString &text)
{
    beginResetModel();
    m_searching = !text.isEmpty();
    if (!m_searching) {
        m_filtered = m_all;
    } else {
        const QString needle = text.toLower();
        m_filtered.clear();
        for (int i : m_all) {
            if (m_books[size_t(i)].searchKey.contains(needle))
                m_filtered.append(i);
        }
    }
    endResetModel();
    Q_EMIT countChanged();
}

int ListStyleModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_searching ? m_filtered.size() : m_all.size());
}

const Books &ListStyleModel::book(int row) const
{
    return m_books[size_t((m_searching ? m_filtered : m_all).at(row))].book;
}

QString ListStyleModel::expand(const char *pattern, const Row &row) const
{
    return fillLabel(pattern, row.book, [&row] { return row.dateMedium; });
}

QString ListStyleModel::label(int row, int slot) const
{
    const int index = (m_searching ? m_filtered : m_all).at(row);
    return expand(m_option->labels[size_t(slot)], m_books[size_t(index)]);
}

QStringList ListStyleModel::labels(int row) const
{
    QStringList list;
    for (int slot = 0; slot < int(m_option->labels.size()); ++slot)
        list << label(row, slot);
    return list;
}

QVariant ListStyleModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const int row = index.row();
    const Row &r = m_books[size_t((m_searching ? m_filtered : m_all).at(row))];
    if (role == PkRole)
        return r.book.pk;
    if (role == CoverSourceRole)
        return r.hasCover ? QStringLiteral("image://cover/%1/%2").arg(r.book.pk).arg(m_coverRevision) : QString();
    if (role >= LabelRole && role < AttributeRole)
        return expand(m_option->labels[size_t(role - LabelRole)], r);
    const auto attributes = booksAttributes();
    if (role >= AttributeRole && role < AttributeRole + int(attributes.size())) {
        const auto &a = attributes[size_t(role - AttributeRole)];
        if (a.type() == AttributeType::Binary)
            return {};
        return attributeValue(r.book, a);
    }
    return {};
}

QHash<int, QByteArray> ListStyleModel::roleNames() const
{
    QHash<int, QByteArray> names{{PkRole, "pk"}, {CoverSourceRole, "coverSource"}};
    for (int slot = 0; slot < int(kListStyleLabelNames.size()); ++slot)
        names.insert(LabelRole + slot, kListStyleLabelNames[size_t(slot)]);
    const auto attributes = booksAttributes();
    for (int i = 0; i < int(attributes.size()); ++i)
        names.insert(AttributeRole + i, attributes[size_t(i)].name);
    return names;
}

void ListStyleModel::removeShownRow(int row)
{
    QList<int> &list = m_searching ? m_filtered : m_all;
    if (row < 0 || row >= list.size())
        return;
    beginRemoveRows({}, row, row);
    list.removeAt(row);
    endRemoveRows();
    Q_EMIT countChanged();
}

} // namespace tomewise
