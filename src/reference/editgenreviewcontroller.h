#pragma once

#include "reference/referenceeditcontroller.h"

namespace tomewise {

// The "Edit Genre" screen.
class EditGenreViewController : public ReferenceEditController
{
    Q_OBJECT

public:
    explicit EditGenreViewController(AppDelegate *delegate = nullptr, QObject *parent = nullptr)
        : ReferenceEditController(ReferenceKind::Genre, delegate, parent)
    {
    }
};

} // namespace tomewise
