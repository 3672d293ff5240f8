#pragma once

#include "reference/referenceaddcontroller.h"

namespace tomewise {

// The "Add Rating" screen.
class AddRatingViewController : public ReferenceAddController
{
    Q_OBJECT

public:
    explicit AddRatingViewController(AppDelegate *delegate = nullptr, QObject *parent = nullptr)
        : ReferenceAddController(ReferenceKind::Rating, delegate, parent)
    {
    }
};

} // namespace tomewise
