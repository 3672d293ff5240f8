#pragma once

#include "browse/groupbreakdowntableviewcontroller.h"

namespace tomewise {

// The author breakdown.
class AuthorBreakdownTableViewController : public GroupBreakdownTableViewController
{
    Q_OBJECT

public:
    explicit AuthorBreakdownTableViewController(AppDelegate *delegate = nullptr, QObject *parent = nullptr)
        : GroupBreakdownTableViewController(GroupKind::Author, delegate, parent)
    {
    }
};

} // namespace tomewise
