#pragma once

#include "reference/referencetablecontroller.h"

namespace tomewise {

// The genre list screen.
class GenreReferenceListTableViewController : public ReferenceTableController
{
    Q_OBJECT

public:
    explicit GenreReferenceListTableViewController(AppDelegate *delegate = nullptr, QObject *parent = nullptr)
        : ReferenceTableController(ReferenceKind::Genre, delegate, parent)
    {
    }
};

} // namespace tomewise
