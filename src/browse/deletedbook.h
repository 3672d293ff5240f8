#pragma once

#include "model/books.h"

#include <optional>

namespace tomewise {

class BookStore;

// The book a list deleted last, kept whole (cover included) so that Undo can
// put it back as it was. The book lists share it.
class DeletedBook
{
public:
    // Deletes the book from the store; only a delete the store took can be undone.
    bool remove(BookStore &store, Books book);
    // Stores the kept book again, once; false when there is none or the store refused.
    bool restore(BookStore &store);
    void forget() { m_book.reset(); }

private:
    std::optional<Books> m_book;
};

} // namespace tomewise
