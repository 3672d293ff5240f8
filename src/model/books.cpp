#include "books.h"

#include <array>
#include <limits>

namespace tomewise {

namespace {
const std::array<BooksAttribute, 20> kAttributes{{
    {"author", &Books::author},
    {"bookFormat", &Books::bookFormat},
    {"bookPublisher", &Books::bookPublisher},
    {"category", &Books::category},
    {"dateRead", &Books::dateRead},
    {"day", &Books::day},
    {"dt", &Books::dt},
    {"isbn", &Books::isbn},
    {"month", &Books::month},
    {"name", &Books::name},
    {"notes", &Books::notes},
    {"numberPages", &Books::numberPages},
    {"picture", &Books::picture},
    {"pictureImage", &Books::pictureImage},
    {"publishDate", &Books::publishDate},
    {"rating", &Books::rating},
    {"series", &Books::series},
    {"seriesNumber", &Books::seriesNumber},
    {"subTitle", &Books::subTitle},
    {"year", &Books::year},
}};
} // namespace

std::span<const BooksAttribute> booksAttributes()
{
    return kAttributes;
}

const BooksAttribute *booksAttribute(QStringView name)
{
    for (const auto &a : kAttributes) {
        if (name == QLatin1String(a.name))
            return &a;
    }
    return nullptr;
}

QVariant attributeValue(const Books &book, const BooksAttribute &attribute)
{
    return std::visit(
        [&book](auto member) -> QVariant {
            const auto &v = book.*member;
            return v ? QVariant::fromValue(*v) : QVariant();
        },
        attribute.member);
}

void setAttributeValue(Books &book, const BooksAttribute &attribute, const QVariant &value)
{
    std::visit(
        [&](auto member) {
            using Value = typename std::remove_reference_t<decltype(book.*member)>::value_type;
            if (!value.isValid() || value.isNull())
                book.*member = std::nullopt;
            else
                book.*member = value.value<Value>();
        },
        attribute.member);
}

std::optional<qint16> toInt16(qint64 value)
{
    if (value < std::numeric_limits<qint16>::min() || value > std::numeric_limits<qint16>::max())
        return std::nullopt;
    return static_cast<qint16>(value);
}

std::optional<qint16> parseInt16(QStringView text)
{
    // Decimal digits with an optional sign, as a number parser reads them; no
    // blanks, no grouping.
    if (text.isEmpty())
        return std::nullopt;
    qsizetype i = 0;
    if (text[0] == u'+' || text[0] == u'-')
        ++i;
    if (i == text.size())
        return std::nullopt;
    for (qsizetype j = i; j < text.size(); ++j) {
        if (text[j] < u'0' || text[j] > u'9')
            return std::nullopt;
    }
    bool ok = false;
    const qlonglong v = text.toLongLong(&ok);
    if (!ok)
        return std::nullopt;
    return toInt16(v);
}

} // namespace tomewise
