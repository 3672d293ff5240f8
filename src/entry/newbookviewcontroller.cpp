#include "newbookviewcontroller.h"

#include "app/log.h"

namespace tomewise {

NewBookViewController::NewBookViewController(AppDelegate *delegate, QObject *parent)
    : BookForm(delegate, parent)
{
    setTitle(QStringLiteral("Add Book"));
}

void NewBookViewController::viewDidLoad()
{
    showOpeningDate();
    readDatePickerStyle();
    loadGenres();
    loadRatings();
    loadSeries();
}

void NewBookViewController::viewWillAppear()
{
    // Entries added in the reference lists show at once; ratings wait for the next form.
    loadGenres();
    loadSeries();
}

bool NewBookViewController::SaveNewBook()
{
    if (!requiredFieldsEntered()) {
        showAlert(QStringLiteral("Book Not Saved"), QStringLiteral("Required Fields Labeled in RED Not Entered"));
        return false;
    }
    Books book;
    writeFields(book);
    logIfFailed(context().insertBook(book));
    m_saved = book;
    Q_EMIT unwind(QStringLiteral("unwindToMenu"));
    return true;
}

} // namespace tomewise
