#include "browse/deletedbook.h"

#include "app/appdelegate.h"
#include "model/bookstore.h"

#include <utility>

namespace tomewise {

bool DeletedBook::remove(BookStore &store, Books book)
{
    m_book.reset();
    book.pictureImage = store.cover(book.pk);
    if (!logIfFailed(store.deleteBook(book.pk)))
        return false;
    m_book = std::move(book);
    return true;
}

bool DeletedBook::restore(BookStore &store)
{
    if (!m_book)
        return false;
    Books book = *std::exchange(m_book, std::nullopt);
    return logIfFailed(store.insertBook(book));
}

} // namespace tomewise
