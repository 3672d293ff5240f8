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
    if (!requiredFieldsEntered()) {
        showAlert(QStringLiteral("Book Not Saved"), QStringLiteral("Required Fields Labeled in RED Not Entered"));
        return false;
    }
    Books book;
    writeFields(book);
    if (hasImage())
        book.pictureImage = coverData(imageView());
    logIfFailed(context().insertBook(book));
    m_saved = book;
    Q_EMIT unwind(QStringLiteral("unwindToMenu"));
    return true;
}

} // namespace tomewise
