#pragma once

#include "app/screencontroller.h"
#include "browse/deletedbook.h"
#include "browse/liststylemodel.h"

#include <QVariantList>

#include <optional>

namespace tomewise {

// The list-style book list: every book as a card, in one of six orders, with
// a search that follows the order.
class ListStyleTableViewController : public ScreenController
{
    Q_OBJECT
    Q_PROPERTY(QString SortName READ sortName NOTIFY sortChanged)
    Q_PROPERTY(bool SortAsc READ sortAsc NOTIFY sortChanged)
    Q_PROPERTY(QString placeholder READ placeholder NOTIFY sortChanged)
    Q_PROPERTY(QString searchText READ searchText WRITE setSearchText NOTIFY searchTextChanged)
    Q_PROPERTY(QString header READ header NOTIFY headerChanged)
    Q_PROPERTY(bool DarkMode MEMBER m_darkMode NOTIFY darkModeChanged)
    Q_PROPERTY(QVariantList sortOptions READ sortOptions CONSTANT)
    Q_PROPERTY(tomewise::ListStyleModel *model READ model CONSTANT)

public:
    explicit ListStyleTableViewController(AppDelegate *delegate = nullptr, QObject *parent = nullptr);

    QString sortName() const { return m_sortName.value_or(QString()); }
    bool sortAsc() const { return m_sortAsc.value_or(false); }
    QString placeholder() const { return m_placeholder; }
    QString searchText() const { return m_searchText.value_or(QString()); }
    void setSearchText(const QString &text);
    QString header() const;
    QVariantList sortOptions() const;
    ListStyleModel *model() { return &m_model; }
    bool darkMode() const { return m_darkMode; }
    void setDarkMode(bool dark) { m_darkMode = dark; }

    Q_INVOKABLE void viewDidLoad();
    Q_INVOKABLE void viewWillAppear();
    Q_INVOKABLE void SortButtonTapped();
    // Option 1 to 6 of the "Sort By" menu.
    Q_INVOKABLE void selectSortOption(int option);
    // The trailing swipe's "delete".
    Q_INVOKABLE void deleteRow(int row);
    // Puts the book deleted last back in the store, cover and all.
    Q_INVOKABLE void undoDelete();
    // A tap: the book's fields become currentBook and the detail screen opens.
    Q_INVOKABLE void selectRow(int row);
    // Back from the detail screen: the edited book is fetched anew, search kept.
    Q_INVOKABLE void unwindToList() { fetch(); }

Q_SIGNALS:
    void sortChanged();
    void searchTextChanged();
    void headerChanged();
    void darkModeChanged();
    // A book left the list; the page offers to undo it.
    void rowDeleted(const QString &name);

private:
    void fetch();
    void refilter();

    std::optional<QString> m_sortName;
    std::optional<bool> m_sortAsc;
    std::optional<QString> m_searchText; // absent until the search bar exists
    QString m_placeholder;
    bool m_darkMode = false;
    ListStyleModel m_model;
    DeletedBook m_deleted;
};

} // namespace tomewise
