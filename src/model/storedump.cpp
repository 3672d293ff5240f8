#include "storedump.h"

#include <QJsonObject>

namespace tomewise {

std::optional<QJsonArray> dumpEntity(BookStore &store, Entity entity, QString *error)
{
    FetchRequest request;
    request.entity = entity;
    QJsonArray array;
    if (entity == Entity::Books) {
        request.includesCovers = true;
        const auto books = store.fetchBooks(request, error);
        if (!books)
            return std::nullopt;
        for (const Books &book : *books) {
            QJsonObject o;
            for (const auto &a : booksAttributes()) {
                const QVariant v = attributeValue(book, a);
                if (!v.isValid())
                    continue;
                switch (a.type()) {
                case AttributeType::String: o.insert(QLatin1String(a.name), v.toString()); break;
                case AttributeType::Integer: o.insert(QLatin1String(a.name), v.toInt()); break;
                case AttributeType::Date:
                    o.insert(QLatin1String(a.name), v.toDateTime().toUTC().toString(Qt::ISODate));
                    break;
                case AttributeType::Binary:
                    o.insert(QLatin1String(a.name), QString::fromLatin1(v.toByteArray().toBase64()));
                    break;
                }
            }
            array.append(o);
        }
        return array;
    }
    const QString attribute = BookStore::referenceAttribute(entity);
    if (attribute.isEmpty()) {
        if (error)
            *error = QStringLiteral("%1 cannot be dumped").arg(entityName(entity));
        return std::nullopt;
    }
    const auto entries = store.fetchEntries(request, error);
    if (!entries)
        return std::nullopt;
    for (const auto &e : *entries) {
        QJsonObject o;
        if (e.value)
            o.insert(attribute, *e.value);
        array.append(o);
    }
    return array;
}

} // namespace tomewise
