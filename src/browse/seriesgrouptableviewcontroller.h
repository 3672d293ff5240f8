#pragma once

#include "browse/grouptableviewcontroller.h"

namespace tomewise {

// The series summary.
class SeriesGroupTableViewController : public GroupTableViewController
{
    Q_OBJECT

public:
    explicit SeriesGroupTableViewController(AppDelegate *delegate = nullptr, QObject *parent = nullptr)
        : GroupTableViewController(GroupKind::Series, delegate, parent)
    {
    }
};

} // namespace tomewise
