#pragma once

#include "browse/groupbreakdowntableviewcontroller.h"

namespace tomewise {

// The rating breakdown.
class RatingBreakdownTableViewController : public GroupBreakdownTableViewController
{
    Q_OBJECT

public:
    explicit RatingBreakdownTableViewController(AppDelegate *delegate = nullptr, QObject *parent = nullptr)
        : GroupBreakdownTableViewController(GroupKind::Rating, delegate, parent)
    {
    }
};

} // namespace tomewise
