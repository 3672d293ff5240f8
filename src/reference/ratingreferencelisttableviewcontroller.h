#pragma once

#include "reference/referencetablecontroller.h"

namespace tomewise {

// The rating list screen.
class RatingReferenceListTableViewController : public ReferenceTableController
{
    Q_OBJECT

public:
    explicit RatingReferenceListTableViewController(AppDelegate *delegate = nullptr, QObject *parent = nullptr)
        : ReferenceTableController(ReferenceKind::Rating, delegate, parent)
    {
    }
};

} // namespace tomewise
