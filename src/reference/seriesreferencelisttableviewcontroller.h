#pragma once

#include "reference/referencetablecontroller.h"

namespace tomewise {

// The series list screen, seeded from the books when it opens empty.
class SeriesReferenceListTableViewController : public ReferenceTableController
{
    Q_OBJECT

public:
    explicit SeriesReferenceListTableViewController(AppDelegate *delegate = nullptr, QObject *parent = nullptr)
        : ReferenceTableController(ReferenceKind::Series, delegate, parent)
    {
    }
};

} // namespace tomewise
