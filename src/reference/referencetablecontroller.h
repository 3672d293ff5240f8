#pragma once

#include "app/screencontroller.h"
#include "reference/referencekind.h"
#include "reference/referencelistmodel.h"

#include <QVariant>

namespace tomewise {

// The list screen of one reference list: load in the chosen order, search,
// sort toggle, swipe delete, and the way to the add and edit screens. The
// series list adds seeding from the books and has no search, sort or count.
class ReferenceTableController : public ScreenController
{
    Q_OBJECT
    Q_PROPERTY(QAbstractItemModel *rows READ rows CONSTANT)
    Q_PROPERTY(QString attribute READ attribute CONSTANT)
    Q_PROPERTY(bool searchable READ searchable CONSTANT)
    Q_PROPERTY(QString searchPlaceholder READ searchPlaceholder CONSTANT)
    Q_PROPERTY(QString addTarget READ addTarget CONSTANT)
    Q_PROPERTY(QString unwindName READ unwindName CONSTANT)
    Q_PROPERTY(bool SortAsc READ sortAsc NOTIFY listReloaded)
    Q_PROPERTY(QString searchText READ searchText WRITE setSearchText NOTIFY searchTextChanged)
    Q_PROPERTY(QVariant selectedName READ selectedName NOTIFY selectedNameChanged)
    Q_PROPERTY(QVariant passedEntryName READ passedEntryName NOTIFY selectedNameChanged)

public:
    ReferenceTableController(ReferenceKind kind, AppDelegate *delegate, QObject *parent);

    const ReferenceKindInfo &info() const { return m_info; }
    ReferenceListModel *rows() { return &m_rows; }
    QString attribute() const { return QLatin1String(m_info.attribute); }
    bool searchable() const { return m_info.searchPlaceholder != nullptr; }
    QString searchPlaceholder() const;
    QString addTarget() const { return QLatin1String(m_info.addTarget); }
    QString unwindName() const { return QLatin1String(m_info.unwindName); }
    bool sortAsc() const { return m_sortAsc; }
    QString searchText() const { return m_searchText; }
    void setSearchText(const QString &text);
    QVariant selectedName() const;
    QVariant passedEntryName() const;
    const Text &passedEntry() const { return m_passedEntry; }

    // GenreCount / RatingCount: the entries fetched by the last load.
    qint16 count() const { return m_count; }
    const QList<ReferenceEntry> &list() const { return m_list; }
    const QList<ReferenceEntry> &filteredList() const { return m_filteredList; }
    const QStringList &newSeriesList() const { return m_newSeriesList; }

    // First display: title, ascending order, and the load once the screen is up.
    Q_INVOKABLE void viewDidLoad();
    Q_INVOKABLE void SortButtonTapped();
    // A tap on a row: the selected name, then the way to the edit screen.
    Q_INVOKABLE void didSelectRow(int row);
    // The trailing swipe's "delete".
    Q_INVOKABLE void deleteRow(int row);
    // Puts the entry deleted last back, at the row it left.
    Q_INVOKABLE void undoDelete();
    // Arriving back from the add or edit screen.
    Q_INVOKABLE void unwindToTableView();
    Q_INVOKABLE void viewWillDisappear();

Q_SIGNALS:
    void listReloaded();
    void searchTextChanged();
    void selectedNameChanged();
    // An entry left the list; the page offers to undo it.
    void rowDeleted(const QString &name);

private:
    void load();
    void fetch();
    void seedFromBooks();
    bool searching() const { return !m_searchText.isEmpty(); }
    void filter();
    void showRows();

    const ReferenceKindInfo &m_info;
    ReferenceListModel m_rows;
    QList<ReferenceEntry> m_list;
    QList<ReferenceEntry> m_filteredList;
    QStringList m_newSeriesList;
    bool m_sortAsc = true;
    qint16 m_count = 0;
    QString m_searchText;
    Text m_selectedName;
    Text m_passedEntry;
    struct Deleted
    {
        ReferenceEntry entry;
        int row = 0; // -1 once the list has loaded again
        bool fromFiltered = false;
    };
    std::optional<Deleted> m_deleted;
};

} // namespace tomewise
