#pragma once

#include "model/books.h"

#include <QAbstractListModel>
#include <QHash>
#include <QStringList>

#include <QSet>

#include <deque>
#include <vector>

namespace tomewise {

class BookStore;

// A book list that holds only the keys of its rows, in order, and fetches the
// rows themselves from the store a page at a time as they are shown, keeping
// a few pages. The search shows the keys it keeps, in the same order.
class BookWindowModel : public QAbstractListModel
{
    Q_OBJECT
    Q_PROPERTY(int count READ rowCount NOTIFY countChanged)

public:
    enum Role {
        PkRole = Qt::UserRole + 1,
        CoverSourceRole,
        NameRole,
        AuthorRole,
        StarsRole,
        DateTextRole,
        SectionRole,
        FirstOwnRole = Qt::UserRole + 32, // subclasses' roles start here
    };
    static constexpr int kPageSize = 64;
    static constexpr int kPagesKept = 12;

    explicit BookWindowModel(QObject *parent = nullptr);

    void setStore(BookStore *store) { m_store = store; }
    // The store's cover revision, carried in each cover's image address so that a
    // changed cover is fetched again rather than taken from the image cache.
    void setCoverRevision(quint64 revision) { m_coverRevision = revision; }
    // A fresh list: every key in order, with, when the list has sections, the
    // section of each as an index into `names`.
    void setKeys(const std::vector<qint64> &keys, const std::vector<int> &sections = {}, const QStringList &names = {});
    // Shows only those of the list's keys that are among `found` (ascending), in the list's order.
    void showOnly(const std::vector<qint64> &found);
    void showAll();
    bool searching() const { return m_searching; }

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    qint64 key(int row) const { return shown()[size_t(row)].pk; }
    // The row's book, fetched with the rows around it when not held.
    Books book(int row) const;
    QString section(int row) const;
    // The first shown row filed under the letter or a later one of the
    // alphabet; the last row when none is, -1 when the list is empty.
    int rowOfSection(const QString &letter, const QStringList &alphabet) const;
    // Removes a shown row; only the list it came from (the search's while searching) loses it.
    void removeShownRow(int row);
    // Forgets the held rows, so that they are read anew (a book was edited).
    void dropRows();
    int heldRows() const { return int(m_held.size()); }

Q_SIGNALS:
    void countChanged();

protected:
    // The row's book as held; valid until the next row is fetched.
    const Books &heldBook(int row) const;

private:
    struct Entry
    {
        qint64 pk;
        int section; // index into m_sectionNames, -1 without sections
    };
    const std::vector<Entry> &shown() const { return m_searching ? m_filtered : m_all; }
    void fetchAround(int row) const;

    BookStore *m_store = nullptr;
    std::vector<Entry> m_all;
    std::vector<Entry> m_filtered;
    QStringList m_sectionNames;
    bool m_searching = false;
    quint64 m_coverRevision = 0;
    // The held rows, oldest first in m_heldOrder; at most kPageSize * kPagesKept.
    mutable QHash<qint64, Books> m_held;
    mutable std::deque<qint64> m_heldOrder;
    mutable QSet<qint64> m_covers;
};

} // namespace tomewise
