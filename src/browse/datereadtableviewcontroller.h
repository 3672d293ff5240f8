#pragma once

#include "browse/grouptableviewcontroller.h"

namespace tomewise {

// The year read summary.
class DateReadTableViewController : public GroupTableViewController
{
    Q_OBJECT

public:
    explicit DateReadTableViewController(AppDelegate *delegate = nullptr, QObject *parent = nullptr)
        : GroupTableViewController(GroupKind::YearRead, delegate, parent)
    {
    }
};

} // namespace tomewise
