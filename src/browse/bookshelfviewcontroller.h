#pragma once

#include "app/screencontroller.h"
#include "browse/booklistsource.h"
#include "browse/bookwindowmodel.h"
#include "browse/titlecollation.h"

#include <memory>
#include <optional>

namespace tomewise {

// The settings key of the book-list presentation last chosen.
inline constexpr auto kBookListPresentationKey = "BookListPresentation";

// The book-list presentations: "cards" (the list-style list), "az", "pictures", "grid".
QStringList bookListPresentations();
// Records a chosen presentation: `listMode` ("List" for the text lists,
// "Graphic" for the pictures) and the choice kept for the next launch. Returns
// the navigation target that shows it.
QString recordBookListPresentation(AppDelegate &app, const QString &presentation);
// The presentation last chosen, "cards" at first.
QString lastBookListPresentation(AppDelegate &app);
// The fields a tap copies into currentBook (all but the picture).
Books currentBookCopy(const Books &book);

// The other book lists: every book by title with a section per letter, one
// row per book with a large cover, or a grid of covers. One search over title
// and author; a tap opens the detail screen, delete removes the book.
class BookShelfViewController : public ScreenController
{
    Q_OBJECT
    Q_PROPERTY(QString mode READ mode WRITE setMode NOTIFY modeChanged)
    Q_PROPERTY(QString searchText READ searchText WRITE setSearchText NOTIFY searchTextChanged)
    Q_PROPERTY(QString header READ header NOTIFY headerChanged)
    Q_PROPERTY(QStringList alphabet READ alphabet CONSTANT)
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
    Q_INVOKABLE void deleteRow(int row);
    Q_INVOKABLE void selectRow(int row);
    // The row the section index jumps to for a letter.
    Q_INVOKABLE int rowOfLetter(const QString &letter) const;
    // Another presentation chosen on the switcher; returns the target that shows it.
    Q_INVOKABLE QString choosePresentation(const QString &presentation);
    Q_INVOKABLE QString lastPresentation() { return lastBookListPresentation(app()); }
    Q_INVOKABLE void unwindToList();

Q_SIGNALS:
    void modeChanged();
    void searchTextChanged();
    void headerChanged();

private:
    BookListSource &source();
    const TitleCollation &collation();
    void fetch();
    void refilter();

    QString m_mode = QStringLiteral("az");
    QString m_searchText;
    BookWindowModel m_model;
    std::unique_ptr<BookListSource> m_source;
    std::unique_ptr<TitleCollation> m_collation;
    bool m_loaded = false;
};

} // namespace tomewise
