#pragma once

#include "browse/groupbreakdowntableviewcontroller.h"

namespace tomewise {

// The series breakdown.
class SeriesBreakdownTableViewController : public GroupBreakdownTableViewController
{
    Q_OBJECT

public:
    explicit SeriesBreakdownTableViewController(AppDelegate *delegate = nullptr, QObject *parent = nullptr)
        : GroupBreakdownTableViewController(GroupKind::Series, delegate, parent)
    {
    }
};

} // namespace tomewise
