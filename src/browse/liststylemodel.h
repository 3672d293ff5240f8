#pragma once

#include "browse/liststylesortoption.h"
#include "model/books.h"

#include <QAbstractListModel>
#include <QSet>

#include <vector>

namespace tomewise {

class DateText;

// The list-style list's rows: the fetched books, the ones the search keeps,
// and each card's label texts for the current sort option. Covers are not
// held; a row names its cover's image address.
class ListStyleModel : public QAbstractListModel
{
    Q_OBJECT
    Q_PROPERTY(int count READ rowCount NOTIFY countChanged)

public:
    enum Role {
        PkRole = Qt::UserRole + 1,
        CoverSourceRole,
        LabelRole,                                  // TopLabel .. NotesLabel follow
        AttributeRole = LabelRole + 6,              // the Books attributes follow, in model order
    };

    explicit ListStyleModel(QObject *parent = nullptr);

    // Takes a fresh fetch; date texts and search keys are worked out here once.
    void setBooks(QList<Books> books, const ListStyleSortOption &option, const DateText &dates,
                  QSet<qint64> coverKeys);
    // The store's cover revision, carried in each cover's image address so that a
    // changed cover is fetched again rather than taken from the image cache.
    void setCoverRevision(quint64 revision) { m_coverRevision = revision; }
    // Keeps the books whose compared text contains `text` (case-insensitive), in order.
    void refilter(const QString &text);

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    const Books &book(int row) const;
    QString label(int row, int slot) const;
    QStringList labels(int row) const;
    // Removes a shown row; only the list it came from (the search's while searching) loses it.
    void removeShownRow(int row);
    bool searching() const { return m_searching; }
    int bookCount() const { return int(m_books.size()); }

Q_SIGNALS:
    void countChanged();

private:
    struct Row
    {
        Books book;
        QString dateMedium;  // "Date Read: " text of the date-read card
        QString searchKey;   // the compared text, lower-cased
        bool hasCover = false;
    };
    QString expand(const char *pattern, const Row &row) const;

    std::vector<Row> m_books;
    QList<int> m_all;       // BookList, as indexes into m_books
    QList<int> m_filtered;  // FilteredBookList
    bool m_searching = false;
    quint64 m_coverRevision = 0;
    const ListStyleSortOption *m_option = &kListStyleSortOptions[0];
};

} // namespace tomewise
