#pragma once

#include "browse/groupbreakdowntableviewcontroller.h"

namespace tomewise {

// The year published breakdown.
class YearBreakdownTableViewController : public GroupBreakdownTableViewController
{
    Q_OBJECT

public:
    explicit YearBreakdownTableViewController(AppDelegate *delegate = nullptr, QObject *parent = nullptr)
        : GroupBreakdownTableViewController(GroupKind::YearPublished, delegate, parent)
    {
    }
};

} // namespace tomewise
