#pragma once

#include "entry/bookform.h"

namespace tomewise {

// The "Add Book" screen: the book form that saves a new record and returns to the menu.
class NewBookViewController : public BookForm
{
    Q_OBJECT

public:
    static inline const QString kDateNotUnderstood =
        QStringLiteral("The Date Read is not a date this device understands; choose it again");

    explicit NewBookViewController(AppDelegate *delegate = nullptr, QObject *parent = nullptr);

    Q_INVOKABLE void viewDidLoad();
    // True when a record was written (or attempted); false when an alert stopped it.
    Q_INVOKABLE bool SaveNewBook();

    // The record the last save wrote, key included.
    const Books &savedBook() const { return m_saved; }

private:
    Books m_saved;
};

} // namespace tomewise
