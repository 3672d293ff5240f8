#pragma once

#include <QList>
#include <QString>
#include <QVariant>

namespace tomewise {

enum class Entity { Books, GenreList, RatingList, SeriesList, Thumbnail, Event };

QString entityName(Entity entity);
std::optional<Entity> entityFromName(QStringView name);

// One comparison on an attribute; a request ANDs all of its predicates.
struct Predicate
{
    enum class Op { Equal, NotEqual, Less, LessOrEqual, Greater, GreaterOrEqual, IsAbsent, IsPresent };
    QString attribute;
    Op op = Op::Equal;
    QVariant value;

    static Predicate equal(QString attribute, QVariant value)
    {
        return {std::move(attribute), Op::Equal, std::move(value)};
    }
};

struct SortDescriptor
{
    QString attribute;
    bool ascending = true;
};

// A typed fetch: which entity, which records, in which order, and whether the
// cover bytes come along (lists never load them; they are served lazily).
struct FetchRequest
{
    Entity entity = Entity::Books;
    QList<Predicate> predicates;
    QList<SortDescriptor> sortDescriptors;
    bool includesCovers = false;
    int fetchLimit = 0; // 0: no limit
    // When not empty, only these records (a windowed list's visible rows).
    QList<qint64> keys;
};

} // namespace tomewise
Q_DECLARE_METATYPE(tomewise::Predicate)
Q_DECLARE_METATYPE(tomewise::SortDescriptor)
