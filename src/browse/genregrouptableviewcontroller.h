#pragma once

#include "browse/grouptableviewcontroller.h"

namespace tomewise {

// The genre summary.
class GenreGroupTableViewController : public GroupTableViewController
{
    Q_OBJECT

public:
    explicit GenreGroupTableViewController(AppDelegate *delegate = nullptr, QObject *parent = nullptr)
        : GroupTableViewController(GroupKind::Genre, delegate, parent)
    {
    }
};

} // namespace tomewise
