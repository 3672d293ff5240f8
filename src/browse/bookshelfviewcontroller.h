#pragma once

#include "browse/booklistcontroller.h"
#include "browse/titlecollation.h"

#include <memory>
#include <optional>

namespace tomewise {

// The other book lists: every book by title with a section per letter, one
// row per book with a large cover, or a grid of covers. One search over title
// and author; a tap opens the detail screen, delete removes the book.
class BookShelfViewController : public BookListController
{
    Q_OBJECT
    Q_PROPERTY(QString mode READ mode WRITE setMode NOTIFY modeChanged)
    Q_PROPERTY(QString searchText READ searchText WRITE setSearchText NOTIFY searchTextChanged)
    Q_PROPERTY(QString header READ header NOTIFY headerChanged)
    Q_PROPERTY(QStringList alphabet READ alphabet NOTIFY appDelegateChanged)
    Q_PROPERTY(tomewise::BookWindowModel *model READ model CONSTANT)

public:
    explicit BookShelfViewController(AppDelegate *delegate = nullptr, QObject *parent = nullptr);

    QString mode() const { return m_mode; }
    void setMode(const QString &mode);
    QString searchText() const { return m_searchText; }
    void setSearchText(const QString &text);
    QString header() const;
    QStringList alphabet() const;
    BookWindowModel *model() { return &m_model; }

    Q_INVOKABLE void viewDidLoad();
    Q_INVOKABLE void viewWillAppear();
    Q_INVOKABLE void deleteRow(int row) { deleteShownRow(m_model, row); }
    // A tap: the book's fields become currentBook and the detail screen opens.
    Q_INVOKABLE void selectRow(int row) { openShownRow(m_model, row); }
    // The row the section index jumps to for a letter.
    Q_INVOKABLE int rowOfLetter(const QString &letter) const;
    // Another presentation chosen on the switcher; returns the target that shows it.
    QString choosePresentation(const QString &presentation) override;
    Q_INVOKABLE void unwindToList();

Q_SIGNALS:
    void modeChanged();
    void searchTextChanged();
    void headerChanged();

private:
    void reload() override { fetch(); }
    const TitleCollation &collation();
    void fetch();
    void refilter();

    QString m_mode = QStringLiteral("az");
    QString m_searchText;
    BookWindowModel m_model;
    std::unique_ptr<TitleCollation> m_collation;
    bool m_loaded = false;
};

} // namespace tomewise
