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
    loadPickers();
}

bool NewBookViewController::SaveNewBook()
{
    if (!requireFields())
        return false;
    // A date text that no longer parses (the default date written in another
    // language) would be saved as dt alone, naming no day.
    if (!readDate().isValid()) {
        showAlert(QStringLiteral("Book Not Saved"), kDateNotUnderstood);
        return false;
    }
    Books book;
    writeFields(book);
    if (hasImage())
        book.pictureImage = coverData(imageView());
    if (logIfFailed(context().insertBook(book)))
        Q_EMIT notice(savedNotice(book));
    m_saved = book;
    Q_EMIT unwind(QStringLiteral("unwindToMenu"));
    return true;
}

} // namespace tomewise
