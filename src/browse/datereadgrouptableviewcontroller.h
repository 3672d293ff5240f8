#pragma once

#include "browse/groupbreakdowntableviewcontroller.h"

namespace tomewise {

// The year read breakdown.
class DateReadGroupTableViewController : public GroupBreakdownTableViewController
{
    Q_OBJECT

public:
    explicit DateReadGroupTableViewController(AppDelegate *delegate = nullptr, QObject *parent = nullptr)
        : GroupBreakdownTableViewController(GroupKind::YearRead, delegate, parent)
    {
    }
};

} // namespace tomewise
