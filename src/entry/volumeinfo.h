#pragma once

#include "entry/imageurl.h"

#include <QString>
#include <QStringList>

#include <optional>

namespace tomewise {

// What the books service knows about one volume.
struct VolumeInfo
{
    QString title;
    std::optional<QString> subtitle;
    QStringList authors;
    QString publishedDate;
    qint64 pageCount = 0;
    std::optional<QString> language;
    std::optional<QString> publisher;
    std::optional<QString> description;
    std::optional<QStringList> categories;
    std::optional<ImageURL> imageLinks;
};

} // namespace tomewise
