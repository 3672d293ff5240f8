#pragma once

#include "browse/grouptableviewcontroller.h"

namespace tomewise {

// The author summary.
class AuthorGroupTableViewController : public GroupTableViewController
{
    Q_OBJECT

public:
    explicit AuthorGroupTableViewController(AppDelegate *delegate = nullptr, QObject *parent = nullptr)
        : GroupTableViewController(GroupKind::Author, delegate, parent)
    {
    }
};

} // namespace tomewise
