#include "liststylesortoption.h"

namespace tomewise {

const ListStyleSortOption *listStyleSortOption(QStringView sortName)
{
    for (const auto &option : kListStyleSortOptions) {
        if (sortName == QLatin1String(option.sortName))
            return &option;
    }
    return nullptr;
}

} // namespace tomewise
