#pragma once

#include "reference/referenceaddcontroller.h"

namespace tomewise {

// The "Add Genre" screen.
class AddGenreViewController : public ReferenceAddController
{
    Q_OBJECT

public:
    explicit AddGenreViewController(AppDelegate *delegate = nullptr, QObject *parent = nullptr)
        : ReferenceAddController(ReferenceKind::Genre, delegate, parent)
    {
    }
};

} // namespace tomewise
