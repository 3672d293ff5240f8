#pragma once

#include "entry/volumeinfo.h"

#include <QString>

namespace tomewise {

// One match of a volumes query.
struct BookItem
{
    QString id;
    VolumeInfo volumeInfo;
};

} // namespace tomewise
