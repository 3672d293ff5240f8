#pragma once

#include "app/screencontroller.h"
#include "browse/booklistsource.h"
#include "browse/deletedbook.h"
#include "browse/bookwindowmodel.h"

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

// What every book list does alike over its windowed rows: the store's search,
// delete, and a tap that opens the book on the detail screen.
class BookListController : public ScreenController
{
    Q_OBJECT

public:
    using ScreenController::ScreenController;

    // Another presentation chosen on the switcher; returns the target that shows it.
    Q_INVOKABLE virtual QString choosePresentation(const QString &presentation);
    Q_INVOKABLE QString lastPresentation() { return lastBookListPresentation(app()); }
    // Puts the book deleted last back in the store, cover and all.
    Q_INVOKABLE void undoDelete();

Q_SIGNALS:
    // A book left the list; the page offers to undo it.
    void rowDeleted(const QString &name);

protected:
    // Reads the list anew from the store.
    virtual void reload() = 0;
    BookListSource &source();
    // Shows the rows whose attributes contain the text; every row for no text.
    void search(BookWindowModel &model, const QString &text, const QStringList &attributes);
    // Deletes the shown row's book from the store, saved, and from the list it came from.
    void deleteShownRow(BookWindowModel &model, int row);
    // Copies the row's book into currentBook and opens the detail screen.
    void openShownRow(const BookWindowModel &model, int row);

private:
    std::unique_ptr<BookListSource> m_source;
    DeletedBook m_deleted;
};

} // namespace tomewise
