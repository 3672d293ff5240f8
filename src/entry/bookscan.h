#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

namespace tomewise {

// Cover links of a volume; only the thumbnail is downloaded.
struct ImageURL
{
    std::optional<QString> smallThumbnail;
    std::optional<QString> thumbnail;
};

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

// One match of a volumes query.
struct BookItem
{
    QString id;
    VolumeInfo volumeInfo;
};

// A volumes answer; the form only ever uses the first item.
struct BookScan
{
    std::optional<QList<BookItem>> items;

    struct Decoded;
    // Strict: a missing required key or a value of the wrong JSON type fails
    // the whole answer, so no half-filled book ever reaches the form.
    static Decoded decode(const QByteArray &json);
};

struct BookScan::Decoded
{
    std::optional<BookScan> scan;
    QString error; // one sentence naming the key path; empty when decoded
};

} // namespace tomewise
