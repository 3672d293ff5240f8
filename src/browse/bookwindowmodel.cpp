#include "bookwindowmodel.h"

#include "app/log.h"
#include "model/bookstore.h"

#include <QSqlQuery>

#include <algorithm>

namespace tomewise {

BookWindowModel::BookWindowModel(QObject *parent)
    : QAbstractListModel(parent)
{
}

void BookWindowModel::setKeys(const std::vector<qint64> &keys, const std::vector<int> &sections,
                              const QStringList &names)
{
    beginResetModel();
    m_all.clear();
    m_all.reserve(keys.size());
    const bool sectioned = sections.size() == keys.size();
    m_sectionNames = sectioned ? names : QStringList();
    for (size_t i = 0; i < keys.size(); ++i)
        m_all.push_back({keys[i], sectioned ? sections[i] : -1});
    m_filtered.clear();
    m_searching = false;
    m_held.clear();
    m_heldOrder.clear();
    m_covers.clear();
    endResetModel();
    Q_EMIT countChanged();
}

void BookWindowModel::showOnly(const std::vector<qint64> &found)
{
    beginResetModel();
    m_filtered.clear();
    // Keys are small counting numbers: a mark per key picks the rows in one pass.
    const qint64 top = found.empty() ? -1 : found.back();
    if (top >= 0 && top <= qint64(m_all.size()) * 4 + 4096) {
        std::vector<bool> marked(size_t(top) + 1);
        for (qint64 k : found) {
            if (k >= 0)
                marked[size_t(k)] = true;
        }
        for (const Entry &e : m_all) {
            if (e.pk >= 0 && e.pk <= top && marked[size_t(e.pk)])
                m_filtered.push_back(e);
        }
    } else {
        for (const Entry &e : m_all) {
            if (std::binary_search(found.begin(), found.end(), e.pk))
                m_filtered.push_back(e);
        }
    }
    m_searching = true;
    endResetModel();
    Q_EMIT countChanged();
}

void BookWindowModel::showAll()
{
    beginResetModel();
    m_filtered.clear();
    m_searching = false;
    endResetModel();
    Q_EMIT countChanged();
}

int BookWindowModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(shown().size());
}

void BookWindowModel::fetchAround(int row) const
{
    if (!m_store)
        return;
    const auto &list = shown();
    // The page the row falls in, so that scrolling either way reads whole pages.
    const int first = row - row % kPageSize;
    const int last = std::min(int(list.size()), first + kPageSize);
    FetchRequest request;
    for (int r = first; r < last; ++r) {
        if (!m_held.contains(list[size_t(r)].pk))
            request.keys.append(list[size_t(r)].pk);
    }
    if (request.keys.isEmpty())
        return;
    QString error;
    auto books = m_store->fetchBooks(request, &error);
    if (!books) {
        qCWarning(lcStore).noquote() << error;
        return;
    }
    QSqlQuery q(m_store->database());
    q.setForwardOnly(true);
    QStringList keys;
    for (qint64 k : request.keys)
        keys << QString::number(k);
    q.prepare(QStringLiteral("SELECT book FROM BooksPictureImage WHERE book IN (SELECT value FROM json_each(?))"));
    q.addBindValue(u'[' + keys.join(u',') + u']');
    if (q.exec()) {
        while (q.next())
            m_covers.insert(q.value(0).toLongLong());
    }
    for (Books &b : *books) {
        m_heldOrder.push_back(b.pk);
        m_held.insert(b.pk, std::move(b));
    }
    while (m_heldOrder.size() > size_t(kPageSize * kPagesKept)) {
        const qint64 old = m_heldOrder.front();
        m_heldOrder.pop_front();
        m_held.remove(old);
        m_covers.remove(old);
    }
}

const Books &BookWindowModel::heldBook(int row) const
{
    static const Books missing;
    const qint64 pk = shown()[size_t(row)].pk;
    auto it = m_held.constFind(pk);
    if (it == m_held.constEnd()) {
        fetchAround(row);
        it = m_held.constFind(pk);
    }
    // A key whose book is gone from the store (deleted elsewhere) shows empty.
    return it == m_held.constEnd() ? missing : *it;
}

Books BookWindowModel::book(int row) const
{
    return heldBook(row);
}

QString BookWindowModel::section(int row) const
{
    const int s = shown()[size_t(row)].section;
    return s < 0 ? QString() : m_sectionNames[s];
}

int BookWindowModel::rowOfSection(const QString &letter, const QStringList &alphabet) const
{
    const auto &list = shown();
    if (list.empty())
        return -1;
    // Rows are in alphabet order of their letters, so the first row at or
    // after the letter is found by halving.
    QList<qsizetype> rank;
    for (const QString &name : m_sectionNames)
        rank << alphabet.indexOf(name);
    const qsizetype wanted = alphabet.indexOf(letter);
    if (wanted < 0)
        return -1;
    const auto it = std::partition_point(list.begin(), list.end(), [&](const Entry &e) {
        return e.section >= 0 && rank[e.section] < wanted;
    });
    return it == list.end() ? int(list.size()) - 1 : int(it - list.begin());
}

QVariant BookWindowModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const int row = index.row();
    if (role == PkRole)
        return key(row);
    if (role == SectionRole)
        return section(row);
    const Books &b = heldBook(row);
    switch (role) {
    case CoverSourceRole:
        return m_covers.contains(b.pk) ? QStringLiteral("image://cover/%1/%2").arg(b.pk).arg(m_coverRevision)
                                       : QString();
    case NameRole:
        return b.name.value_or(QString());
    case AuthorRole:
        return b.author.value_or(QString());
    case StarsRole: {
        const int n = int(std::min<qsizetype>(5, b.rating.value_or(QString()).count(u'*')));
        return QString(n, QChar(0x2605)) + QString(5 - n, QChar(0x2606));
    }
    case DateTextRole:
        return b.dt.value_or(QString());
    default:
        return {};
    }
}

QHash<int, QByteArray> BookWindowModel::roleNames() const
{
    return {{PkRole, "pk"},         {CoverSourceRole, "coverSource"}, {NameRole, "title"},
            {AuthorRole, "author"}, {StarsRole, "stars"},             {DateTextRole, "dateText"},
            {SectionRole, "section"}};
}

void BookWindowModel::removeShownRow(int row)
{
    std::vector<Entry> &list = m_searching ? m_filtered : m_all;
    if (row < 0 || row >= int(list.size()))
        return;
    beginRemoveRows({}, row, row);
    list.erase(list.begin() + row);
    endRemoveRows();
    Q_EMIT countChanged();
}

void BookWindowModel::dropRows()
{
    m_held.clear();
    m_heldOrder.clear();
    m_covers.clear();
    if (!shown().empty())
        Q_EMIT dataChanged(index(0), index(rowCount() - 1));
}

} // namespace tomewise
