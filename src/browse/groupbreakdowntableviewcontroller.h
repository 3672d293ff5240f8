#pragma once

#include "app/screencontroller.h"
#include "browse/deletedbook.h"
#include "browse/groupbreakdownmodel.h"
#include "browse/groupcounts.h"
#include "browse/groupkind.h"

#include <QVariantList>

#include <optional>

namespace tomewise {

// A group breakdown: the books behind one summary row, re-ordered through the
// "Sort by" menu (every fetch flips the direction, which is how the user
// picks one), searched by name, deleted by a swipe, opened on the detail screen.
class GroupBreakdownTableViewController : public ScreenController
{
    Q_OBJECT
    Q_PROPERTY(QString placeholder READ placeholder CONSTANT)
    Q_PROPERTY(int rowHeight READ rowHeight CONSTANT)
    Q_PROPERTY(QStringList sortActions READ sortActions CONSTANT)
    Q_PROPERTY(QStringList labelOutlets READ labelOutlets CONSTANT)
    Q_PROPERTY(QString unwindName READ unwindName CONSTANT)
    Q_PROPERTY(bool SortAsc READ sortAsc NOTIFY sortChanged)
    Q_PROPERTY(QString SortName READ sortName NOTIFY sortChanged)
    Q_PROPERTY(QString searchText READ searchText WRITE setSearchText NOTIFY searchTextChanged)
    Q_PROPERTY(QString header READ header NOTIFY headerChanged)
    Q_PROPERTY(tomewise::GroupBreakdownModel *model READ model CONSTANT)

public:
    GroupBreakdownTableViewController(GroupKind kind, AppDelegate *delegate, QObject *parent);

    const GroupKindInfo &info() const { return m_info; }
    QString placeholder() const { return QLatin1String(m_info.breakdownPlaceholder); }
    int rowHeight() const { return m_info.rowHeight; }
    QStringList sortActions() const;
    QStringList labelOutlets() const;
    QString unwindName() const { return QLatin1String(m_info.unwindName); }
    bool sortAsc() const { return m_sortAsc.value_or(false); }
    QString sortName() const { return m_sortName.value_or(QString()); }
    QString searchText() const { return m_searchText; }
    void setSearchText(const QString &text);
    QString header() const;
    GroupBreakdownModel *model() { return &m_model; }
    qint64 bookCount() const { return m_bookCount; }

    Q_INVOKABLE void viewDidLoad();
    Q_INVOKABLE void viewWillAppear();
    // Action 1 to 4 of the "Sort by" menu.
    Q_INVOKABLE void selectSortOption(int option);
    // The sort button (and the "Menu" button of older systems).
    Q_INVOKABLE void SortButtonTapped();
    Q_INVOKABLE void selectRow(int row);
    // The trailing swipe's "delete".
    Q_INVOKABLE void deleteRow(int row);
    // Puts the book deleted last back in the store, cover and all.
    Q_INVOKABLE void undoDelete();
    // The PDF list and the printed report come with the print and share work.
    Q_INVOKABLE void PrintButtonTapped() {}
    Q_INVOKABLE void ShareButtonTapped() {}

Q_SIGNALS:
    void sortChanged();
    void searchTextChanged();
    void headerChanged();
    // A book left the list; the page offers to undo it.
    void rowDeleted(const QString &name);

private:
    void fetch();
    std::optional<QList<Predicate>> predicates();
    GroupCounts &counts();

    const GroupKindInfo &m_info;
    std::optional<GroupCounts> m_counts; // made once the delegate is known
    GroupBreakdownModel m_model;
    std::optional<bool> m_sortAsc;
    std::optional<QString> m_sortName;
    QString m_searchText;
    qint64 m_bookCount = 0;
    bool m_justLoaded = false;
    DeletedBook m_deleted;
};

} // namespace tomewise
