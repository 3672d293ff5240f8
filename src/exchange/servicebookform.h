#pragma once

#include "entry/bookform.h"
#include "exchange/servicefile.h"

namespace tomewise {

// The book form, filled from another service's row instead of by hand, so an
// imported book is saved with exactly the texts, numbers and date fields a
// typed one gets.
class ServiceBookForm : public BookForm
{
    Q_OBJECT

public:
    explicit ServiceBookForm(AppDelegate *delegate, QObject *parent = nullptr);

    // The record the form would save for the row (no cover).
    Books book(const ServiceRow &row);
};

} // namespace tomewise
