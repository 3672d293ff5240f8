#pragma once

#include <QString>

#include <optional>

namespace tomewise {

// Cover links of a volume; only the thumbnail is downloaded.
struct ImageURL
{
    std::optional<QString> smallThumbnail;
    std::optional<QString> thumbnail;
};

} // namespace tomewise
