#pragma once

#include "browse/grouptableviewcontroller.h"

namespace tomewise {

// The rating summary.
class RatingGroupTableViewController : public GroupTableViewController
{
    Q_OBJECT

public:
    explicit RatingGroupTableViewController(AppDelegate *delegate = nullptr, QObject *parent = nullptr)
        : GroupTableViewController(GroupKind::Rating, delegate, parent)
    {
    }
};

} // namespace tomewise
