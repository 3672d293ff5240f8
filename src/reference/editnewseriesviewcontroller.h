#pragma once

#include "reference/referenceeditcontroller.h"

namespace tomewise {

// The screen that renames the selected series.
class EditNewSeriesViewController : public ReferenceEditController
{
    Q_OBJECT

public:
    explicit EditNewSeriesViewController(AppDelegate *delegate = nullptr, QObject *parent = nullptr)
        : ReferenceEditController(ReferenceKind::Series, delegate, parent)
    {
    }
};

} // namespace tomewise
