#pragma once

#include "browse/grouptableviewcontroller.h"

namespace tomewise {

// The format summary.
class FormatGroupTableViewController : public GroupTableViewController
{
    Q_OBJECT

public:
    explicit FormatGroupTableViewController(AppDelegate *delegate = nullptr, QObject *parent = nullptr)
        : GroupTableViewController(GroupKind::Format, delegate, parent)
    {
    }
};

} // namespace tomewise
