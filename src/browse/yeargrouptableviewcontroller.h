#pragma once

#include "browse/grouptableviewcontroller.h"

namespace tomewise {

// The year published summary.
class YearGroupTableViewController : public GroupTableViewController
{
    Q_OBJECT

public:
    explicit YearGroupTableViewController(AppDelegate *delegate = nullptr, QObject *parent = nullptr)
        : GroupTableViewController(GroupKind::YearPublished, delegate, parent)
    {
    }
};

} // namespace tomewise
