#pragma once

#include "browse/groupbreakdowntableviewcontroller.h"

namespace tomewise {

// The genre breakdown.
class GenreBreakdownTableViewController : public GroupBreakdownTableViewController
{
    Q_OBJECT

public:
    explicit GenreBreakdownTableViewController(AppDelegate *delegate = nullptr, QObject *parent = nullptr)
        : GroupBreakdownTableViewController(GroupKind::Genre, delegate, parent)
    {
    }
};

} // namespace tomewise
