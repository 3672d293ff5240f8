#include "liststylemodel.h"

#include "app/datetext.h"
#include "browse/labeltemplate.h"

namespace tomewise {

ListStyleModel::ListStyleModel(QObject *parent)
    : BookWindowModel(parent)
{
}

void ListStyleModel::setOption(const ListStyleSortOption &option, const DateText &dates)
{
    m_option = &option;
    if (m_dates != &dates)
        m_dayTexts.clear();
    m_dates = &dates;
}

QString ListStyleModel::dateMedium(const Books &book) const
{
    if (!book.dateRead || !m_dates)
        return book.dt.value_or(QString());
    // Books read on one day share their instant, so each day is formatted once.
    const qint64 key = book.dateRead->toSecsSinceEpoch();
    auto it = m_dayTexts.constFind(key);
    if (it == m_dayTexts.constEnd())
        it = m_dayTexts.insert(key, m_dates->format(*book.dateRead, DateText::Style::Medium));
    return *it;
}

QString ListStyleModel::fill(const char *pattern, const Books &book) const
{
    return fillLabel(pattern, book, [&] { return dateMedium(book); });
}

QString ListStyleModel::label(int row, int slot) const
{
    return fill(m_option->labels[size_t(slot)], heldBook(row));
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
    if (role < LabelRole)
        return BookWindowModel::data(index, role);
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const Books &b = heldBook(index.row());
    if (role < AttributeRole)
        return fill(m_option->labels[size_t(role - LabelRole)], b);
    const auto attributes = booksAttributes();
    if (role < AttributeRole + int(attributes.size())) {
        const auto &a = attributes[size_t(role - AttributeRole)];
        if (a.type() == AttributeType::Binary)
            return {};
        return attributeValue(b, a);
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

} // namespace tomewise
