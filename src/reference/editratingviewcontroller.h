#pragma once

#include "reference/referenceeditcontroller.h"

namespace tomewise {

// The "Edit Rating" screen.
class EditRatingViewController : public ReferenceEditController
{
    Q_OBJECT

public:
    explicit EditRatingViewController(AppDelegate *delegate = nullptr, QObject *parent = nullptr)
        : ReferenceEditController(ReferenceKind::Rating, delegate, parent)
    {
    }
};

} // namespace tomewise
