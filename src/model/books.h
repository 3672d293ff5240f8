#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>
#include <QVariant>

#include <optional>
#include <span>
#include <variant>

namespace tomewise {

using Text = std::optional<QString>;
using Int16 = std::optional<qint16>;
using Instant = std::optional<QDateTime>;
using Data = std::optional<QByteArray>;

// One book the user has read. Every attribute is optional: absent and empty
// text are different values, and an unset integer reads as 0 where used.
struct Books
{
    qint64 pk = 0; // store identity; 0 until inserted

    Text author;
    Text bookFormat;
    Text bookPublisher;
    Text category;
    Instant dateRead;
    Int16 day;
    Text dt;
    Text isbn;
    Int16 month;
    Text name;
    Text notes;
    Int16 numberPages;
    Text picture;
    Data pictureImage;
    Int16 publishDate;
    Text rating;
    Text series;
    Int16 seriesNumber;
    Text subTitle;
    Int16 year;

    bool operator==(const Books &) const = default;
};

enum class AttributeType { String, Integer, Date, Binary };

// The Books attributes in the model's order, with a typed member for each, so
// that the store, the dump and any by-name access share one list.
struct BooksAttribute
{
    const char *name;
    std::variant<Text Books::*, Int16 Books::*, Instant Books::*, Data Books::*> member;

    AttributeType type() const { return static_cast<AttributeType>(member.index()); }
};

std::span<const BooksAttribute> booksAttributes();
const BooksAttribute *booksAttribute(QStringView name);

// By-name access; an absent value is an invalid QVariant.
QVariant attributeValue(const Books &book, const BooksAttribute &attribute);
void setAttributeValue(Books &book, const BooksAttribute &attribute, const QVariant &value);

// The value range a 16-bit attribute accepts; values from outside are refused
// at the edge rather than wrapped.
std::optional<qint16> toInt16(qint64 value);
std::optional<qint16> parseInt16(QStringView text);

} // namespace tomewise

Q_DECLARE_METATYPE(tomewise::Books)
