#pragma once

#include "reference/referenceaddcontroller.h"

namespace tomewise {

// The screen that adds a series name.
class AddNewSeriesViewController : public ReferenceAddController
{
    Q_OBJECT

public:
    explicit AddNewSeriesViewController(AppDelegate *delegate = nullptr, QObject *parent = nullptr)
        : ReferenceAddController(ReferenceKind::Series, delegate, parent)
    {
    }
};

} // namespace tomewise
