#pragma once

#include "browse/groupbreakdowntableviewcontroller.h"

namespace tomewise {

// The format breakdown.
class FormatBreakdownTableViewController : public GroupBreakdownTableViewController
{
    Q_OBJECT

public:
    explicit FormatBreakdownTableViewController(AppDelegate *delegate = nullptr, QObject *parent = nullptr)
        : GroupBreakdownTableViewController(GroupKind::Format, delegate, parent)
    {
    }
};

} // namespace tomewise
